// The messages that the storage is given, and what it may do with them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/user.h"

namespace tideloft::service
{

/// A message as it is kept. Nothing here looks into it.
struct StoredMessage {
    QString text;
    QString iv;         ///< the nonce; empty when the message is not sealed
    QString senderKeys; ///< JSON text, as are the recipient's
    QString recipientKeys;
    bool encrypted = false;
    qint64 createdAt = 0; ///< ms since 1970
};

/// What a user may have at most.
struct MessageQuota {
    qint64 messages = 0;
    qint64 bytes = 0;         ///< in UTF-8
    qint64 conversations = 0; ///< that the user has begun
};

/// What became of a message. A client that got no answer sends the same again, and a nonce is used once: such
/// a message is kept once. Only an active account sends.
enum class Stored { Now, Before, NoSender, NoRecipient, TooManyMessages, TooManyBytes, TooManyConversations };

/// A message on its way into the database.
struct MessageToStore {
    User sender;
    User recipient; ///< found by the name when the message is stored, where the number is 0
    StoredMessage message;
    MessageQuota quota;
    qint64 tried = 0; ///< see storeMessage()
    Stored stored = Stored::Now;
};

} // namespace tideloft::service
