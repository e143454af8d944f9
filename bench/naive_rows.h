// The straightforward way to fill both lists, kept to measure against: one row at a time, nothing remembered.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/conversation_row_models.h"
#include "ui/messages/history_row_models.h"

class QListWidget;

namespace tideloft::bench
{

/// Clears LIST, then appends entry after entry, each with its row widget, and scrolls to the bottom.
void showHistoryNaively(QListWidget *list, const QList<ui::HistoryRow> &rows);
void showConversationsNaively(QListWidget *list, const QList<ui::ConversationRowModel> &rows);

} // namespace tideloft::bench
