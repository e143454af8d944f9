// The public keys of devices.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/users.h"

namespace tideloft::service
{

/// How many devices one user may have.
constexpr int maximumDevices = 50;

struct DeviceKey {
    QString deviceId;
    QString deviceName;
    QString publicKey; ///< Base64 of a DER SubjectPublicKeyInfo (RFC 5280) or of its PEM text, as it was sent
};

/// Adds the key or replaces the one that the device had, at NOW (ms since 1970). False when the user has
/// too many devices already.
bool storeDeviceKey(Database &database, const User &user, const DeviceKey &key, qint64 now);

/// In the order of their identifiers.
QList<DeviceKey> deviceKeys(Database &database, const User &user);

} // namespace tideloft::service
