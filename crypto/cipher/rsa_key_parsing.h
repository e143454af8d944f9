// RSA keys out of their encodings. For this room alone: it speaks OpenSSL's types.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/cipher/openssl_ptr.h"

#include <QByteArray>

namespace tideloft::crypto
{

/// Parses DER SubjectPublicKeyInfo (RFC 5280) or PEM text of the same. Null if it is neither; the queued
/// error is then that of the PEM attempt.
OpenSslPtr<EVP_PKEY> parsePublicKey(const QByteArray &encoded);

/// Parses DER: PKCS#1 RSAPrivateKey (RFC 8017) or PKCS#8 PrivateKeyInfo (RFC 5958). Null if it is neither.
OpenSslPtr<EVP_PKEY> parsePrivateKey(const QByteArray &encoded);

} // namespace tideloft::crypto
