// Opening of messages, one function for each step; a step that fails says why and ends the walk.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/open_message.h"

#include "crypto/cipher/aes_gcm.h"
#include "crypto/cipher/base64.h"
#include "crypto/cipher/failure.h"
#include "crypto/cipher/rsa_oaep.h"
#include "crypto/cipher/secret_bytes.h"
#include "crypto/keys/key_store.h"
#include "crypto/messages/failure_table.h"
#include "crypto/messages/reading_memory.h"
#include "crypto/messages/trimmed_member.h"

#include <optional>

namespace tideloft::crypto
{
using namespace Qt::StringLiterals;

namespace
{

// A memory, and under what it keeps the content key of one message.
struct Remembering {
    ReadingMemory &memory;
    WrappedKeyDigest wrappedKey;
};

// What AES-GCM opens.
struct SealedBytes {
    QByteArray iv;
    QByteArray text;
};

// The array for the side of the conversation that this user is on. The other one is never searched.
QJsonArray ownKeys(const QJsonObject &message, const QString &ownName)
{
    const bool sentByMe = trimmedMember(message, u"from"_s).toLower() == ownName.trimmed().toLower();
    return message.value(sentByMe ? u"senderKeys"_s : u"recipientKeys"_s).toArray();
}

std::optional<SealedTexts> findSealedTexts(const QJsonObject &message, const QString &ownName,
                                           const QString &ownDeviceId, QString *error)
{
    SealedTexts sealed{trimmedMember(message, u"text"_s), trimmedMember(message, u"iv"_s), {}};
    if (sealed.text.isEmpty() || sealed.iv.isEmpty()) {
        *error = u"Encrypted payload is missing text or iv."_s;
        return {};
    }
    sealed.wrappedKey = findWrappedKeyForDevice(ownKeys(message, ownName), ownDeviceId);
    if (sealed.wrappedKey.isEmpty()) {
        *error = u"No encrypted key found for device '%1'. The message was not encrypted for this device, or "
                 "the key arrays are empty. Try re-registering your device key."_s.arg(ownDeviceId);
        return {};
    }
    return sealed;
}

// A step gives its own message where it has one; `fallback` stands for a step that fails without a word.
QByteArray decode(const QString &base64, const QString &fallback, QString *error)
{
    QByteArray bytes = fromBase64Text(base64, error);
    if (bytes.isEmpty())
        return failUnlessExplained(error, fallback);
    return bytes;
}

std::optional<SealedBytes> decodeText(const SealedTexts &sealed, QString *error)
{
    const QByteArray iv = decode(sealed.iv, u"IV decode failed."_s, error);
    if (iv.isEmpty())
        return {};
    const QByteArray text = decode(sealed.text, u"Ciphertext decode failed."_s, error);
    if (text.isEmpty())
        return {};
    return SealedBytes{iv, text};
}

SecretBytes readPrivateKey(QString *error)
{
    SecretBytes keyText(readPrivateKeyBytes(error));
    if (keyText.isEmpty())
        failUnlessExplained(error, u"Private key not found."_s);
    return keyText;
}

// Bytes can be no text at all: a byte order mark alone is as good as blank.
SecretBytes decodePrivateKey(const QByteArray &keyText, QString *error)
{
    const SecretText base64(QString::fromUtf8(keyText));
    if (base64.isEmpty()) {
        *error = u"Private key not found."_s;
        return SecretBytes(QByteArray());
    }
    return SecretBytes(decode(base64.view(), u"Private key decode failed."_s, error));
}

SecretBytes unwrapContentKey(const QByteArray &privateKey, const QByteArray &wrappedKey, Remembering *kept,
                             QString *error)
{
    SecretBytes contentKey(kept ? kept->memory.unwrap(privateKey, wrappedKey, error)
                                : rsaOaepDecrypt(privateKey, wrappedKey, error));
    if (contentKey.isEmpty())
        failUnlessExplained(error, u"RSA decrypt failed."_s);
    return contentKey;
}

// A text without characters is a text too: only a reported error makes an empty one a failure.
DecryptResult openText(const QByteArray &contentKey, const SealedBytes &sealed)
{
    QString error;
    const SecretBytes plaintext(aesGcmDecrypt(contentKey, sealed.iv, sealed.text, &error));
    if (plaintext.isEmpty() && !error.isEmpty())
        return {false, error, {}};
    return {true, {}, QString::fromUtf8(plaintext.view())};
}

// All parts are decoded before RSA begins. Only the content key of a message that opens is remembered: one
// that fails cannot drive out others.
DecryptResult openUnwrapping(const QByteArray &keyText, const SealedTexts &texts, Remembering *kept)
{
    DecryptResult failed;
    const bool parsed = kept && kept->memory.hasPrivateKey();
    const SecretBytes key = parsed ? SecretBytes(QByteArray()) : decodePrivateKey(keyText, &failed.error);
    if (key.isEmpty() && !parsed)
        return failed;
    const QByteArray wrappedKey = decode(texts.wrappedKey, u"Encrypted key decode failed."_s, &failed.error);
    if (wrappedKey.isEmpty())
        return failed;
    const auto sealed = decodeText(texts, &failed.error);
    if (!sealed)
        return failed;
    const SecretBytes contentKey = unwrapContentKey(key.view(), wrappedKey, kept, &failed.error);
    if (contentKey.isEmpty())
        return failed;
    DecryptResult result = openText(contentKey.view(), *sealed);
    if (result.ok && kept)
        kept->memory.remember(kept->wrappedKey, contentKey.view());
    return result;
}

// Both keys were decoded when the content key was remembered, so only the rest can still fail.
DecryptResult openRemembered(const QByteArray &contentKey, const SealedTexts &texts)
{
    DecryptResult failed;
    const auto sealed = decodeText(texts, &failed.error);
    return sealed ? openText(contentKey, *sealed) : failed;
}

// There was no memory for it, which says nothing about the message.
bool mayPass(const QString &error)
{
    return error.startsWith(u"Could not create "_s);
}

// What failed fails again for the same reason as long as the memory is for the same key, user and device.
DecryptResult openWithMemory(const QByteArray &keyText, const SealedTexts &texts, ReadingMemory &memory)
{
    Remembering kept{memory, texts.wrappedKey};
    const QByteArray known = memory.contentKey(kept.wrappedKey);
    if (!known.isEmpty())
        return openRemembered(known, texts);
    const QByteArray digest = digestOf(texts);
    if (const auto error = memory.failure(digest))
        return {false, *error, {}};
    DecryptResult result = openUnwrapping(keyText, texts, &kept);
    if (!result.ok && mayPass(result.error))
        memory.expectAnotherAnswer();
    else if (!result.ok)
        memory.rememberFailure(digest, result.error);
    return result;
}

DecryptResult openEnvelope(const QJsonObject &message, const QString &ownName, const QString &ownDeviceId,
                           ReadingMemory *memory)
{
    DecryptResult failed;
    const auto texts = findSealedTexts(message, ownName, ownDeviceId, &failed.error);
    if (!texts)
        return failed;
    const SecretBytes keyText = readPrivateKey(&failed.error);
    if (memory)
        memory->readFor(keyText.view(), ownName, ownDeviceId);
    if (keyText.isEmpty())
        return failed;
    return memory ? openWithMemory(keyText.view(), *texts, *memory)
                  : openUnwrapping(keyText.view(), *texts, nullptr);
}

DecryptResult open(const QJsonObject &message, const QString &ownName, const QString &ownDeviceId,
                   ReadingMemory *memory)
{
    if (!isEncrypted(message))
        return {true, {}, message.value(u"text"_s).toString()};
    return openEnvelope(message, ownName, ownDeviceId, memory);
}

// Unlike elsewhere, success empties an error text left from before.
QString textOf(const DecryptResult &result, QString *error)
{
    if (!result.ok)
        return fail(error, result.error);
    if (error && !error->isEmpty())
        *error = QString();
    return result.text;
}

} // namespace

bool isEncrypted(const QJsonObject &item)
{
    const QJsonValue encrypted = item.value(u"encrypted"_s);
    return encrypted.toBool(false) || encrypted.toDouble(0) != 0;
}

DecryptResult decryptMessage(const QJsonObject &message, const QString &ownName, const QString &ownDeviceId)
{
    return open(message, ownName, ownDeviceId, nullptr);
}

DecryptResult decryptMessage(const QJsonObject &message, const QString &ownName, const QString &ownDeviceId,
                             ReadingMemory &memory)
{
    return open(message, ownName, ownDeviceId, &memory);
}

void rereadPrivateKey(const QString &ownName, const QString &ownDeviceId, ReadingMemory &memory)
{
    const SecretBytes keyText(readPrivateKeyBytes());
    memory.readFor(keyText.view(), ownName, ownDeviceId);
}

QString decryptMessageText(const QJsonObject &message, const QString &ownName, const QString &ownDeviceId,
                           QString *error)
{
    return textOf(decryptMessage(message, ownName, ownDeviceId), error);
}

QString decryptMessageText(const QJsonObject &message, const QString &ownName, const QString &ownDeviceId,
                           ReadingMemory &memory, QString *error)
{
    return textOf(decryptMessage(message, ownName, ownDeviceId, memory), error);
}

} // namespace tideloft::crypto
