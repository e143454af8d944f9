// Making of this device's RSA key pair.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/cipher/secret_bytes.h"

#include <QString>

#include <memory>

namespace tideloft::crypto
{

/// Both halves as Base64 text.
struct KeyPair {
    KeyPair(SecretText first, QString second) : privateHalf(std::move(first)), publicHalf(std::move(second))
    {
    }
    const SecretText privateHalf;
    const QString publicHalf;
};

/// A fresh pair, which takes up to a second or so. Null if it could not be made.
std::unique_ptr<const KeyPair> makeKeyPair(QString *error = nullptr);

/// Writes both halves to their files, replacing earlier ones.
bool writeKeyPair(const KeyPair &pair, QString *error = nullptr);

/// Generates an RSA-2048 pair and writes both halves to their files, replacing earlier ones: the private half
/// as Base64 of DER PKCS#1, the public half as Base64 of DER SubjectPublicKeyInfo. Takes up to a second or
/// so. Nothing is written unless both halves could be made.
bool generateKeyPair(QString *error = nullptr);

} // namespace tideloft::crypto
