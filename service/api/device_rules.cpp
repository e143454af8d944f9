// Looking at public keys and identifiers.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/device_rules.h"

#include "service/api/base64.h"
#include "service/api/json_body.h"

#include <openssl/bio.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509.h>

#include <memory>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

struct OpenSslFree {
    void operator()(BIO *bio) const noexcept { BIO_free(bio); }
    void operator()(EVP_PKEY *key) const noexcept { EVP_PKEY_free(key); }
};

template <typename T> using OpenSslPtr = std::unique_ptr<T, OpenSslFree>;

constexpr int fewestBits = 2048;
constexpr int mostBits = 4096;

OpenSslPtr<EVP_PKEY> parseDer(const QByteArray &der)
{
    const auto *position = reinterpret_cast<const unsigned char *>(der.constData());
    const auto *end = position + der.size();
    OpenSslPtr<EVP_PKEY> key(d2i_PUBKEY(nullptr, &position, static_cast<long>(der.size())));
    return position == end ? std::move(key) : nullptr; // nothing may hide behind the key
}

OpenSslPtr<EVP_PKEY> parsePem(const QByteArray &pem)
{
    const OpenSslPtr<BIO> bio(BIO_new_mem_buf(pem.constData(), static_cast<int>(pem.size())));
    // Without a callback OpenSSL asks the terminal for the password of an encrypted block, and one user's key
    // would stop the service for all. An empty password as user data keeps it quiet.
    char noPassword[] = "";
    return OpenSslPtr<EVP_PKEY>(bio ? PEM_read_bio_PUBKEY(bio.get(), nullptr, nullptr, noPassword) : nullptr);
}

} // namespace

bool isAcceptablePublicKey(const QString &base64)
{
    const QByteArray bytes = decodeBase64(base64.trimmed());
    const OpenSslPtr<EVP_PKEY> key = bytes.startsWith("-----BEGIN") ? parsePem(bytes) : parseDer(bytes);
    ERR_clear_error();
    if (!key || EVP_PKEY_get_base_id(key.get()) != EVP_PKEY_RSA)
        return false;
    const int bits = EVP_PKEY_get_bits(key.get());
    return bits >= fewestBits && bits <= mostBits;
}

bool isDeviceId(const QString &text)
{
    return !text.trimmed().isEmpty() && text.size() <= longestDeviceId && isSingleLine(text);
}

} // namespace tideloft::service
