// Filling and clearing of the cache.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/decryption_cache.h"

namespace tideloft::crypto
{

namespace
{

// With bytes of its own: those that are copied here are wiped by their owner.
QByteArray deepCopy(const QByteArray &bytes)
{
    return {bytes.constData(), bytes.size()};
}

} // namespace

void DecryptionCache::clear()
{
    privateKeyText.wipe();
    userName.clear();
    deviceId.clear();
    unwrapping.clear();
    contentKeys.clear();
    failures.clear();
    ++changes;
}

void DecryptionCache::setReader(const QByteArray &keyText, const QString &ownName, const QString &ownDeviceId)
{
    if (privateKeyText.view() == keyText && userName == ownName && deviceId == ownDeviceId)
        return;
    clear();
    if (keyText.isEmpty())
        return;
    privateKeyText.buffer() = deepCopy(keyText);
    userName = ownName;
    deviceId = ownDeviceId;
}

QByteArray DecryptionCache::contentKey(const QByteArray &digest) const
{
    const SecretBytes *key = contentKeys.object(digest);
    return key ? key->view() : QByteArray();
}

void DecryptionCache::insertContentKey(const QByteArray &digest, const QByteArray &contentKey)
{
    if (!digest.isEmpty())
        contentKeys.insert(digest, new SecretBytes(deepCopy(contentKey)));
}

std::optional<QString> DecryptionCache::failure(const QByteArray &digest) const
{
    const QString *error = failures.object(digest);
    return error ? std::optional(*error) : std::nullopt;
}

void DecryptionCache::insertFailure(const QByteArray &digest, const QString &error)
{
    if (!digest.isEmpty())
        failures.insert(digest, new QString(error));
}

} // namespace tideloft::crypto
