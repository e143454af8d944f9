// Hashing with libcrypto.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/secrets/password_hash.h"

#include "service/secrets/random.h"

#include <QList>

#include <openssl/crypto.h>
#include <openssl/evp.h>

#include <stdexcept>

namespace tideloft::service
{

namespace
{

constexpr int saltSize = 16;
constexpr int keySize = 32;

QByteArray derive(const QString &password, const QByteArray &salt, const ScryptCost &cost)
{
    // Without a limit of our own libcrypto refuses everything above 32 MiB.
    constexpr std::uint64_t maximumMemory = 256ULL * 1024 * 1024;
    QByteArray secret = password.toUtf8();
    QByteArray key(keySize, '\0');
    const int done = EVP_PBE_scrypt(secret.constData(), static_cast<size_t>(secret.size()),
                                    reinterpret_cast<const unsigned char *>(salt.constData()),
                                    static_cast<size_t>(salt.size()), cost.n, cost.r, cost.p, maximumMemory,
                                    reinterpret_cast<unsigned char *>(key.data()), keySize);
    OPENSSL_cleanse(secret.data(), static_cast<size_t>(secret.size()));
    if (done != 1)
        throw std::runtime_error("scrypt failed");
    return key;
}

QByteArray encode(const ScryptCost &cost, const QByteArray &salt, const QByteArray &key)
{
    return "scrypt$" + QByteArray::number(quint64(cost.n)) + '$' + QByteArray::number(quint64(cost.r)) + '$'
           + QByteArray::number(quint64(cost.p)) + '$' + salt.toBase64() + '$' + key.toBase64();
}

} // namespace

QByteArray hashPassword(const QString &password, const ScryptCost &cost)
{
    const QByteArray salt = randomBytes(saltSize);
    return encode(cost, salt, derive(password, salt, cost));
}

bool passwordMatches(const QString &password, const QByteArray &hash)
{
    const QList<QByteArray> parts = hash.split('$');
    if (parts.size() != 6 || parts[0] != "scrypt")
        return false;
    const ScryptCost cost{parts[1].toULongLong(), parts[2].toULongLong(), parts[3].toULongLong()};
    const QByteArray expected = QByteArray::fromBase64(parts[5]);
    const QByteArray key = derive(password, QByteArray::fromBase64(parts[4]), cost);
    return expected.size() == keySize && CRYPTO_memcmp(key.constData(), expected.constData(), keySize) == 0;
}

QByteArray unmatchableHash(const ScryptCost &cost)
{
    // A key that was drawn and not derived belongs to no password that anybody could find.
    return encode(cost, randomBytes(saltSize), randomBytes(keySize));
}

} // namespace tideloft::service
