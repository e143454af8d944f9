// Keys in the encodings that the tests of this room need.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/cipher/openssl_ptr.h"
#include "tests/support/crypto/oaep_vectors.h"

#include <QByteArray>
#include <QString>

#include <openssl/err.h>
#include <openssl/x509.h>

namespace tideloft::tests
{

using KeyPtr = crypto::OpenSslPtr<EVP_PKEY>;

inline KeyPtr keyFromDer(const QByteArray &privateDer)
{
    const auto *position = reinterpret_cast<const unsigned char *>(privateDer.constData());
    return KeyPtr(d2i_AutoPrivateKey(nullptr, &position, static_cast<long>(privateDer.size())));
}

template <typename Object>
QByteArray encoded(int (*encoder)(const Object *, unsigned char **), const Object *object)
{
    QByteArray der(encoder(object, nullptr), '\0');
    auto *position = reinterpret_cast<unsigned char *>(der.data());
    encoder(object, &position);
    return der;
}

/// PKCS#1 DER of the vectors' 2048-bit key: a device whose key costs nothing to make.
inline QByteArray publishedPrivateKey()
{
    return QByteArray::fromBase64(oaepPrivateKey);
}

/// DER SubjectPublicKeyInfo of a private key.
inline QByteArray publicKeyOf(const QByteArray &privateDer)
{
    return encoded(i2d_PUBKEY, static_cast<const EVP_PKEY *>(keyFromDer(privateDer).get()));
}

inline QByteArray pkcs8Of(const QByteArray &privateDer)
{
    PKCS8_PRIV_KEY_INFO *info = EVP_PKEY2PKCS8(keyFromDer(privateDer).get());
    QByteArray der = encoded(i2d_PKCS8_PRIV_KEY_INFO, static_cast<const PKCS8_PRIV_KEY_INFO *>(info));
    PKCS8_PRIV_KEY_INFO_free(info);
    return der;
}

/// PEM text: a label, optional header lines, Base64 in lines of 64.
inline QByteArray pem(const QByteArray &label, const QByteArray &der, const QByteArray &headers = {})
{
    QByteArray text = "-----BEGIN " + label + "-----\n" + headers;
    const QByteArray base64 = der.toBase64();
    for (qsizetype i = 0; i < base64.size(); i += 64)
        text += base64.mid(i, 64) + '\n';
    return text + "-----END " + label + "-----\n";
}

inline QByteArray publicPemOf(const QByteArray &privateDer)
{
    return pem("PUBLIC KEY", publicKeyOf(privateDer));
}

/// PKCS#1 DER of a key that nobody has seen before.
inline QByteArray anotherPrivateKey()
{
    const KeyPtr key(EVP_PKEY_Q_keygen(nullptr, nullptr, "RSA", size_t(2048)));
    return encoded(i2d_PrivateKey, static_cast<const EVP_PKEY *>(key.get()));
}

/// A key that is well-formed but of the wrong kind.
inline QByteArray ellipticPublicKey()
{
    const KeyPtr key(EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256"));
    return encoded(i2d_PUBKEY, static_cast<const EVP_PKEY *>(key.get()));
}

/// `bytes` with the lowest bit of the byte at `position` turned; negative positions count from the end.
inline QByteArray flipped(QByteArray bytes, qsizetype position)
{
    char &byte = bytes[position < 0 ? bytes.size() + position : position];
    byte = static_cast<char>(byte ^ 1);
    return bytes;
}

/// Leaves an error in the queue that no operation of this room reports.
inline void queueStaleError()
{
    ERR_raise(ERR_LIB_USER, 42);
}

} // namespace tideloft::tests
