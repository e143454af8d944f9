// The messages between two users, and the last one of each conversation.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/users.h"

namespace tideloft::service
{

/// A message as it is kept. Nothing here looks into it.
struct StoredMessage {
    QString from; ///< names; ignored when a message is stored
    QString to;
    QString text;
    QString iv;
    QString senderKeys; ///< JSON text, as are the recipient's
    QString recipientKeys;
    bool encrypted = false;
    qint64 createdAt = 0; ///< ms since 1970
};

/// The last message with one peer.
struct Conversation {
    QString peer;
    StoredMessage last;
};

void storeMessage(Database &database, const User &sender, const User &recipient,
                  const StoredMessage &message);

/// All messages between two users, oldest first.
QList<StoredMessage> history(Database &database, const User &user, const User &peer);

/// One for every peer, that with the newest message first.
QList<Conversation> conversations(Database &database, const User &user);

} // namespace tideloft::service
