// What a device may be called, and which public keys are taken.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::service
{

constexpr qsizetype longestDeviceId = 128;

/// True for an RSA key of 2048 to 4096 bits: Base64 of a DER SubjectPublicKeyInfo (RFC 5280) or of its PEM
/// text.
bool isAcceptablePublicKey(const QString &base64);

/// True for an identifier that a device may have: 1 to 128 characters on one line, not only blanks.
bool isDeviceId(const QString &text);

} // namespace tideloft::service
