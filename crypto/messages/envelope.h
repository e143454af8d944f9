// Sealing of one message for many devices: the text once, its key once for each device.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QString>

namespace tideloft::crypto
{

/// What the service stores of a message. Only `ok` tells whether the rest may be sent.
struct EncryptedEnvelope {
    bool ok = false;
    QString error;            ///< English, empty on success
    QString ciphertextBase64; ///< AES-256-GCM ciphertext followed by its 16-byte tag
    QString ivBase64;         ///< 12-byte nonce
    QJsonArray recipientKeys; ///< objects with `deviceId` and `encryptedKey`, for the recipient's devices
    QJsonArray senderKeys;    ///< the same for the sender's devices
};

/// Seals `plainText` with a fresh key and nonce. The device lists hold objects with `deviceId` and
/// `publicKeyBase64`; records without either are skipped. One bad key fails the whole envelope.
EncryptedEnvelope encryptMessageEnvelope(const QString &plainText, const QJsonArray &recipientDevices,
                                         const QJsonArray &senderDevices);

/// Appends to `wrappedKeys` the content key wrapped for each device. On failure the message goes into
/// `envelope.error`, and what was wrapped before it stays.
bool wrapKeyForDevices(const QJsonArray &devices, const QByteArray &contentKey, QJsonArray &wrappedKeys,
                       EncryptedEnvelope &envelope);

} // namespace tideloft::crypto
