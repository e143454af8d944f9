// Wrapping of a message's content key for each device that is to read the message.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/messages/encrypted_envelope.h"

#include <QByteArray>
#include <QJsonArray>
#include <utility>

namespace tideloft::crypto
{

/// Appends to WRAPPEDKEYS the content key wrapped for each device. On failure the message is in the error of
/// ENVELOPE, and the keys that were wrapped before stay.
bool wrapKeyForDevices(const QJsonArray &devices, const QByteArray &contentKey, QJsonArray &wrappedKeys,
                       EncryptedEnvelope &envelope);

/// wrapKeyForDevices() record by record.
class KeyWrapping
{
public:
    explicit KeyWrapping(QJsonArray deviceRecords) : devices(std::move(deviceRecords)) {}

    [[nodiscard]] bool isAtEnd() const { return next == devices.size(); }
    /// Appends the content key wrapped for the next device, or skips its record. False with a message in
    /// ERROR if the device's key cannot be used. Not to be called at the end.
    bool wrapNext(const QByteArray &contentKey, QJsonArray &wrappedKeys, QString *error);

private:
    QJsonArray devices;
    qsizetype next = 0;
};

} // namespace tideloft::crypto
