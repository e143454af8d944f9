// Opening of one message as the service returns it, with this device's private key.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "crypto/messages/wrapped_keys.h"

#include <QJsonObject>
#include <QString>

namespace tideloft::crypto
{

class DecryptionCache;

/// Whether an item of a conversation list or a history is an envelope: `encrypted` is JSON true, or a JSON
/// number other than 0, the form in which this client sends it. All readers ask here.
bool isEncrypted(const QJsonObject &item);

/// The outcome of opening one message.
struct DecryptResult {
    bool ok = false;
    QString error; ///< English, empty on success
    QString text;  ///< the plain text, empty on failure
};

/// Opens a message sent by or to OWNNAME on the device OWNDEVICEID; a message that is no envelope is passed
/// through. Reads the private key file afresh at every call, so that a replaced key holds at once.
DecryptResult decryptMessage(const QJsonObject &message, const QString &ownName, const QString &ownDeviceId);

/// The same results, without RSA for a message that is in CACHE. The key file is read afresh all the same,
/// and CACHE is cleared when the file has changed.
DecryptResult decryptMessage(const QJsonObject &message, const QString &ownName, const QString &ownDeviceId,
                             DecryptionCache &cache);

/// Reads the key file as decryptMessage() would, and clears CACHE if the file is not as before. See
/// DecryptionCache::generation().
void rereadPrivateKey(const QString &ownName, const QString &ownDeviceId, DecryptionCache &cache);

/// decryptMessage() reduced to its text. Unlike elsewhere, success empties an error text left from before.
QString decryptMessageText(const QJsonObject &message, const QString &ownName, const QString &ownDeviceId,
                           QString *error = nullptr);
QString decryptMessageText(const QJsonObject &message, const QString &ownName, const QString &ownDeviceId,
                           DecryptionCache &cache, QString *error = nullptr);

} // namespace tideloft::crypto
