// The conversations in their list.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/conversation_rows.h"

class QListWidget;

namespace tideloft::ui
{

/// Makes LIST show ROWS. Rows that it shows already are not touched. No entry is selected any more; the
/// current one stays current for the keyboard, wherever it stands now, but nothing marks it.
void showConversations(QListWidget *list, const QList<ConversationRowModel> &rows);

} // namespace tideloft::ui
