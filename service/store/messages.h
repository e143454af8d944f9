// Keeping messages, and which is the last one of each conversation.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/users.h"

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

/// TRIED, where it is given, is 0 at first and takes the number of the message. Whoever does not know whether
/// the message was stored calls with the same number again, and then it is stored once, sealed or not.
Stored storeMessage(Database &database, const User &sender, const User &recipient,
                    const StoredMessage &message, const MessageQuota &quota, qint64 *tried = nullptr);

} // namespace tideloft::service
