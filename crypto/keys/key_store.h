// The files that hold this device's key pair, in the user's data directory of the application.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace tideloft::crypto
{

/// LOCATION as an absolute path, made with all its parents if it is missing. Afterwards only its owner may
/// enter the directory, even if others could before. Empty on failure.
QString makeDataDir(const QString &location, QString *error = nullptr);

/// Absolute path of the data directory, created if needed. Empty on failure.
QString appDataDir(QString *error = nullptr);

/// Where the halves of the key pair are.
struct KeyFiles {
    QString privateHalf;
    QString publicHalf;
};

/// The paths of `chat_private_key.b64` and `chat_public_key.b64` in a data directory.
KeyFiles keyFilesIn(const QString &directory);

/// The same in the application's data directory; empty without one.
QString privateKeyPath();
QString publicKeyPath();

bool privateKeyExists();
bool publicKeyExists();

/// Replaces the file by the trimmed Base64 text, readable and writable by its owner alone. True when a
/// regular file could be opened, whether or not the disk then took the text.
bool writePrivateKeyFile(const QString &base64, QString *error = nullptr);
bool writePublicKeyFile(const QString &base64, QString *error = nullptr);

/// The file's bytes without outer white space, so that a newline added by hand does no harm. Empty on
/// failure, which anything but a regular file of at most 64 KiB is.
QByteArray readTrimmedFile(const QString &path, QString *error = nullptr);

/// The Base64 text in the file. Empty on failure and for a blank file; only the failure has a message. The
/// private one is the caller's secret: move it into SecretText, or SecretBytes.
QString readPrivateKeyFile(QString *error = nullptr);
QString readPublicKeyFile(QString *error = nullptr);
/// The same as the bytes that are in the file.
QByteArray readPrivateKeyBytes(QString *error = nullptr);

} // namespace tideloft::crypto
