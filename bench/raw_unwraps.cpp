// Unwrapping by libcrypto alone.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/raw_unwraps.h"

#include "bench/oaep_context.h"

#include <openssl/evp.h>
#include <openssl/rsa.h>

#include <QtGlobal>

namespace tideloft::bench
{

RawUnwraps::RawUnwraps() : key(EVP_RSA_gen(2048))
{
    const std::array<unsigned char, 32> secret{};
    size_t size = wrapped.size();
    if (EVP_PKEY_encrypt(oaepContext(key.get(), EVP_PKEY_encrypt_init).get(), wrapped.data(), &size,
                         secret.data(), secret.size())
        <= 0)
        qFatal("Nothing was wrapped.");
    context = oaepContext(key.get(), EVP_PKEY_decrypt_init);
}

void RawUnwraps::run(int count)
{
    for (int i = 0; i < count; ++i) {
        Bytes opened{};
        size_t size = opened.size();
        if (EVP_PKEY_decrypt(context.get(), opened.data(), &size, wrapped.data(), wrapped.size()) <= 0)
            qFatal("libcrypto does not unwrap.");
    }
}

} // namespace tideloft::bench
