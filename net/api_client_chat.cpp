// Requests about direct messages: conversations, histories, device keys and sending. Nothing is encrypted
// here: an envelope arrives sealed and only takes its place in the request.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/api_client.h"

#include "net/device_key_records.h"

#include <QNetworkReply>
#include <QNetworkRequest>

using namespace Qt::StringLiterals;

namespace tideloft::net
{

void ApiClient::fetchConversations(RequestPriority priority)
{
    handleJsonReply(
        getList(u"/api/chat/conversations"_s, priority),
        [this](const QJsonDocument &document, int) { emit conversationsLoaded(document.array()); },
        [this](const QString &message, int) { emit conversationsFailed(message); }, &caches.conversations);
}

void ApiClient::fetchHistory(const QString &peer, RequestPriority priority)
{
    handleJsonReply(
        getList(u"/api/chat/history/"_s + peer, priority),
        // The peer travels in the capture: another conversation may be open by the time the reply arrives,
        // and the window has to be able to tell.
        [this, peer](const QJsonDocument &document, int) { emit historyLoaded(peer, document.array()); },
        [this](const QString &message, int) { emit historyFailed(message); }, &caches.history);
}

void ApiClient::registerDeviceKey(const QString &publicKey)
{
    const QJsonObject body{
        {u"deviceId"_s, ownDeviceId}, {u"deviceName"_s, ownDeviceName}, {u"publicKey"_s, publicKey}};
    handleJsonReply(
        post(u"/api/chat/device-key"_s, body),
        [this](const QJsonDocument &, int) { emit deviceKeyRegistered(); },
        [this](const QString &message, int) { emit deviceKeyRegisterFailed(message); });
}

void ApiClient::fetchMyDeviceKeys()
{
    handleJsonReply(
        network.get(buildRequest(u"/api/chat/device-keys/me"_s)),
        [this](const QJsonDocument &document, int) {
            const QJsonArray listed =
                document.isObject() ? document.object().value(u"keys"_s).toArray() : document.array();
            emit myDeviceKeysLoaded(normaliseDeviceKeys(listed));
        },
        [this](const QString &message, int) { emit myDeviceKeysFailed(message); });
}

void ApiClient::fetchUserPublicKeys(const QString &name)
{
    handleJsonReply(
        network.get(buildRequest(u"/api/chat/public-key/"_s + name)),
        // Unlike the own devices' list, a bare array counts as nothing here.
        [this, name](const QJsonDocument &document, int) {
            const QJsonObject reply = document.object();
            emit userPublicKeysLoaded(name, normaliseDeviceKeys(reply.value(u"keys"_s).toArray()),
                                      reply.value(u"publicKey"_s).toString());
        },
        [this, name](const QString &message, int) { emit userPublicKeysFailed(name, message); });
}

void ApiClient::sendMessage(const QString &to, const SealedMessage &message)
{
    postMessage({
        {u"to"_s, to},
        {u"text"_s, message.text},
        {u"iv"_s, message.iv},
        {u"encryptedKey"_s, message.encryptedKey},
        {u"senderEncryptedKey"_s, message.senderEncryptedKey},
        {u"recipientKeys"_s, message.recipientKeys},
        {u"senderKeys"_s, message.senderKeys},
        {u"algorithm"_s, u"AES-GCM"_s},
        {u"encrypted"_s, 1}, // a number by agreement with the service, not a boolean
    });
}

void ApiClient::sendMessage(const QString &to, const QString &text)
{
    postMessage({
        {u"to"_s, to.trimmed().toLower()},
        {u"text"_s, text},
        {u"iv"_s, QString()},
        {u"encryptedKey"_s, QString()},
        {u"senderEncryptedKey"_s, QString()},
        {u"recipientKeys"_s, QJsonArray()},
        {u"senderKeys"_s, QJsonArray()},
        {u"algorithm"_s, u"plain"_s},
        {u"encrypted"_s, 0},
    });
}

void ApiClient::postMessage(const QJsonObject &body)
{
    handleJsonReply(
        post(u"/api/chat/send"_s, body), [this](const QJsonDocument &, int) { emit messageSent(); },
        [this](const QString &message, int) { emit messageSendFailed(message); });
}

} // namespace tideloft::net
