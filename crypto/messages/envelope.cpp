// Sealing in one go.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/envelope.h"

#include "crypto/messages/envelope_sealing.h"

namespace tideloft::crypto
{

EncryptedEnvelope encryptMessageEnvelope(const QString &plainText, const QJsonArray &recipientDevices,
                                         const QJsonArray &senderDevices)
{
    EnvelopeSealing sealing(plainText, recipientDevices, senderDevices);
    while (!sealing.isFinished())
        sealing.wrapNext();
    return sealing.takeEnvelope();
}

} // namespace tideloft::crypto
