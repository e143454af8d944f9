// What libcrypto needs to wrap or unwrap a content key, for the floors that call libcrypto themselves.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/cipher/openssl_ptr.h"

#include <openssl/evp.h>
#include <openssl/rsa.h>

#include <QtGlobal>

namespace tideloft::bench
{

/// A context of RSA-OAEP with SHA-256 (RFC 8017) for KEY, made ready by INIT: EVP_PKEY_encrypt_init or
/// EVP_PKEY_decrypt_init. Ends the program if libcrypto refuses.
inline crypto::OpenSslPtr<EVP_PKEY_CTX> oaepContext(EVP_PKEY *key, int (*init)(EVP_PKEY_CTX *))
{
    crypto::OpenSslPtr<EVP_PKEY_CTX> context(EVP_PKEY_CTX_new(key, nullptr));
    const bool ready = context && init(context.get()) > 0
                       && EVP_PKEY_CTX_set_rsa_padding(context.get(), RSA_PKCS1_OAEP_PADDING) > 0
                       && EVP_PKEY_CTX_set_rsa_oaep_md(context.get(), EVP_sha256()) > 0
                       && EVP_PKEY_CTX_set_rsa_mgf1_md(context.get(), EVP_sha256()) > 0;
    if (!ready)
        qFatal("No RSA-OAEP context.");
    return context;
}

} // namespace tideloft::bench
