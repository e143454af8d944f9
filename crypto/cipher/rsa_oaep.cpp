// RSA-OAEP over OpenSSL, both directions through one chain of calls.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/rsa_oaep.h"

#include "crypto/cipher/failure.h"
#include "crypto/cipher/openssl_bytes.h"
#include "crypto/cipher/rsa_key_parsing.h"
#include "crypto/cipher/rsa_oaep_context.h"
#include "crypto/cipher/secret_bytes.h"

#include <openssl/err.h>
#include <openssl/rsa.h>

#include <utility>

namespace tideloft::crypto
{
using namespace Qt::StringLiterals;

namespace
{

// What differs between encrypting and decrypting.
struct Direction {
    int (*init)(EVP_PKEY_CTX *);
    int (*run)(EVP_PKEY_CTX *, unsigned char *, size_t *, const unsigned char *, size_t);
    QString contextFailure;
    QString runFailure;
};

bool chooseOaepSha256(EVP_PKEY_CTX *context)
{
    return EVP_PKEY_CTX_set_rsa_padding(context, RSA_PKCS1_OAEP_PADDING) > 0
           && EVP_PKEY_CTX_set_rsa_oaep_md(context, EVP_sha256()) > 0
           && EVP_PKEY_CTX_set_rsa_mgf1_md(context, EVP_sha256()) > 0;
}

// Ready to run any number of times in one direction.
OpenSslPtr<EVP_PKEY_CTX> makeContext(const Direction &direction, OpenSslPtr<EVP_PKEY> key, QString *error)
{
    OpenSslPtr<EVP_PKEY_CTX> context(EVP_PKEY_CTX_new(key.get(), nullptr));
    key.reset(); // the context keeps a reference of its own
    if (!context)
        return failOpenssl(error, direction.contextFailure);
    if (direction.init(context.get()) <= 0 || !chooseOaepSha256(context.get()))
        return failOpenssl(error, u"RSA-OAEP size query failed: %1"_s);
    return context;
}

QByteArray run(const Direction &direction, EVP_PKEY_CTX *context, const QByteArray &input, QString *error)
{
    const auto inputSize = static_cast<size_t>(input.size());
    size_t size = 0;
    if (direction.run(context, nullptr, &size, readable(input), inputSize) <= 0)
        return failOpenssl(error, u"RSA-OAEP size query failed: %1"_s);
    SecretBytes output(QByteArray(static_cast<qsizetype>(size), '\0'));
    if (direction.run(context, writable(output.buffer()), &size, readable(input), inputSize) <= 0)
        return failOpenssl(error, direction.runFailure);
    output.buffer().resize(static_cast<qsizetype>(size));
    return output.release();
}

Direction encryption()
{
    return {EVP_PKEY_encrypt_init, EVP_PKEY_encrypt, u"Could not create RSA encrypt context: %1"_s,
            u"RSA-OAEP encrypt failed: %1"_s};
}

Direction decryption()
{
    return {EVP_PKEY_decrypt_init, EVP_PKEY_decrypt, u"Could not create RSA context: %1"_s,
            u"RSA-OAEP decrypt failed: %1"_s};
}

} // namespace

QByteArray rsaOaepEncrypt(const QByteArray &publicKey, const QByteArray &plaintext, QString *error)
{
    ERR_clear_error();
    OpenSslPtr<EVP_PKEY> key = parsePublicKey(publicKey);
    if (!key)
        return failOpenssl(error, u"Could not parse public key (tried DER and PEM): %1"_s);
    const auto context = makeContext(encryption(), std::move(key), error);
    return context ? run(encryption(), context.get(), plaintext, error) : QByteArray();
}

QByteArray rsaOaepDecrypt(const QByteArray &privateKey, const QByteArray &ciphertext, QString *error)
{
    const auto context = makeOaepDecryption(privateKey, error);
    return context ? run(decryption(), context.get(), ciphertext, error) : QByteArray();
}

OpenSslPtr<EVP_PKEY_CTX> makeOaepDecryption(const QByteArray &privateKey, QString *error)
{
    ERR_clear_error();
    OpenSslPtr<EVP_PKEY> key = parsePrivateKey(privateKey);
    if (!key)
        return failOpenssl(error, u"Could not parse private key: %1"_s);
    return makeContext(decryption(), std::move(key), error);
}

QByteArray runOaepDecryption(EVP_PKEY_CTX *context, const QByteArray &ciphertext, QString *error)
{
    ERR_clear_error();
    return run(decryption(), context, ciphertext, error);
}

} // namespace tideloft::crypto
