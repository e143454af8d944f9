// The table of public keys, one for each device of a user.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api_context.h"

namespace tideloft::service
{

/// How many devices one user may have.
constexpr int maximumDevices = 50;

constexpr qsizetype longestDeviceId = 128;

struct DeviceKey {
    QString deviceId;
    QString deviceName;
    QString publicKey; ///< Base64 of a DER SubjectPublicKeyInfo (RFC 5280) or of its PEM text, as it was sent
};

/// True for an RSA key of 2048 to 4096 bits in the form above.
bool isAcceptablePublicKey(const QString &base64);

/// True for an identifier that a device may have: 1 to 128 characters on one line, not only blanks.
bool isDeviceId(const QString &text);

/// Adds the key or replaces the one that the device had. False when the user has too many devices already.
bool storeDeviceKey(ApiContext &context, const User &user, const DeviceKey &key);

/// In the order of their identifiers.
QList<DeviceKey> deviceKeys(Database &database, const User &user);

} // namespace tideloft::service
