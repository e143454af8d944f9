// What a screen reader says of a message, and of a conversation.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/conversation_row_models.h"
#include "ui/messages/history_row_models.h"

namespace tideloft::ui
{

/// What a screen reader says of a conversation: "bob, see you at noon, 12:04". Opens its preview.
QString spokenText(const ConversationRowModel &row);

/// What a screen reader says of a row of the history: "bob, see you at noon, 12:04". Eyes find the sender and
/// the time of a grouped message above and below the message. A listener hears one row at a time.
QString spokenText(const HistoryRow &row);

} // namespace tideloft::ui
