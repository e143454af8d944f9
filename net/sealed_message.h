// A message that is sealed already, as it is sent.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>
#include <QString>

namespace tideloft::net
{

/// Keys, nonce and ciphertext are Base64 text.
struct SealedMessage {
    QString text; ///< the ciphertext
    QString iv;
    QString encryptedKey;       ///< for one device of the recipient; empty where recipientKeys has them all
    QString senderEncryptedKey; ///< the same for the sender
    QJsonArray recipientKeys;   ///< wrapped key records
    QJsonArray senderKeys;
};

} // namespace tideloft::net
