// A message in the chat history.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/history_row_models.h"

#include <QWidget>

namespace tideloft::ui
{

class BubbleText;

/// A message's row: it asks for no more width than the list below it has, and for the height that its wrapped
/// text needs at that width.
class MessageRow : public QWidget
{
    Q_OBJECT

public:
    MessageRow(const MessageRowModel &model, QWidget *parent);

    /// What stays free around the bubble.
    static QMargins margins(const MessageRowModel &model);

    QSize sizeHint() const override;

    [[nodiscard]] BubbleText *text() const { return bubbleText; }

private:
    QWidget *makeBubble(const MessageRowModel &model);

    BubbleText *bubbleText = nullptr;
};

} // namespace tideloft::ui
