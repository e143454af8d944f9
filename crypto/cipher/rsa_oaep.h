// RSA-OAEP (RFC 8017, section 7.1) with SHA-256, MGF1 over SHA-256 and an empty label.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace tideloft::crypto
{

/// Encrypts up to 190 bytes for a 2048-bit key into 256 bytes. PUBLICKEY is a SubjectPublicKeyInfo
/// in DER or PEM. Empty on failure.
QByteArray rsaOaepEncrypt(const QByteArray &publicKey, const QByteArray &plaintext, QString *error = nullptr);

/// Decrypts with a DER private key, PKCS#1 or PKCS#8. Empty on failure, and for a sealed empty text. The
/// result is the caller's secret: move it into SecretBytes.
QByteArray rsaOaepDecrypt(const QByteArray &privateKey, const QByteArray &ciphertext,
                          QString *error = nullptr);

} // namespace tideloft::crypto
