// Wrapping of content keys.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/key_wrapping.h"

#include "crypto/cipher/base64.h"
#include "crypto/cipher/failure.h"
#include "crypto/cipher/rsa_oaep.h"
#include "crypto/messages/trimmed_member.h"

#include <QJsonObject>

namespace tideloft::crypto
{
using namespace Qt::StringLiterals;

namespace
{

// The content key wrapped for one device, as Base64. Empty on failure.
QString wrapKey(const QString &deviceId, const QString &publicKeyBase64, const QByteArray &contentKey,
                QString *error)
{
    QString reason;
    const QByteArray publicKey = fromBase64Text(publicKeyBase64, &reason);
    // Both places are filled at once: the identifier comes from outside and may hold a "%2" of its own.
    if (publicKey.isEmpty())
        return fail(error, u"Could not decode public key for device '%1': %2"_s.arg(deviceId, reason));
    const QByteArray wrapped = rsaOaepEncrypt(publicKey, contentKey, &reason);
    if (wrapped.isEmpty())
        return fail(error, u"RSA encrypt failed for device '%1': %2"_s.arg(deviceId, reason));
    return toBase64Text(wrapped);
}

} // namespace

bool KeyWrapping::wrapNext(const QByteArray &contentKey, QJsonArray &wrappedKeys, QString *error)
{
    const QJsonObject record = devices.at(next++).toObject();
    const QString deviceId = trimmedMember(record, u"deviceId"_s);
    const QString publicKey = trimmedMember(record, u"publicKeyBase64"_s);
    if (deviceId.isEmpty() || publicKey.isEmpty())
        return true;
    const QString wrapped = wrapKey(deviceId, publicKey, contentKey, error);
    if (wrapped.isEmpty())
        return false;
    wrappedKeys.append(QJsonObject{{u"deviceId"_s, deviceId}, {u"encryptedKey"_s, wrapped}});
    return true;
}

bool wrapKeyForDevices(const QJsonArray &devices, const QByteArray &contentKey, QJsonArray &wrappedKeys,
                       EncryptedEnvelope &envelope)
{
    KeyWrapping wrapping(devices);
    while (!wrapping.isAtEnd()) {
        if (!wrapping.wrapNext(contentKey, wrappedKeys, &envelope.error))
            return false;
    }
    return true;
}

} // namespace tideloft::crypto
