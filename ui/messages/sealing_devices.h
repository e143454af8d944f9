// For which devices a message is sealed.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>
#include <QString>

namespace tideloft::ui
{

/// The recipient's devices: KEYS as they came, or, if there are none, the account-wide LEGACYPUBLICKEY as the
/// one device "legacy". Empty if there is neither.
QJsonArray recipientDevices(const QJsonArray &keys, const QString &legacyPublicKey);

/// The first of the user's devices in MYDEVICEKEYS whose identifier is exactly OWNDEVICEID, as it came; empty
/// if there is none. The user's other devices are deliberately left out.
QJsonArray senderDevices(const QJsonArray &myDeviceKeys, const QString &ownDeviceId);

} // namespace tideloft::ui
