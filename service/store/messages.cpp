// Writing of messages and conversations.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/messages.h"

#include "service/store/versions.h"

#include <algorithm>
#include <optional>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

bool isStored(Database &database, const User &sender, const User &recipient, const StoredMessage &message)
{
    return !message.iv.isEmpty()
           && database
                  .run(u"SELECT 1 FROM messages WHERE sender_id = ? AND recipient_id = ? AND iv = ? AND iv "
                       u"<> ''"
                       " AND text = ?"_s,
                       {sender.id, recipient.id, message.iv, message.text})
                  .next();
}

void rememberLast(Database &database, const User &user, const User &peer, const QVariant &messageId)
{
    database.run(u"INSERT INTO conversations (user_id, peer_id, last_message_id) VALUES (?, ?, ?)"
                 " ON CONFLICT (user_id, peer_id) DO UPDATE SET last_message_id = excluded.last_message_id"_s,
                 {user.id, peer.id, messageId});
    historyChanged(database, user, peer);
    conversationsChanged(database, user);
}

// As the database counts them when messages are removed: a pair of surrogates is one.
qint64 charactersIn(const QString &text)
{
    return text.size() - std::count_if(text.begin(), text.end(), [](QChar c) { return c.isLowSurrogate(); });
}

qint64 sizeOf(const StoredMessage &message)
{
    return charactersIn(message.text) + message.iv.size() + charactersIn(message.recipientKeys)
           + charactersIn(message.senderKeys);
}

bool haveTalked(Database &database, const User &user, const User &peer)
{
    return database
        .run(u"SELECT 1 FROM conversations WHERE user_id = ? AND peer_id = ?"_s, {user.id, peer.id})
        .next();
}

// What would be too much; nothing when the message may be kept.
std::optional<Stored> exceeded(Database &database, const User &sender, const User &recipient,
                               const StoredMessage &message, const MessageQuota &quota)
{
    Rows sent = database.run(u"SELECT message_count, message_bytes FROM users WHERE id = ?"_s, {sender.id});
    if (!sent.next())
        throw StorageError("The sender is gone");
    if (sent.value(0).toLongLong() >= quota.messages)
        return Stored::TooManyMessages;
    if (sent.value(1).toLongLong() + sizeOf(message) > quota.bytes)
        return Stored::TooManyBytes;
    if (!haveTalked(database, sender, recipient)
        && database.number(u"SELECT count(*) FROM conversations WHERE user_id = ?"_s, {sender.id})
               >= quota.conversations)
        return Stored::TooManyConversations;
    return std::nullopt;
}

} // namespace

Stored storeMessage(Database &database, const User &sender, const User &recipient,
                    const StoredMessage &message, const MessageQuota &quota)
{
    Transaction transaction(database);
    if (isStored(database, sender, recipient, message))
        return Stored::Before;
    if (const std::optional<Stored> tooMuch = exceeded(database, sender, recipient, message, quota))
        return *tooMuch;
    const Rows inserted = database.run(
        u"INSERT INTO messages (sender_id, recipient_id, text, iv, recipient_keys, sender_keys, encrypted,"
        " created_at) VALUES (?, ?, ?, ?, ?, ?, ?, ?)"_s,
        {sender.id, recipient.id, message.text, message.iv, message.recipientKeys, message.senderKeys,
         message.encrypted ? 1 : 0, message.createdAt});
    const QVariant messageId = inserted.lastInsertId();
    database.run(u"UPDATE users SET message_count = message_count + 1, message_bytes = message_bytes + ?"
                 " WHERE id = ?"_s,
                 {sizeOf(message), sender.id});
    rememberLast(database, sender, recipient, messageId);
    if (sender.id != recipient.id)
        rememberLast(database, recipient, sender, messageId);
    transaction.commit();
    return Stored::Now;
}

} // namespace tideloft::service
