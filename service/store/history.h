// Reading messages back: the history of two users, and the last message of each conversation.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/users.h"

#include <functional>

namespace tideloft::service
{

/// A message as it is read: its texts in UTF-8, the keys as the JSON texts that they were stored as.
struct MessageRow {
    QString peer; ///< of a conversation
    bool isFromUser = false;
    QByteArray text;
    QByteArray iv;
    QByteArray senderKeys;
    QByteArray recipientKeys;
    bool encrypted = false;
    qint64 createdAt = 0; ///< ms since 1970
};

/// False ends the reading.
using MessageVisitor = std::function<bool(const MessageRow &row)>;

/// At most MOST messages between two users, newest first.
void visitHistory(Database &database, const User &user, const User &peer, int most,
                  const MessageVisitor &visit);

/// The last message with each of at most MOST peers, that with the newest message first.
void visitConversations(Database &database, const User &user, int most, const MessageVisitor &visit);

} // namespace tideloft::service
