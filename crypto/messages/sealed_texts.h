// What of an envelope is read to open it, and digests by which it is found in a cache.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace tideloft::crypto
{

/// The Base64 texts of an envelope that concern one device.
struct SealedTexts {
    QString text;
    QString iv;
    QString wrappedKey;
};

/// The SHA-256 (FIPS 180-4) of a wrapped key. Empty if it could not be made.
QByteArray digestOf(const QString &wrappedKey);

/// The SHA-256 of all three texts and their lengths. Empty if it could not be made.
QByteArray digestOf(const SealedTexts &sealed);

} // namespace tideloft::crypto
