// Owning pointers for the OpenSSL objects this room uses, so that every path frees them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <openssl/bio.h>
#include <openssl/evp.h>

#include <memory>

namespace tideloft::crypto
{

struct OpenSslFree {
    void operator()(BIO *bio) const noexcept { BIO_free(bio); }
    void operator()(EVP_PKEY *key) const noexcept { EVP_PKEY_free(key); }
    void operator()(EVP_PKEY_CTX *context) const noexcept { EVP_PKEY_CTX_free(context); }
    void operator()(EVP_CIPHER_CTX *context) const noexcept { EVP_CIPHER_CTX_free(context); }
};

template <typename T> using OpenSslPtr = std::unique_ptr<T, OpenSslFree>;

} // namespace tideloft::crypto
