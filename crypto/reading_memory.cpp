// Remembering and forgetting.
#include "crypto/reading_memory.h"

#include "crypto/rsa_key.h"
#include "crypto/rsa_oaep_key.h"

#include <openssl/crypto.h>
#include <openssl/err.h>

namespace tideloft::crypto
{

ReadingMemory::ReadingMemory(quint32 capacity, std::pmr::memory_resource *storage)
    : privateKeyText(storage),
      contentKeys(capacity, storage)
{
}

void ReadingMemory::FreeKey::operator()(evp_pkey_st *key) const noexcept
{
    EVP_PKEY_free(key); // wipes the private numbers
}

void ReadingMemory::forget()
{
    OPENSSL_cleanse(privateKeyText.data(), privateKeyText.size() * sizeof(char16_t));
    privateKeyText.clear();
    userName.clear();
    deviceId.clear();
    parsedKey.reset();
    contentKeys.clear();
}

void ReadingMemory::readFor(const QString &keyText, const QString &ownName, const QString &ownDeviceId)
{
    const QStringView before(privateKeyText.data(), static_cast<qsizetype>(privateKeyText.size()));
    if (before == keyText && userName == ownName && deviceId == ownDeviceId)
        return;
    forget();
    if (keyText.isEmpty())
        return;
    const QStringView text(keyText);
    privateKeyText.assign(text.utf16(), text.utf16() + text.size());
    userName = ownName;
    deviceId = ownDeviceId;
}

void ReadingMemory::remember(const QString &wrappedKey, const QByteArray &contentKey)
{
    contentKeys.insert(wrappedKey, contentKey);
}

QByteArray ReadingMemory::unwrap(const QByteArray &privateKey, const QByteArray &wrappedKey, QString *error)
{
    ERR_clear_error();
    if (!parsedKey)
        parsedKey.reset(parsePrivateKey(privateKey).release());
    return rsaOaepDecrypt(parsedKey.get(), wrappedKey, error);
}

} // namespace tideloft::crypto
