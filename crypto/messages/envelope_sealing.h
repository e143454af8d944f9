// Sealing of a message device by device: for thousands of devices between other work.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/cipher/secret_bytes.h"
#include "crypto/messages/envelope.h"

namespace tideloft::crypto
{

/// wrapKeyForDevices() record by record.
class KeyWrapping
{
public:
    explicit KeyWrapping(const QJsonArray &deviceRecords) : devices(deviceRecords) {}

    [[nodiscard]] bool isAtEnd() const { return next == devices.size(); }
    /// Appends the content key wrapped for the next device, or skips its record. False with a message in
    /// `error` if the device's key cannot be used. Not to be called at the end.
    bool wrapNext(const QByteArray &contentKey, QJsonArray &wrappedKeys, QString *error);

private:
    QJsonArray devices;
    qsizetype next = 0;
};

/// encryptMessageEnvelope() in as many steps as there are devices, with the same result. The content key is
/// wiped when the last step is done, and when the object ends before.
class EnvelopeSealing
{
public:
    /// Seals the text. What is wrong with it ends the sealing at once.
    EnvelopeSealing(const QString &plainText, const QJsonArray &recipientDevices,
                    const QJsonArray &senderDevices);

    [[nodiscard]] bool isFinished() const { return isDone; }
    /// Wraps the key for the next device.
    void wrapNext();
    /// The envelope, once it is finished.
    [[nodiscard]] EncryptedEnvelope takeEnvelope() { return std::exchange(envelope, {}); }

private:
    void finish(bool ok);

    EncryptedEnvelope envelope;
    SecretBytes contentKey;
    KeyWrapping recipients;
    KeyWrapping senders;
    bool isDone;
};

} // namespace tideloft::crypto
