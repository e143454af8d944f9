// What the list does with each entry of a history: little, for rows draw themselves.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStyledItemDelegate>

class QListWidget;

namespace tideloft::ui
{

class HistoryEntry;

/// The toolkit's own delegate asks the style sheet for the place of an entry's text whenever it places the
/// entry's widget. An entry of a history has no text of its own: its widget fills the entry. Entries of other
/// kinds are left to the toolkit.
class HistoryDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// SERVED owns it.
    explicit HistoryDelegate(QListWidget *served);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *row, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;

private:
    [[nodiscard]] const HistoryEntry *entryAt(const QModelIndex &index) const;

    QListWidget *list;
};

} // namespace tideloft::ui
