// RSA-OAEP over OpenSSL, both directions through one chain of calls.
#include "crypto/rsa_oaep.h"

#include "crypto/failure.h"
#include "crypto/openssl_bytes.h"
#include "crypto/rsa_key.h"
#include "crypto/rsa_oaep_key.h"

#include <openssl/err.h>
#include <openssl/rsa.h>

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

QByteArray runOaep(const Direction &direction, EVP_PKEY *key, const QByteArray &input, QString *error)
{
    const OpenSslPtr<EVP_PKEY_CTX> context(EVP_PKEY_CTX_new(key, nullptr));
    if (!context)
        return failOpenssl(error, direction.contextFailure);
    const auto inputSize = static_cast<size_t>(input.size());
    size_t size = 0;
    if (direction.init(context.get()) <= 0 || !chooseOaepSha256(context.get())
        || direction.run(context.get(), nullptr, &size, readable(input), inputSize) <= 0)
        return failOpenssl(error, u"RSA-OAEP size query failed: %1"_s);
    QByteArray output(static_cast<qsizetype>(size), '\0');
    if (direction.run(context.get(), writable(output), &size, readable(input), inputSize) <= 0)
        return failOpenssl(error, direction.runFailure);
    output.resize(static_cast<qsizetype>(size));
    return output;
}

} // namespace

QByteArray rsaOaepEncrypt(const QByteArray &publicKey, const QByteArray &plaintext, QString *error)
{
    ERR_clear_error();
    const OpenSslPtr<EVP_PKEY> key = parsePublicKey(publicKey);
    if (!key)
        return failOpenssl(error, u"Could not parse public key (tried DER and PEM): %1"_s);
    return runOaep({EVP_PKEY_encrypt_init, EVP_PKEY_encrypt, u"Could not create RSA encrypt context: %1"_s,
                    u"RSA-OAEP encrypt failed: %1"_s},
                   key.get(), plaintext, error);
}

QByteArray rsaOaepDecrypt(const QByteArray &privateKey, const QByteArray &ciphertext, QString *error)
{
    ERR_clear_error();
    return rsaOaepDecrypt(parsePrivateKey(privateKey).get(), ciphertext, error);
}

QByteArray rsaOaepDecrypt(EVP_PKEY *privateKey, const QByteArray &ciphertext, QString *error)
{
    if (!privateKey)
        return failOpenssl(error, u"Could not parse private key: %1"_s);
    return runOaep({EVP_PKEY_decrypt_init, EVP_PKEY_decrypt, u"Could not create RSA context: %1"_s,
                    u"RSA-OAEP decrypt failed: %1"_s},
                   privateKey, ciphertext, error);
}

} // namespace tideloft::crypto
