// Building of the message envelope.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/envelope.h"

#include "crypto/aes_gcm.h"
#include "crypto/base64.h"
#include "crypto/failure.h"
#include "crypto/openssl_bytes.h"
#include "crypto/rsa_oaep.h"
#include "crypto/secret_bytes.h"

#include <openssl/err.h>
#include <openssl/rand.h>

#include <QJsonObject>

namespace tideloft::crypto
{
using namespace Qt::StringLiterals;

namespace
{

// Empty if the generator fails.
QByteArray randomBytes(qsizetype size)
{
    QByteArray bytes(size, '\0');
    if (RAND_bytes(writable(bytes), static_cast<int>(size)) != 1)
        bytes.clear();
    return bytes;
}

QString trimmedMember(const QJsonObject &record, const QString &name)
{
    return record.value(name).toString().trimmed();
}

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

// Seals the text; the content key that the devices need is the result, empty on failure.
SecretBytes sealText(const QString &plainText, EncryptedEnvelope &envelope)
{
    ERR_clear_error();
    SecretBytes contentKey(randomBytes(aesKeySize));
    const QByteArray iv = contentKey.isEmpty() ? QByteArray() : randomBytes(gcmNonceSize);
    if (iv.isEmpty()) {
        failOpenssl(&envelope.error, u"Could not generate random key/IV: %1"_s);
        return SecretBytes(QByteArray());
    }
    const QByteArray sealed = aesGcmEncrypt(contentKey.view(), iv, plainText.toUtf8(), &envelope.error);
    if (sealed.isEmpty())
        return SecretBytes(QByteArray());
    envelope.ciphertextBase64 = toBase64Text(sealed);
    envelope.ivBase64 = toBase64Text(iv);
    return contentKey;
}

// Whether every step succeeded; if not, the message is in the envelope.
bool sealFor(const QString &plainText, const QJsonArray &recipientDevices, const QJsonArray &senderDevices,
             EncryptedEnvelope &envelope)
{
    if (plainText.isEmpty())
        return fail(&envelope.error, u"Plain text is empty."_s);
    if (recipientDevices.isEmpty())
        return fail(&envelope.error, u"Recipient has no registered device keys."_s);
    const SecretBytes contentKey = sealText(plainText, envelope);
    if (contentKey.isEmpty()
        || !wrapKeyForDevices(recipientDevices, contentKey.view(), envelope.recipientKeys, envelope))
        return false;
    if (envelope.recipientKeys.isEmpty())
        return fail(&envelope.error, u"No valid recipient device keys found."_s);
    return wrapKeyForDevices(senderDevices, contentKey.view(), envelope.senderKeys, envelope);
}

} // namespace

EncryptedEnvelope encryptMessageEnvelope(const QString &plainText, const QJsonArray &recipientDevices,
                                         const QJsonArray &senderDevices)
{
    EncryptedEnvelope envelope;
    envelope.ok = sealFor(plainText, recipientDevices, senderDevices, envelope);
    return envelope;
}

bool wrapKeyForDevices(const QJsonArray &devices, const QByteArray &contentKey, QJsonArray &wrappedKeys,
                       EncryptedEnvelope &envelope)
{
    for (const auto &device : devices) {
        const QJsonObject record = device.toObject();
        const QString deviceId = trimmedMember(record, u"deviceId"_s);
        const QString publicKey = trimmedMember(record, u"publicKeyBase64"_s);
        if (deviceId.isEmpty() || publicKey.isEmpty())
            continue;
        const QString wrapped = wrapKey(deviceId, publicKey, contentKey, &envelope.error);
        if (wrapped.isEmpty())
            return false;
        wrappedKeys.append(QJsonObject{{u"deviceId"_s, deviceId}, {u"encryptedKey"_s, wrapped}});
    }
    return true;
}

} // namespace tideloft::crypto
