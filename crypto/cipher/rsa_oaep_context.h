// RSA-OAEP decryption that is set up once and run many times. For this room alone: it speaks OpenSSL's types.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/cipher/openssl_ptr.h"

#include <QByteArray>
#include <QString>

namespace tideloft::crypto
{

/// Parses a DER private key, PKCS#1 or PKCS#8, and sets up its use. Null on failure.
OpenSslPtr<EVP_PKEY_CTX> makeOaepDecryption(const QByteArray &privateKey, QString *error);

/// What rsaOaepDecrypt() gives once its key is parsed. A failure leaves the context fit for further use.
QByteArray runOaepDecryption(EVP_PKEY_CTX *context, const QByteArray &ciphertext, QString *error);

} // namespace tideloft::crypto
