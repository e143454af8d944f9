// The conversations that are listed, as they were read: what comes again unchanged is not read again.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/conversation_row_models.h"
#include "ui/messages/known_items.h"

namespace tideloft::ui
{

/// Remembers the rows of one reply for the next, with those previews that were opened and those that were not
/// yet.
class ConversationCache
{
public:
    /// conversationRows() of ITEMS. What is remembered is not used when GENERATION has changed, because
    /// messages may open to other texts then, and not for another user, language, time zone or day.
    QList<ConversationRowModel> rows(const QJsonArray &items, const Reading &reading, quint64 generation);
    /// Previews that were not opened can never be opened from now on.
    void forget();

private:
    QList<ConversationRowModel> follow(const QJsonArray &items, const Reading &reading) const;

    ReadingKey key;
    QDate today;
    QJsonArray itemsBefore;
    QList<ConversationRowModel> rowsBefore; ///< one for each of itemsBefore, up to the last that is listed
};

} // namespace tideloft::ui
