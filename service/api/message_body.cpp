// Checking of messages. What is sealed stays sealed: only sizes and encodings can be looked at.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/message_body.h"

#include "service/api/base64.h"
#include "service/api/device_rules.h"

#include <QJsonDocument>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype ivSize = 12;              // the nonce of AES-GCM
constexpr qsizetype tagSize = 16;             // at the end of every ciphertext
constexpr qsizetype smallestWrappedKey = 256; // RSA of 2048 bits
constexpr qsizetype largestWrappedKey = 512;  // RSA of 4096 bits
constexpr qsizetype longestField = 1024;
constexpr qsizetype anyLength = qsizetype{1024} * 1024; // a body is no longer

[[noreturn]] void refuse(const QString &message)
{
    throw Refusal(400, message);
}

void require(bool condition, const QString &message)
{
    if (!condition)
        refuse(message);
}

bool isWrappedKey(const QString &base64)
{
    const qsizetype size = decodeBase64(base64).size();
    return size >= smallestWrappedKey && size <= largestWrappedKey;
}

// Only the two members that a reader needs are kept, so that nothing else is stored on the way.
QJsonArray wrappedKeys(const JsonBody &body, const QString &name)
{
    const QJsonArray records = body.array(name);
    require(records.size() <= maximumWrappedKeys,
            u"The field \"%1\" must have at most %2 keys."_s.arg(name).arg(maximumWrappedKeys));
    QJsonArray keys;
    for (const QJsonValue &record : records) {
        const QString deviceId = record[u"deviceId"_s].toString();
        const QString key = record[u"encryptedKey"_s].toString();
        require(
            isDeviceId(deviceId) && isWrappedKey(key),
            u"The field \"%1\" must hold objects with a \"deviceId\" and an \"encryptedKey\"."_s.arg(name));
        keys.append(QJsonObject{{u"deviceId"_s, deviceId}, {u"encryptedKey"_s, key}});
    }
    return keys;
}

bool encryptedFlag(const JsonBody &body)
{
    const QJsonValue flag = body.value(u"encrypted"_s);
    const bool known = flag.isBool() || (flag.isDouble() && (flag.toDouble() == 0 || flag.toDouble() == 1));
    require(known, u"The field \"encrypted\" must be 1 or 0."_s);
    return flag.toBool() || flag.toDouble() == 1;
}

// The single keys stand beside the lists for readers of one device only. Nothing reads them any more.
void checkSingleKey(const JsonBody &body, const QString &name, bool encrypted)
{
    const QString key = body.text(name, longestField);
    require(key.isEmpty() || (encrypted && isWrappedKey(key)),
            u"The field \"%1\" is not a wrapped key."_s.arg(name));
}

void checkSealed(const Message &message)
{
    require(decodeBase64(message.text).size() >= tagSize,
            u"The field \"text\" is not a ciphertext in Base64."_s);
    require(decodeBase64(message.iv).size() == ivSize, u"The field \"iv\" must be 12 bytes in Base64."_s);
    require(!message.recipientKeys.isEmpty(), u"The field \"recipientKeys\" must not be empty."_s);
}

void checkPlain(const Message &message)
{
    require(!message.text.isEmpty(), u"The message has no text."_s);
    require(message.iv.isEmpty() && message.recipientKeys.isEmpty() && message.senderKeys.isEmpty(),
            u"A plain message must not carry a nonce or keys."_s);
}

QString messageText(const JsonBody &body)
{
    const QString text = body.text(u"text"_s, anyLength);
    if (text.toUtf8().size() > maximumTextBytes)
        throw Refusal(413, u"The message is too long."_s);
    return text;
}

QString toText(const QJsonArray &keys)
{
    return QString::fromUtf8(QJsonDocument(keys).toJson(QJsonDocument::Compact));
}

} // namespace

StoredMessage storedForm(const Message &message, qint64 now)
{
    return {.text = message.text,
            .iv = message.iv,
            .senderKeys = toText(message.senderKeys),
            .recipientKeys = toText(message.recipientKeys),
            .encrypted = message.encrypted,
            .createdAt = now};
}

Message messageFrom(const JsonBody &body)
{
    Message message{messageText(body), body.text(u"iv"_s, longestField),
                    wrappedKeys(body, u"recipientKeys"_s), wrappedKeys(body, u"senderKeys"_s),
                    encryptedFlag(body)};
    const QString algorithm = message.encrypted ? u"AES-GCM"_s : u"plain"_s;
    require(body.text(u"algorithm"_s, longestField) == algorithm,
            u"The field \"algorithm\" must be \"%1\" here."_s.arg(algorithm));
    checkSingleKey(body, u"encryptedKey"_s, message.encrypted);
    checkSingleKey(body, u"senderEncryptedKey"_s, message.encrypted);
    message.encrypted ? checkSealed(message) : checkPlain(message);
    return message;
}

} // namespace tideloft::service
