// List entries that draw the emoji in their texts as pictures.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStyledItemDelegate>

namespace tideloft::ui
{

/// Draws an entry whose text has emojiFormats() with them, in the colours and the place that the style sheet
/// gives it, and every other one as ever.
class EmojiDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
};

} // namespace tideloft::ui
