// Opening of messages, one function for each step. A step that fails says why, and no other step follows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/open_message.h"

#include "crypto/cipher/aes_gcm.h"
#include "crypto/cipher/base64.h"
#include "crypto/cipher/failure.h"
#include "crypto/cipher/secret_bytes.h"
#include "crypto/keys/key_store.h"
#include "crypto/messages/decryption_cache.h"
#include "crypto/messages/sealed_texts.h"
#include "crypto/messages/trimmed_member.h"

#include <optional>

namespace tideloft::crypto
{
using namespace Qt::StringLiterals;

namespace
{

// What AES-GCM opens.
struct SealedBytes {
    QByteArray iv;
    QByteArray text;
};

std::optional<SealedTexts> findSealedTexts(const QJsonObject &message, const QString &ownName,
                                           const QString &ownDeviceId, QString *error)
{
    SealedTexts sealed{trimmedMember(message, u"text"_s), trimmedMember(message, u"iv"_s), {}};
    if (sealed.text.isEmpty() || sealed.iv.isEmpty()) {
        *error = u"Encrypted payload is missing text or iv."_s;
        return {};
    }
    sealed.wrappedKey = findOwnWrappedKey(message, ownName, ownDeviceId);
    if (sealed.wrappedKey.isEmpty()) {
        *error = u"No encrypted key found for device '%1'. The message was not encrypted for this device, or "
                 "the key arrays are empty. Try re-registering your device key."_s.arg(ownDeviceId);
        return {};
    }
    return sealed;
}

// The decoder explains its failure, or FALLBACK does.
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

// A text without characters is a text too: only a reported error makes an empty one a failure.
DecryptResult openText(const QByteArray &contentKey, const SealedBytes &sealed)
{
    QString error;
    const SecretBytes plaintext(aesGcmDecrypt(contentKey, sealed.iv, sealed.text, &error));
    if (plaintext.isEmpty() && !error.isEmpty())
        return {false, error, {}};
    return {true, {}, QString::fromUtf8(plaintext.view())};
}

// All parts are decoded before RSA begins. Only the content key of a message that opens is cached: one that
// fails cannot evict others.
DecryptResult openUncached(const QByteArray &keyText, const SealedTexts &texts, const QByteArray &keyDigest,
                           DecryptionCache &cache)
{
    DecryptResult failed;
    const bool isParsed = cache.keyUnwrapping().hasPrivateKey();
    const SecretBytes key = isParsed ? SecretBytes(QByteArray()) : decodePrivateKey(keyText, &failed.error);
    if (key.isEmpty() && !isParsed)
        return failed;
    const QByteArray wrappedKey = decode(texts.wrappedKey, u"Encrypted key decode failed."_s, &failed.error);
    if (wrappedKey.isEmpty())
        return failed;
    const auto sealed = decodeText(texts, &failed.error);
    if (!sealed)
        return failed;
    const SecretBytes contentKey(cache.keyUnwrapping().unwrap(key.view(), wrappedKey, &failed.error));
    if (contentKey.isEmpty()) {
        failUnlessExplained(&failed.error, u"RSA decrypt failed."_s);
        return failed;
    }
    DecryptResult result = openText(contentKey.view(), *sealed);
    if (result.ok)
        cache.insertContentKey(keyDigest, contentKey.view());
    return result;
}

// Both keys were decoded before the content key was cached, so only the rest can still fail.
DecryptResult openCached(const QByteArray &contentKey, const SealedTexts &texts)
{
    DecryptResult failed;
    const auto sealed = decodeText(texts, &failed.error);
    return sealed ? openText(contentKey, *sealed) : failed;
}

// OpenSSL had no memory for an object, which says nothing about the message.
bool mayPass(const QString &error)
{
    return error.startsWith(u"Could not create "_s);
}

// What failed fails again for the same reason as long as the cache is for the same key, user and device.
DecryptResult openTexts(const QByteArray &keyText, const SealedTexts &texts, DecryptionCache &cache)
{
    const QByteArray keyDigest = digestOf(texts.wrappedKey);
    const QByteArray contentKey = cache.contentKey(keyDigest);
    if (!contentKey.isEmpty())
        return openCached(contentKey, texts);
    const QByteArray digest = digestOf(texts);
    if (const auto error = cache.failure(digest))
        return {false, *error, {}};
    DecryptResult result = openUncached(keyText, texts, keyDigest, cache);
    if (!result.ok && mayPass(result.error))
        cache.noteTransientFailure();
    else if (!result.ok)
        cache.insertFailure(digest, result.error);
    return result;
}

DecryptResult openEnvelope(const QJsonObject &message, const QString &ownName, const QString &ownDeviceId,
                           DecryptionCache &cache)
{
    DecryptResult failed;
    const auto texts = findSealedTexts(message, ownName, ownDeviceId, &failed.error);
    if (!texts)
        return failed;
    const SecretBytes keyText = readPrivateKey(&failed.error);
    cache.setReader(keyText.view(), ownName, ownDeviceId);
    return keyText.isEmpty() ? failed : openTexts(keyText.view(), *texts, cache);
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
    DecryptionCache forThisMessage(1);
    return decryptMessage(message, ownName, ownDeviceId, forThisMessage);
}

DecryptResult decryptMessage(const QJsonObject &message, const QString &ownName, const QString &ownDeviceId,
                             DecryptionCache &cache)
{
    if (!isEncrypted(message))
        return {true, {}, message.value(u"text"_s).toString()};
    return openEnvelope(message, ownName, ownDeviceId, cache);
}

void rereadPrivateKey(const QString &ownName, const QString &ownDeviceId, DecryptionCache &cache)
{
    const SecretBytes keyText(readPrivateKeyBytes());
    cache.setReader(keyText.view(), ownName, ownDeviceId);
}

QString decryptMessageText(const QJsonObject &message, const QString &ownName, const QString &ownDeviceId,
                           QString *error)
{
    return textOf(decryptMessage(message, ownName, ownDeviceId), error);
}

QString decryptMessageText(const QJsonObject &message, const QString &ownName, const QString &ownDeviceId,
                           DecryptionCache &cache, QString *error)
{
    return textOf(decryptMessage(message, ownName, ownDeviceId, cache), error);
}

} // namespace tideloft::crypto
