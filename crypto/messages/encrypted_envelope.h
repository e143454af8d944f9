// A sealed message, as the service stores it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

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

} // namespace tideloft::crypto
