// Finding the content key that was wrapped for this device among those of all devices.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QString>

namespace tideloft::crypto
{

/// One usable record: the identifier and the Base64 text of the key, both without outer white space.
struct WrappedKey {
    QString deviceId;
    QString encryptedKey;

    bool operator==(const WrappedKey &) const = default;
};

/// The records of an array that name a device and hold a key, in the array's order.
QList<WrappedKey> collectWrappedKeys(const QJsonArray &records);

/// The Base64 text of the first key for the device, whose identifier is compared without regard to case and
/// outer white space. Empty if there is none.
QString findWrappedKeyForDevice(const QJsonArray &records, const QString &deviceId);

/// The Base64 text of the key for OWNDEVICEID in a message by or to OWNNAME. Empty if there is none.
QString findOwnWrappedKey(const QJsonObject &message, const QString &ownName, const QString &ownDeviceId);

} // namespace tideloft::crypto
