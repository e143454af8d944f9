// Sealing with the client's own envelope; opening step by step with its primitives.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/sealed_messages.h"

#include "crypto/cipher/aes_gcm.h"
#include "crypto/cipher/base64.h"
#include "crypto/cipher/rsa_oaep.h"
#include "crypto/keys/device_key_pair.h"
#include "crypto/keys/key_store.h"
#include "crypto/messages/envelope.h"
#include "crypto/messages/wrapped_keys.h"

using namespace Qt::StringLiterals;

namespace tideloft::tests
{

QJsonObject KeyPair::device(const QString &deviceId) const
{
    return {{u"deviceId"_s, deviceId}, {u"publicKeyBase64"_s, publicKey}};
}

KeyPair makeKeyPair()
{
    QString error;
    if (!crypto::generateKeyPair(&error))
        qFatal("No key pair: %s", qPrintable(error));
    return ownKeyPair();
}

KeyPair ownKeyPair()
{
    return {.publicKey = crypto::readPublicKeyFile(), .privateKey = crypto::readPrivateKeyFile()};
}

QJsonObject sealedMessage(const QString &from, const QString &text, const KeyPair &pair,
                          const QString &deviceId, bool writtenThere)
{
    const crypto::EncryptedEnvelope envelope =
        crypto::encryptMessageEnvelope(text, {pair.device(deviceId)}, {});
    if (!envelope.ok)
        qFatal("Nothing was sealed: %s", qPrintable(envelope.error));
    return {{u"from"_s, from},
            {u"text"_s, envelope.ciphertextBase64},
            {u"iv"_s, envelope.ivBase64},
            {u"encrypted"_s, true},
            {u"senderKeys"_s, writtenThere ? envelope.recipientKeys : QJsonArray{}},
            {u"recipientKeys"_s, writtenThere ? QJsonArray{} : envelope.recipientKeys}};
}

QString openedBody(const QJsonObject &body, const QString &keysName, const KeyPair &pair,
                   const QString &deviceId)
{
    const auto bytes = [](const QString &base64) { return crypto::fromBase64Text(base64); };
    const QString wrapped = crypto::findWrappedKeyForDevice(body[keysName].toArray(), deviceId);
    const QByteArray contentKey = crypto::rsaOaepDecrypt(bytes(pair.privateKey), bytes(wrapped));
    const QByteArray text =
        crypto::aesGcmDecrypt(contentKey, bytes(body[u"iv"].toString()), bytes(body[u"text"].toString()));
    return text.isEmpty() ? QString() : QString::fromUtf8(text);
}

} // namespace tideloft::tests
