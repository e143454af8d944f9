// A conversation list whose rows all have their widgets, and whose previews are all open, at once.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/conversation_row_models.h"

class QListWidget;

namespace tideloft::tests
{

/// Makes LIST show ROWS, of which it keeps those that it shows already. No entry is selected any more; the
/// current one stays current.
void showConversationsEagerly(QListWidget *list, const QList<ui::ConversationRowModel> &rows);

} // namespace tideloft::tests
