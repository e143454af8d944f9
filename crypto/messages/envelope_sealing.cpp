// Sealing of the text, then of its key for one device after the other.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/envelope_sealing.h"

#include "crypto/cipher/aes_gcm.h"
#include "crypto/cipher/base64.h"
#include "crypto/cipher/failure.h"
#include "crypto/cipher/openssl_bytes.h"

#include <openssl/err.h>
#include <openssl/rand.h>

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

} // namespace tideloft::crypto
