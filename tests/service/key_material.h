// Public keys of any size, made at once: a random odd number is modulus enough for who only looks at the
// size.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <openssl/bn.h>
#include <openssl/core_names.h>
#include <openssl/evp.h>
#include <openssl/param_build.h>
#include <openssl/x509.h>

namespace tideloft::tests
{

/// Base64 of the DER SubjectPublicKeyInfo of an RSA key with that many bits.
inline QString rsaPublicKey(int bits)
{
    BIGNUM *modulus = BN_new();
    BN_rand(modulus, bits, BN_RAND_TOP_ONE, BN_RAND_BOTTOM_ODD);
    OSSL_PARAM_BLD *builder = OSSL_PARAM_BLD_new();
    OSSL_PARAM_BLD_push_BN(builder, OSSL_PKEY_PARAM_RSA_N, modulus);
    OSSL_PARAM_BLD_push_uint(builder, OSSL_PKEY_PARAM_RSA_E, 65537);
    OSSL_PARAM *parameters = OSSL_PARAM_BLD_to_param(builder);
    EVP_PKEY_CTX *context = EVP_PKEY_CTX_new_from_name(nullptr, "RSA", nullptr);
    EVP_PKEY *key = nullptr;
    EVP_PKEY_fromdata_init(context);
    EVP_PKEY_fromdata(context, &key, EVP_PKEY_PUBLIC_KEY, parameters);
    unsigned char *der = nullptr;
    const int size = i2d_PUBKEY(key, &der);
    const QByteArray bytes(reinterpret_cast<const char *>(der), size);
    OPENSSL_free(der);
    EVP_PKEY_free(key);
    EVP_PKEY_CTX_free(context);
    OSSL_PARAM_free(parameters);
    OSSL_PARAM_BLD_free(builder);
    BN_free(modulus);
    return QString::fromLatin1(bytes.toBase64());
}

/// The same key as Base64 of its PEM text.
inline QString asPem(const QString &base64Der)
{
    return QString::fromLatin1(
        ("-----BEGIN PUBLIC KEY-----\n" + base64Der.toLatin1() + "\n-----END PUBLIC KEY-----\n").toBase64());
}

} // namespace tideloft::tests
