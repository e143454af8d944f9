// Items as the service returns them, sealed for a device that has the published key, and ways to damage them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/cipher/base64.h"
#include "crypto/cipher/rsa_oaep.h"
#include "crypto/messages/envelope.h"
#include "tests/support/crypto/test_keys.h"

#include <QJsonArray>
#include <QJsonObject>

namespace tideloft::tests
{
using namespace Qt::StringLiterals;

inline const QString own = u"dev-1"_s;

inline QJsonObject changed(QJsonObject message, const QString &member, const QJsonValue &value)
{
    message.insert(member, value);
    return message;
}

/// The message with one bit of a Base64 member turned, inside the bytes and not in their encoding.
inline QJsonObject flippedMember(const QJsonObject &message, const QString &member, qsizetype position)
{
    const QByteArray bytes = crypto::fromBase64Text(message.value(member).toString());
    return changed(message, member, crypto::toBase64Text(flipped(bytes, position)));
}

inline QJsonObject withRecipientKey(const QJsonObject &message, const QString &member, const QString &value)
{
    const QJsonObject record = message.value(u"recipientKeys"_s).toArray().at(0).toObject();
    return changed(message, u"recipientKeys"_s, QJsonArray{changed(record, member, value)});
}

inline QJsonObject flippedWrappedKey(const QJsonObject &message, qsizetype position)
{
    const QJsonObject record = message.value(u"recipientKeys"_s).toArray().at(0).toObject();
    const QByteArray key = crypto::fromBase64Text(record.value(u"encryptedKey"_s).toString());
    return withRecipientKey(message, u"encryptedKey"_s, crypto::toBase64Text(flipped(key, position)));
}

inline QString noKeyFor(const QString &deviceId)
{
    return u"No encrypted key found for device '"_s + deviceId
           + u"'. The message was not encrypted for this device, or the key arrays are empty. Try "
             "re-registering your device key."_s;
}

/// From bob to alice's device dev-1.
inline QJsonObject sealed(const QString &text)
{
    const QString publicKey = crypto::toBase64Text(publicKeyOf(publishedPrivateKey()));
    const QJsonArray devices{QJsonObject{{u"deviceId"_s, own}, {u"publicKeyBase64"_s, publicKey}}};
    const crypto::EncryptedEnvelope envelope = crypto::encryptMessageEnvelope(text, devices, {});
    return {{u"encrypted"_s, true},
            {u"from"_s, u"bob"_s},
            {u"to"_s, u"alice"_s},
            {u"text"_s, envelope.ciphertextBase64},
            {u"iv"_s, envelope.ivBase64},
            {u"recipientKeys"_s, envelope.recipientKeys},
            {u"senderKeys"_s, envelope.senderKeys}};
}

/// The same with parts that the envelope would not make.
inline QJsonObject sealedBy(const QByteArray &contentKey, const QByteArray &iv, const QByteArray &bytes)
{
    const QByteArray publicKey = publicKeyOf(publishedPrivateKey());
    const QString wrapped = crypto::toBase64Text(crypto::rsaOaepEncrypt(publicKey, contentKey));
    const QJsonObject message = withRecipientKey(sealed(u"x"_s), u"encryptedKey"_s, wrapped);
    return changed(changed(message, u"iv"_s, crypto::toBase64Text(iv)), u"text"_s,
                   crypto::toBase64Text(bytes));
}

} // namespace tideloft::tests
