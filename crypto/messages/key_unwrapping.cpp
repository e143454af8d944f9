// Unwrapping of content keys.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/key_unwrapping.h"

#include "crypto/cipher/rsa_oaep_context.h"

namespace tideloft::crypto
{

void KeyUnwrapping::Free::operator()(evp_pkey_ctx_st *context) const noexcept
{
    EVP_PKEY_CTX_free(context); // and with it the key, whose private numbers OpenSSL wipes
}

QByteArray KeyUnwrapping::unwrap(const QByteArray &privateKey, const QByteArray &wrappedKey, QString *error)
{
    if (!decryption)
        decryption.reset(makeOaepDecryption(privateKey, error).release());
    return decryption ? runOaepDecryption(decryption.get(), wrappedKey, error) : QByteArray();
}

} // namespace tideloft::crypto
