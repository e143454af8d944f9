// RSA-OAEP with a key that is parsed already. For this room alone: it speaks OpenSSL's types.
#pragma once

#include "crypto/openssl_ptr.h"

#include <QByteArray>
#include <QString>

namespace tideloft::crypto
{

/// rsaOaepDecrypt() with the outcome of parsePrivateKey(), whose failure, a null key, it reports. Expects
/// that the queue held no older error before the key was parsed.
QByteArray rsaOaepDecrypt(EVP_PKEY *privateKey, const QByteArray &ciphertext, QString *error);

} // namespace tideloft::crypto
