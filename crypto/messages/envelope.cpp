// Building of the message envelope.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/envelope_sealing.h"

#include "crypto/cipher/aes_gcm.h"
#include "crypto/cipher/base64.h"
#include "crypto/cipher/failure.h"
#include "crypto/cipher/openssl_bytes.h"
#include "crypto/cipher/rsa_oaep.h"
#include "crypto/cipher/secret_bytes.h"

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

// Seals the text and returns its content key. Fails without a text or without a recipient.
SecretBytes sealForDevices(const QString &plainText, const QJsonArray &recipientDevices,
                           EncryptedEnvelope &envelope)
{
    if (plainText.isEmpty())
        envelope.error = u"Plain text is empty."_s;
    else if (recipientDevices.isEmpty())
        envelope.error = u"Recipient has no registered device keys."_s;
    else
        return sealText(plainText, envelope);
    return SecretBytes(QByteArray());
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

EnvelopeSealing::EnvelopeSealing(const QString &plainText, const QJsonArray &recipientDevices,
                                 const QJsonArray &senderDevices)
    : contentKey(sealForDevices(plainText, recipientDevices, envelope)),
      recipients(recipientDevices),
      senders(senderDevices),
      isDone(contentKey.isEmpty())
{
}

void EnvelopeSealing::wrapNext()
{
    if (isDone)
        return;
    KeyWrapping &side = recipients.isAtEnd() ? senders : recipients;
    QJsonArray &wrappedKeys = recipients.isAtEnd() ? envelope.senderKeys : envelope.recipientKeys;
    if (!side.isAtEnd() && !side.wrapNext(contentKey.view(), wrappedKeys, &envelope.error))
        finish(false);
    else if (recipients.isAtEnd() && envelope.recipientKeys.isEmpty())
        finish(fail(&envelope.error, u"No valid recipient device keys found."_s));
    else if (recipients.isAtEnd() && senders.isAtEnd())
        finish(true);
}

void EnvelopeSealing::finish(bool ok)
{
    envelope.ok = ok;
    isDone = true;
    contentKey.wipe();
}

EncryptedEnvelope encryptMessageEnvelope(const QString &plainText, const QJsonArray &recipientDevices,
                                         const QJsonArray &senderDevices)
{
    EnvelopeSealing sealing(plainText, recipientDevices, senderDevices);
    while (!sealing.isFinished())
        sealing.wrapNext();
    return sealing.takeEnvelope();
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
