// Taking a private key apart.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/private_numbers.h"

#include <openssl/bn.h>
#include <openssl/core_names.h>
#include <openssl/evp.h>
#include <openssl/x509.h>

namespace tideloft::tests
{

namespace
{

QByteArray numberOf(const EVP_PKEY *key, const char *name)
{
    BIGNUM *number = nullptr;
    if (EVP_PKEY_get_bn_param(key, name, &number) != 1)
        qFatal("The key has no %s", name);
    QByteArray bytes(BN_num_bytes(number), '\0');
    BN_bn2bin(number, reinterpret_cast<unsigned char *>(bytes.data()));
    BN_clear_free(number);
    return bytes;
}

} // namespace

QByteArrayList privateNumbers(const QByteArray &der)
{
    const auto *bytes = reinterpret_cast<const unsigned char *>(der.constData());
    EVP_PKEY *key = d2i_AutoPrivateKey(nullptr, &bytes, static_cast<long>(der.size()));
    if (!key)
        qFatal("These are no private key's bytes");
    QByteArrayList numbers;
    for (const char *name :
         {OSSL_PKEY_PARAM_RSA_D, OSSL_PKEY_PARAM_RSA_FACTOR1, OSSL_PKEY_PARAM_RSA_FACTOR2,
          OSSL_PKEY_PARAM_RSA_EXPONENT1, OSSL_PKEY_PARAM_RSA_EXPONENT2, OSSL_PKEY_PARAM_RSA_COEFFICIENT1})
        numbers.append(numberOf(key, name));
    EVP_PKEY_free(key);
    return numbers;
}

} // namespace tideloft::tests
