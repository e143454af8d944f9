// Rows of messages and conversations.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/messages.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

QString messageColumns()
{
    return u"sender.name, recipient.name, text, iv, sender_keys, recipient_keys, encrypted,"
           " messages.created_at"_s;
}

QString messageTables()
{
    return u" JOIN users AS sender ON sender.id = sender_id JOIN users AS recipient ON"
           " recipient.id = recipient_id "_s;
}

// The row must begin with the columns above.
StoredMessage messageFromRow(const Rows &row)
{
    return {.from = row.value(0).toString(),
            .to = row.value(1).toString(),
            .text = row.value(2).toString(),
            .iv = row.value(3).toString(),
            .senderKeys = row.value(4).toString(),
            .recipientKeys = row.value(5).toString(),
            .encrypted = row.value(6).toBool(),
            .createdAt = row.value(7).toLongLong()};
}

void rememberLast(Database &database, const User &user, const User &peer, const QVariant &messageId)
{
    database.run(u"INSERT INTO conversations (user_id, peer_id, last_message_id) VALUES (?, ?, ?)"
                 " ON CONFLICT (user_id, peer_id) DO UPDATE SET last_message_id = excluded.last_message_id"_s,
                 {user.id, peer.id, messageId});
}

} // namespace

void storeMessage(Database &database, const User &sender, const User &recipient, const StoredMessage &message)
{
    Transaction transaction(database);
    const Rows inserted = database.run(
        u"INSERT INTO messages (sender_id, recipient_id, text, iv, recipient_keys, sender_keys, encrypted,"
        " created_at) VALUES (?, ?, ?, ?, ?, ?, ?, ?)"_s,
        {sender.id, recipient.id, message.text, message.iv, message.recipientKeys, message.senderKeys,
         message.encrypted ? 1 : 0, message.createdAt});
    const QVariant messageId = inserted.lastInsertId();
    rememberLast(database, sender, recipient, messageId);
    rememberLast(database, recipient, sender, messageId);
    transaction.commit();
}

// Order and choice go by number and not by time: the clock of a computer may be set back.
QList<StoredMessage> history(Database &database, const User &user, const User &peer)
{
    const QString half = u"SELECT "_s + messageColumns() + u", messages.id FROM messages"_s + messageTables()
                         + u"WHERE sender_id = ? AND recipient_id = ?"_s;
    Rows query = database.run(half + u" UNION "_s + half + u" ORDER BY messages.id"_s,
                              {user.id, peer.id, peer.id, user.id});
    QList<StoredMessage> messages;
    while (query.next())
        messages.append(messageFromRow(query));
    return messages;
}

QList<Conversation> conversations(Database &database, const User &user)
{
    Rows query =
        database.run(u"SELECT "_s + messageColumns()
                         + u", peer.name FROM conversations JOIN messages ON messages.id = last_message_id"_s
                         + messageTables()
                         + u"JOIN users AS peer ON peer.id = peer_id WHERE user_id = ?"
                           " ORDER BY last_message_id DESC"_s,
                     {user.id});
    QList<Conversation> list;
    while (query.next())
        list.append({query.value(8).toString(), messageFromRow(query)});
    return list;
}

} // namespace tideloft::service
