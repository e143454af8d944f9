// Sealing of a message device by device: for thousands of devices between other work.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/cipher/secret_bytes.h"
#include "crypto/messages/encrypted_envelope.h"
#include "crypto/messages/key_wrapping.h"

namespace tideloft::crypto
{

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
