// Sealing of one message for many devices: the text once, its key once for each device.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/messages/encrypted_envelope.h"

namespace tideloft::crypto
{

/// Seals PLAINTEXT with a fresh key and nonce. The device lists hold objects with `deviceId` and
/// `publicKeyBase64`; records without either are skipped. One bad key fails the whole envelope.
EncryptedEnvelope encryptMessageEnvelope(const QString &plainText, const QJsonArray &recipientDevices,
                                         const QJsonArray &senderDevices);

} // namespace tideloft::crypto
