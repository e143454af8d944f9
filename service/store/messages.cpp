// Writing of messages and conversations.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/messages.h"

#include "service/store/message_rules.h"
#include "service/store/users.h"
#include "service/store/versions.h"

#include <algorithm>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

/// What the two users' rows say of a message that is to be kept.
struct Parties {
    MessageFacts facts;
    qint64 lastPosition = 0; ///< of any message that one of the two has
};

// Whoever writes between the same two users waits here until this message is stored or not.
Parties partiesOf(Database &database, const User &sender, const User &recipient)
{
    Rows rows = database.run(u"SELECT id, state, last_position, message_count, message_bytes FROM users"
                             " WHERE id IN (?, ?) ORDER BY id FOR UPDATE"_s,
                             {sender.id, recipient.id});
    Parties found;
    while (rows.next()) {
        const qint64 id = rows.value(0).toLongLong();
        const auto state = static_cast<UserState>(rows.value(1).toInt());
        found.lastPosition = std::max(found.lastPosition, rows.value(2).toLongLong());
        if (id == recipient.id)
            found.facts.recipient = state;
        if (id != sender.id)
            continue;
        found.facts.sender = state;
        found.facts.messages = rows.value(3).toLongLong();
        found.facts.bytes = rows.value(4).toLongLong();
    }
    return found;
}

// A number that was given in a transaction without an end may be another message's by now.
bool wasStored(Database &database, const User &sender, const User &recipient, const StoredMessage &message,
               qint64 number)
{
    return number != 0
           && database
                  .run(u"SELECT 1 FROM messages WHERE id = ? AND sender_id = ? AND recipient_id = ?"
                       " AND text = ? AND created_at = ?"_s,
                       {number, sender.id, recipient.id, message.text, message.createdAt})
                  .next();
}

// Asked once the users' rows are locked: what another process has stored meanwhile is seen then.
void lookBack(Database &database, const User &sender, const User &recipient, const StoredMessage &message,
              MessageFacts &facts)
{
    Rows rows = database.run(u"SELECT EXISTS (SELECT 1 FROM messages WHERE sender_id = ? AND recipient_id = ?"
                             " AND iv = ? AND iv <> '' AND text = ?),"
                             " EXISTS (SELECT 1 FROM conversations WHERE user_id = ? AND peer_id = ?)"_s,
                             {sender.id, recipient.id, message.iv, message.text, sender.id, recipient.id});
    rows.next();
    facts.isStored = rows.value(0).toBool();
    facts.haveTalked = rows.value(1).toBool();
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

// Both users' conversations in one statement. What one writes to oneself is one conversation.
void rememberLast(Database &database, const User &sender, const User &recipient, qint64 messageId)
{
    const qint64 ofSender = newVersion();
    const qint64 ofRecipient = newVersion();
    const bool isNote = sender.id == recipient.id;
    QVariantList values{sender.id, recipient.id, messageId, ofSender, 1};
    if (!isNote)
        values += {recipient.id, sender.id, messageId, ofRecipient, 0};
    database.run(u"INSERT INTO conversations (user_id, peer_id, last_message_id, version, begun)"
                 " VALUES (?, ?, ?, ?, ?)%1 ON CONFLICT (user_id, peer_id) DO UPDATE SET"
                 " last_message_id = excluded.last_message_id, version = excluded.version"_s.arg(
                     isNote ? u""_s : u", (?, ?, ?, ?, ?)"_s),
                 values);
    noteVersion(database, sender, historySubject(recipient.name), ofSender);
    if (!isNote)
        noteVersion(database, recipient, historySubject(sender.name), ofRecipient);
}

// SIZE is that of the message, which counts for the sender alone.
void countMessage(Database &database, const User &sender, const User &recipient, qint64 position, qint64 size)
{
    const qint64 ofSender = newVersion();
    const qint64 ofRecipient = newVersion();
    database.run(
        u"UPDATE users SET message_count = message_count + CASE WHEN id = ? THEN 1 ELSE 0 END,"
        " message_bytes = message_bytes + CASE WHEN id = ? THEN CAST(? AS BIGINT) ELSE 0 END,"
        " last_position = ?, conversations_version ="
        " CASE WHEN id = ? THEN CAST(? AS BIGINT) ELSE CAST(? AS BIGINT) END WHERE id IN (?, ?)"_s,
        {sender.id, sender.id, size, position, sender.id, ofSender, ofRecipient, sender.id, recipient.id});
    noteVersion(database, sender, conversationsSubject(), ofSender);
    if (sender.id != recipient.id)
        noteVersion(database, recipient, conversationsSubject(), ofRecipient);
}

} // namespace

qint64 conversationsBegun(Database &database, const User &user)
{
    return database.number(u"SELECT count(*) FROM conversations WHERE user_id = ? AND begun = 1"_s,
                           {user.id});
}

Stored storeMessage(Database &database, const User &sender, const User &recipient,
                    const StoredMessage &message, const MessageQuota &quota, qint64 *tried)
{
    const qint64 size = sizeOf(message);
    Transaction transaction(database);
    Parties parties = partiesOf(database, sender, recipient);
    if (wasStored(database, sender, recipient, message, tried ? *tried : 0))
        return Stored::Before;
    lookBack(database, sender, recipient, message, parties.facts);
    const Stored decision =
        decide(parties.facts, size, quota, [&] { return conversationsBegun(database, sender); });
    if (decision != Stored::Now)
        return decision;
    const qint64 position = parties.lastPosition + 1;
    const qint64 messageId = insertMessage(database, sender, recipient, message, position);
    if (tried)
        *tried = messageId;
    rememberLast(database, sender, recipient, messageId);
    countMessage(database, sender, recipient, position, size);
    transaction.commit();
    return Stored::Now;
}

void storeMessage(Database &database, MessageToStore &each)
{
    if (each.recipient.id == 0)
        each.recipient = findUser(database, each.recipient.name).value_or(each.recipient);
    each.stored = each.recipient.id == 0 ? Stored::NoRecipient
                                         : storeMessage(database, each.sender, each.recipient, each.message,
                                                        each.quota, &each.tried);
}

} // namespace tideloft::service
