// One message as it is sent and stored, and the check that it is whole.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/json_body.h"
#include "service/store/messages.h"

#include <QJsonArray>
#include <QString>

namespace tideloft::service
{

/// Most wrapped keys that one message may carry for either side.
constexpr int maximumWrappedKeys = 64;

/// Longest text of a message, in bytes of UTF-8.
constexpr qsizetype maximumTextBytes = qsizetype{64} * 1024;

struct Message {
    QString text; ///< Base64 of ciphertext and tag when encrypted, otherwise the text itself
    QString iv;   ///< Base64 of the 12-byte nonce; empty when not encrypted
    QJsonArray recipientKeys;
    QJsonArray senderKeys;
    bool encrypted = false;
};

/// What is kept of a message that came at NOW (ms since 1970).
StoredMessage storedForm(const Message &message, qint64 now);

/// Reads all fields of a message except `to`. Throws a Refusal with status 400 (413 when the text is too
/// long) unless each is valid and all belong to the same form: sealed ("AES-GCM", 1) or plain ("plain", 0).
Message messageFrom(const JsonBody &body);

} // namespace tideloft::service
