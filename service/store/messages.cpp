// Statements about messages.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/messages.h"

#include <QJsonDocument>
#include <QTimeZone>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

QString toText(const QJsonArray &keys)
{
    return QString::fromUtf8(QJsonDocument(keys).toJson(QJsonDocument::Compact));
}

QJsonArray toKeys(const QVariant &text)
{
    return QJsonDocument::fromJson(text.toString().toUtf8()).array();
}

QString itemColumns()
{
    return u"sender.name, recipient.name, text, iv, sender_keys, recipient_keys, encrypted,"
           " messages.created_at"_s;
}

QString itemTables()
{
    return u" JOIN users AS sender ON sender.id = sender_id JOIN users AS recipient ON"
           " recipient.id = recipient_id "_s;
}

// The row must begin with the columns above.
QJsonObject itemFromRow(const QSqlQuery &row)
{
    const auto createdAt = QDateTime::fromMSecsSinceEpoch(row.value(7).toLongLong(), Qt::UTC);
    return {{u"from"_s, row.value(0).toString()},    {u"to"_s, row.value(1).toString()},
            {u"text"_s, row.value(2).toString()},    {u"iv"_s, row.value(3).toString()},
            {u"senderKeys"_s, toKeys(row.value(4))}, {u"recipientKeys"_s, toKeys(row.value(5))},
            {u"encrypted"_s, row.value(6).toBool()}, {u"createdAt"_s, createdAt.toString(Qt::ISODateWithMs)}};
}

void rememberLast(Database &database, const User &user, const User &peer, const QVariant &messageId)
{
    database.run(u"INSERT INTO conversations (user_id, peer_id, last_message_id) VALUES (?, ?, ?)"
                 " ON CONFLICT (user_id, peer_id) DO UPDATE SET last_message_id = excluded.last_message_id"_s,
                 {user.id, peer.id, messageId});
}

} // namespace

void storeMessage(ApiContext &context, const User &sender, const User &recipient, const Message &message)
{
    Transaction transaction(context.database);
    const QSqlQuery inserted = context.database.run(
        u"INSERT INTO messages (sender_id, recipient_id, text, iv, recipient_keys, sender_keys, encrypted,"
        " created_at) VALUES (?, ?, ?, ?, ?, ?, ?, ?)"_s,
        {sender.id, recipient.id, message.text, message.iv, toText(message.recipientKeys),
         toText(message.senderKeys), message.encrypted ? 1 : 0, context.nowInMilliseconds()});
    const QVariant messageId = inserted.lastInsertId();
    rememberLast(context.database, sender, recipient, messageId);
    rememberLast(context.database, recipient, sender, messageId);
    transaction.commit();
}

// Order and choice go by number and not by time: the clock of a computer may be set back.
QJsonArray history(Database &database, const User &user, const User &peer)
{
    const QString half = u"SELECT "_s + itemColumns() + u", messages.id FROM messages"_s + itemTables()
                         + u"WHERE sender_id = ? AND recipient_id = ?"_s;
    QSqlQuery query = database.run(half + u" UNION "_s + half + u" ORDER BY messages.id"_s,
                                   {user.id, peer.id, peer.id, user.id});
    QJsonArray items;
    while (query.next())
        items.append(itemFromRow(query));
    return items;
}

QJsonArray conversations(Database &database, const User &user)
{
    QSqlQuery query =
        database.run(u"SELECT "_s + itemColumns()
                         + u", peer.name FROM conversations JOIN messages ON messages.id = last_message_id"_s
                         + itemTables()
                         + u"JOIN users AS peer ON peer.id = peer_id WHERE user_id = ?"
                           " ORDER BY last_message_id DESC"_s,
                     {user.id});
    QJsonArray items;
    while (query.next()) {
        QJsonObject item = itemFromRow(query);
        item.insert(u"peer"_s, query.value(8).toString());
        items.append(item);
    }
    return items;
}

} // namespace tideloft::service
