// Remembering and forgetting.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/reading_memory.h"

#include "crypto/cipher/rsa_oaep_context.h"

#include <openssl/crypto.h>

namespace tideloft::crypto
{

ReadingMemory::ReadingMemory(quint32 capacity, std::pmr::memory_resource *storage)
    : privateKeyText(storage),
      contentKeys(capacity, storage)
{
}

void ReadingMemory::Free::operator()(evp_pkey_ctx_st *context) const noexcept
{
    EVP_PKEY_CTX_free(context); // and with it the key, whose private numbers OpenSSL wipes
}

void ReadingMemory::forget()
{
    OPENSSL_cleanse(privateKeyText.data(), privateKeyText.size());
    privateKeyText.clear();
    userName.clear();
    deviceId.clear();
    decryption.reset();
    contentKeys.clear();
    failures.clear();
    ++forgotten;
}

void ReadingMemory::readFor(const QByteArray &keyText, const QString &ownName, const QString &ownDeviceId)
{
    const QByteArrayView before(privateKeyText.data(), static_cast<qsizetype>(privateKeyText.size()));
    if (before == keyText && userName == ownName && deviceId == ownDeviceId)
        return;
    forget();
    if (keyText.isEmpty())
        return;
    privateKeyText.assign(keyText.cbegin(), keyText.cend());
    userName = ownName;
    deviceId = ownDeviceId;
}

void ReadingMemory::remember(const WrappedKeyDigest &wrappedKey, const QByteArray &contentKey)
{
    contentKeys.insert(wrappedKey, contentKey);
}

QByteArray ReadingMemory::unwrap(const QByteArray &privateKey, const QByteArray &wrappedKey, QString *error)
{
    if (!decryption)
        decryption.reset(makeOaepDecryption(privateKey, error).release());
    return decryption ? runOaepDecryption(decryption.get(), wrappedKey, error) : QByteArray();
}

} // namespace tideloft::crypto
