// The rows of the conversation list, as values.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/display_records.h"

namespace tideloft::ui
{

/// One conversation: with whom, how its last message begins, and when that was written.
struct ConversationRowModel {
    QString peer;
    QString preview;
    QString time;

    bool operator==(const ConversationRowModel &) const = default;
};

size_t qHash(const ConversationRowModel &row, size_t seed = 0);

/// One row for each object of ITEMS that names a peer, in their order, up to conversationsLimit. NOW decides
/// what counts as today.
QList<ConversationRowModel> conversationRows(const QJsonArray &items, const OpenMessage &open,
                                             const QDateTime &now, Language language);

/// What a screen reader says of a conversation: "bob, see you at noon, 12:04".
QString spokenText(const ConversationRowModel &row);

/// The usable user names of a search reply: objects with a `username` that is not blank, trimmed. Up to
/// foundUsersLimit.
QStringList foundUsers(const QJsonArray &users);

} // namespace tideloft::ui
