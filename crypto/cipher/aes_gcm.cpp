// AES-256-GCM over OpenSSL.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/aes_gcm.h"

#include "crypto/cipher/failure.h"
#include "crypto/cipher/openssl_bytes.h"
#include "crypto/cipher/openssl_ptr.h"
#include "crypto/cipher/secret_bytes.h"

#include <openssl/err.h>

#include <utility>

namespace tideloft::crypto
{
using namespace Qt::StringLiterals;

namespace
{

// OpenSSL counts in int. A longer text is refused rather than cut short.
bool countable(qsizetype size)
{
    return std::in_range<int>(size);
}

bool setNonceSize(EVP_CIPHER_CTX *context)
{
    return EVP_CIPHER_CTX_ctrl(context, EVP_CTRL_GCM_SET_IVLEN, static_cast<int>(gcmNonceSize), nullptr) > 0;
}

bool encryptAll(EVP_CIPHER_CTX *context, const QByteArray &key, const QByteArray &iv, const QByteArray &from,
                QByteArray &to)
{
    int written = 0;
    return countable(from.size())
           && EVP_EncryptInit_ex(context, EVP_aes_256_gcm(), nullptr, nullptr, nullptr) > 0
           && setNonceSize(context)
           && EVP_EncryptInit_ex(context, nullptr, nullptr, readable(key), readable(iv)) > 0
           && EVP_EncryptUpdate(context, writable(to), &written, readable(from),
                                static_cast<int>(from.size()))
                  > 0;
}

// TO has the size of the ciphertext. The tag that follows the ciphertext in SEALED is not read here.
bool decryptAll(EVP_CIPHER_CTX *context, const QByteArray &key, const QByteArray &iv,
                const QByteArray &sealed, QByteArray &to)
{
    int written = 0;
    return countable(to.size())
           && EVP_DecryptInit_ex(context, EVP_aes_256_gcm(), nullptr, nullptr, nullptr) > 0
           && setNonceSize(context)
           && EVP_DecryptInit_ex(context, nullptr, nullptr, readable(key), readable(iv)) > 0
           && EVP_DecryptUpdate(context, writable(to), &written, readable(sealed),
                                static_cast<int>(to.size()))
                  > 0;
}

} // namespace

QByteArray aesGcmEncrypt(const QByteArray &key, const QByteArray &iv, const QByteArray &plaintext,
                         QString *error)
{
    ERR_clear_error();
    if (key.size() != aesKeySize)
        return fail(error, u"AES key must be 32 bytes."_s);
    if (iv.size() != gcmNonceSize)
        return fail(error, u"IV must be 12 bytes."_s);
    const OpenSslPtr<EVP_CIPHER_CTX> context(EVP_CIPHER_CTX_new());
    if (!context)
        return failOpenssl(error, u"Could not create AES-GCM context: %1"_s);
    QByteArray sealed(plaintext.size(), '\0');
    if (!encryptAll(context.get(), key, iv, plaintext, sealed))
        return failOpenssl(error, u"AES-GCM encrypt update failed: %1"_s);
    int nothing = 0; // GCM gives every byte at once
    if (EVP_EncryptFinal_ex(context.get(), writable(sealed), &nothing) <= 0)
        return failOpenssl(error, u"AES-GCM encrypt final failed: %1"_s);
    QByteArray tag(gcmTagSize, '\0');
    if (EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_GET_TAG, static_cast<int>(tag.size()), tag.data())
        <= 0)
        return failOpenssl(error, u"AES-GCM get tag failed: %1"_s);
    return sealed + tag;
}

QByteArray aesGcmDecrypt(const QByteArray &key, const QByteArray &iv, const QByteArray &sealed,
                         QString *error)
{
    ERR_clear_error();
    if (key.size() != aesKeySize)
        return fail(error, u"AES key must be 32 bytes."_s);
    if (iv.size() != gcmNonceSize)
        return fail(error, u"IV must be 12 bytes for this client."_s);
    if (sealed.size() < gcmTagSize)
        return fail(error, u"Ciphertext is too short."_s);
    const OpenSslPtr<EVP_CIPHER_CTX> context(EVP_CIPHER_CTX_new());
    if (!context)
        return failOpenssl(error, u"Could not create AES-GCM context: %1"_s);
    // Until the tag is found right, what was made of the key is nobody's text, and is wiped.
    SecretBytes plaintext(QByteArray(sealed.size() - gcmTagSize, '\0'));
    if (!decryptAll(context.get(), key, iv, sealed, plaintext.buffer()))
        return failOpenssl(error, u"AES-GCM decrypt update failed: %1"_s);
    QByteArray tag = sealed.last(gcmTagSize);
    if (EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_SET_TAG, static_cast<int>(tag.size()), tag.data())
        <= 0)
        return failOpenssl(error, u"AES-GCM set tag failed: %1"_s);
    int nothing = 0; // GCM gives every byte at once
    if (EVP_DecryptFinal_ex(context.get(), writable(plaintext.buffer()), &nothing) <= 0)
        return fail(error, u"AES-GCM authentication failed."_s);
    return plaintext.release();
}

} // namespace tideloft::crypto
