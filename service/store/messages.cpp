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

/// What the two users' rows say of a message that is to be kept.
struct Parties {
    qint64 messages = 0; ///< that the sender has sent
    qint64 bytes = 0;
    qint64 lastPosition = 0; ///< of any message that one of the two has
    bool recipientIsThere = false;
};

// Whoever writes between the same two users waits here until this message is stored or not.
Parties partiesOf(Database &database, const User &sender, const User &recipient)
{
    Rows rows = database.run(u"SELECT id, state, last_position, message_count, message_bytes FROM users"
                             " WHERE id IN (?, ?) ORDER BY id FOR UPDATE"_s,
                             {sender.id, recipient.id});
    Parties found;
    bool senderIsThere = false;
    while (rows.next()) {
        const qint64 id = rows.value(0).toLongLong();
        found.lastPosition = std::max(found.lastPosition, rows.value(2).toLongLong());
        if (id == recipient.id)
            found.recipientIsThere = rows.value(1).toInt() != static_cast<int>(UserState::Deleted);
        if (id != sender.id)
            continue;
        senderIsThere = true;
        found.messages = rows.value(3).toLongLong();
        found.bytes = rows.value(4).toLongLong();
    }
    if (!senderIsThere)
        throw StorageError("The sender is gone");
    return found;
}

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

// As the database counts them when messages are removed.
qint64 sizeOf(const StoredMessage &message)
{
    return message.text.toUtf8().size() + message.iv.toUtf8().size() + message.recipientKeys.toUtf8().size()
           + message.senderKeys.toUtf8().size();
}

bool haveTalked(Database &database, const User &user, const User &peer)
{
    return database
        .run(u"SELECT 1 FROM conversations WHERE user_id = ? AND peer_id = ?"_s, {user.id, peer.id})
        .next();
}

// What strangers have begun does not count: they could use up the quota of anybody.
bool mayBeginAnother(Database &database, const User &user, const MessageQuota &quota)
{
    return database.number(u"SELECT count(*) FROM conversations WHERE user_id = ? AND begun = 1"_s, {user.id})
           < quota.conversations;
}

// What is too much, or not there; nothing when the message may be kept.
std::optional<Stored> refusal(Database &database, const User &sender, const User &recipient,
                              const Parties &parties, qint64 size, const MessageQuota &quota)
{
    if (!parties.recipientIsThere)
        return Stored::NoRecipient;
    if (parties.messages >= quota.messages)
        return Stored::TooManyMessages;
    if (parties.bytes + size > quota.bytes)
        return Stored::TooManyBytes;
    if (!haveTalked(database, sender, recipient) && !mayBeginAnother(database, sender, quota))
        return Stored::TooManyConversations;
    return std::nullopt;
}

qint64 insertMessage(Database &database, const User &sender, const User &recipient,
                     const StoredMessage &message, qint64 position)
{
    return database.number(
        u"INSERT INTO messages (sender_id, recipient_id, text, iv, recipient_keys, sender_keys, encrypted,"
        " created_at, position) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?) RETURNING id"_s,
        {sender.id, recipient.id, message.text, message.iv, message.recipientKeys, message.senderKeys,
         message.encrypted ? 1 : 0, message.createdAt, position});
}

void rememberLast(Database &database, const User &user, const User &peer, qint64 messageId, bool begins)
{
    const qint64 version = newVersion();
    database.run(u"INSERT INTO conversations (user_id, peer_id, last_message_id, version, begun)"
                 " VALUES (?, ?, ?, ?, ?) ON CONFLICT (user_id, peer_id) DO UPDATE SET"
                 " last_message_id = excluded.last_message_id, version = excluded.version"_s,
                 {user.id, peer.id, messageId, version, begins ? 1 : 0});
    noteVersion(database, user, historySubject(peer.name), version);
}

// SIZE is that of a message that the user has sent; nothing for one that came.
void countMessage(Database &database, const User &user, qint64 position, std::optional<qint64> size)
{
    const qint64 version = newVersion();
    database.run(u"UPDATE users SET message_count = message_count + ?, message_bytes = message_bytes + ?,"
                 " last_position = ?, conversations_version = ? WHERE id = ?"_s,
                 {size ? 1 : 0, size.value_or(0), position, version, user.id});
    noteVersion(database, user, conversationsSubject(), version);
}

} // namespace

Stored storeMessage(Database &database, const User &sender, const User &recipient,
                    const StoredMessage &message, const MessageQuota &quota)
{
    const qint64 size = sizeOf(message);
    Transaction transaction(database);
    const Parties parties = partiesOf(database, sender, recipient);
    if (isStored(database, sender, recipient, message))
        return Stored::Before;
    if (const std::optional<Stored> refused = refusal(database, sender, recipient, parties, size, quota))
        return *refused;
    const qint64 position = parties.lastPosition + 1;
    const qint64 messageId = insertMessage(database, sender, recipient, message, position);
    rememberLast(database, sender, recipient, messageId, true);
    countMessage(database, sender, position, size);
    if (sender.id != recipient.id) {
        rememberLast(database, recipient, sender, messageId, false);
        countMessage(database, recipient, position, std::nullopt);
    }
    transaction.commit();
    return Stored::Now;
}

} // namespace tideloft::service
