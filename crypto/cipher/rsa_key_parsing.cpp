// Parsing of RSA keys.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/rsa_key_parsing.h"

#include "crypto/cipher/openssl_bytes.h"
#include "crypto/cipher/openssl_memory.h"

#include <openssl/err.h>
#include <openssl/pem.h>

#include <utility>

namespace tideloft::crypto
{
namespace
{

OpenSslPtr<EVP_PKEY> parsePublicPem(const QByteArray &text)
{
    if (!std::in_range<int>(text.size()))
        return {};
    const OpenSslPtr<BIO> bio(BIO_new_mem_buf(text.constData(), static_cast<int>(text.size())));
    if (!bio)
        return {};
    // Without a callback OpenSSL asks the terminal for the password of an encrypted block, and the window
    // would hang on a key that another user registered. An empty password as user data keeps it quiet.
    char noPassword[] = "";
    return OpenSslPtr<EVP_PKEY>(PEM_read_bio_PUBKEY(bio.get(), nullptr, nullptr, noPassword));
}

} // namespace

OpenSslPtr<EVP_PKEY> parsePublicKey(const QByteArray &encoded)
{
    const unsigned char *position = readable(encoded);
    if (OpenSslPtr<EVP_PKEY> key{d2i_PUBKEY(nullptr, &position, static_cast<long>(encoded.size()))})
        return key;
    ERR_clear_error();
    return parsePublicPem(encoded);
}

OpenSslPtr<EVP_PKEY> parsePrivateKey(const QByteArray &encoded)
{
    wipeWhatOpensslFrees();
    const unsigned char *position = readable(encoded);
    return OpenSslPtr<EVP_PKEY>(d2i_AutoPrivateKey(nullptr, &position, static_cast<long>(encoded.size())));
}

} // namespace tideloft::crypto
