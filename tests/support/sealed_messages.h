// Messages sealed for a test's key pairs, and the way back: what the client sends, opened by its receiver.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>

namespace tideloft::tests
{

/// Both halves of an RSA pair, as Base64 text.
struct KeyPair {
    QString publicKey;
    QString privateKey;

    /// The device record under which the service lists this pair's public half.
    QJsonObject device(const QString &deviceId) const;
};

/// A fresh pair. It is also what the program's key files hold from now on: the last one made is the client's.
KeyPair makeKeyPair();

/// The pair that the program's key files hold.
KeyPair ownKeyPair();

/// An item as the service returns it: TEXT written by FROM, readable on DEVICEID, which has PAIR, alone.
QJsonObject sealedMessage(const QString &from, const QString &text, const KeyPair &pair,
                          const QString &deviceId, bool writtenThere = false);

/// What a request to send says, opened with PAIR by the record of DEVICEID in the array KEYSNAME
/// ("recipientKeys" or "senderKeys"). Null if it cannot be opened.
QString openedBody(const QJsonObject &body, const QString &keysName, const KeyPair &pair,
                   const QString &deviceId);

} // namespace tideloft::tests
