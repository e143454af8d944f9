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

} // namespace tideloft::crypto
