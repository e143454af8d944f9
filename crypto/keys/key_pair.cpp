// RSA key generation over OpenSSL.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/key_pair.h"

#include "crypto/cipher/base64.h"
#include "crypto/cipher/failure.h"
#include "crypto/cipher/openssl_bytes.h"
#include "crypto/cipher/openssl_memory.h"
#include "crypto/cipher/openssl_ptr.h"
#include "crypto/cipher/secret_bytes.h"

#include <openssl/err.h>
#include <openssl/rsa.h>
#include <openssl/x509.h>

namespace tideloft::crypto
{
using namespace Qt::StringLiterals;

namespace
{

constexpr int keyBits = 2048;

OpenSslPtr<EVP_PKEY> generateKey(QString *error)
{
    wipeWhatOpensslFrees();
    const OpenSslPtr<EVP_PKEY_CTX> context(EVP_PKEY_CTX_new_id(EVP_PKEY_RSA, nullptr));
    if (!context)
        return failOpenssl(error, u"Could not create RSA keygen context: %1"_s);
    if (EVP_PKEY_keygen_init(context.get()) <= 0)
        return failOpenssl(error, u"RSA keygen init failed: %1"_s);
    if (EVP_PKEY_CTX_set_rsa_keygen_bits(context.get(), keyBits) <= 0)
        return failOpenssl(error, u"RSA keygen bits failed: %1"_s);
    EVP_PKEY *key = nullptr;
    if (EVP_PKEY_keygen(context.get(), &key) <= 0)
        return failOpenssl(error, u"RSA keygen failed: %1"_s);
    return OpenSslPtr<EVP_PKEY>(key);
}

// Empty if the key cannot be encoded.
SecretBytes encode(int (*encoder)(const EVP_PKEY *, unsigned char **), const EVP_PKEY *key)
{
    SecretBytes der(QByteArray(qMax(0, encoder(key, nullptr)), '\0'));
    unsigned char *position = writable(der.buffer());
    if (!der.isEmpty() && encoder(key, &position) <= 0)
        der.wipe();
    return der;
}

} // namespace

std::unique_ptr<const KeyPair> makeKeyPair(QString *error)
{
    ERR_clear_error();
    const OpenSslPtr<EVP_PKEY> key = generateKey(error);
    if (!key)
        return nullptr;
    const SecretBytes privateDer = encode(i2d_PrivateKey, key.get());
    if (privateDer.isEmpty())
        return fail(error, u"Could not encode private key."_s);
    const SecretBytes publicDer = encode(i2d_PUBKEY, key.get());
    if (publicDer.isEmpty())
        return fail(error, u"Could not encode public key."_s);
    return std::make_unique<const KeyPair>(SecretText(toBase64Text(privateDer.view())),
                                           toBase64Text(publicDer.view()));
}

} // namespace tideloft::crypto
