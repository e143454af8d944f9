// AES-256-GCM (NIST SP 800-38D) without additional data: 32-byte key, 12-byte nonce, 16-byte tag.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace tideloft::crypto
{

inline constexpr qsizetype aesKeySize = 32;   ///< bytes, AES-256
inline constexpr qsizetype gcmNonceSize = 12; ///< bytes, the size that SP 800-38D recommends
inline constexpr qsizetype gcmTagSize = 16;   ///< bytes, the full tag

/// Seals PLAINTEXT: the ciphertext followed by its tag, 16 bytes more than PLAINTEXT. Empty on failure.
QByteArray aesGcmEncrypt(const QByteArray &key, const QByteArray &iv, const QByteArray &plaintext,
                         QString *error = nullptr);

/// Opens what aesGcmEncrypt() sealed. Empty on failure, and for a sealed empty text, which leaves ERROR as it
/// was.
QByteArray aesGcmDecrypt(const QByteArray &key, const QByteArray &iv, const QByteArray &sealed,
                         QString *error = nullptr);

} // namespace tideloft::crypto
