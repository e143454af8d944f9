// Making items of messages.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/message_items.h"

#include <QDateTime>
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

QJsonArray toKeys(const QString &text)
{
    return QJsonDocument::fromJson(text.toUtf8()).array();
}

QJsonObject itemOf(const StoredMessage &message)
{
    const auto createdAt = QDateTime::fromMSecsSinceEpoch(message.createdAt, Qt::UTC);
    return {{u"from"_s, message.from},
            {u"to"_s, message.to},
            {u"text"_s, message.text},
            {u"iv"_s, message.iv},
            {u"senderKeys"_s, toKeys(message.senderKeys)},
            {u"recipientKeys"_s, toKeys(message.recipientKeys)},
            {u"encrypted"_s, message.encrypted},
            {u"createdAt"_s, createdAt.toString(Qt::ISODateWithMs)}};
}

} // namespace

StoredMessage storedForm(const Message &message, qint64 now)
{
    return {.from = {},
            .to = {},
            .text = message.text,
            .iv = message.iv,
            .senderKeys = toText(message.senderKeys),
            .recipientKeys = toText(message.recipientKeys),
            .encrypted = message.encrypted,
            .createdAt = now};
}

QJsonArray historyItems(const QList<StoredMessage> &messages)
{
    QJsonArray items;
    for (const StoredMessage &message : messages)
        items.append(itemOf(message));
    return items;
}

QJsonArray conversationItems(const QList<Conversation> &conversations)
{
    QJsonArray items;
    for (const Conversation &conversation : conversations) {
        QJsonObject item = itemOf(conversation.last);
        item.insert(u"peer"_s, conversation.peer);
        items.append(item);
    }
    return items;
}

} // namespace tideloft::service
