// Small regular files, read and written with as few calls of the system as possible: the file of the private
// key is read for every message.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tideloft::local_files
{

inline constexpr qsizetype largestFile = qsizetype{64} * 1024; ///< bytes; a key file has some 1,600

/// Whether anything is at PATH, or where a link there leads. True also if the system fails to say: what is
/// taken to be missing is made anew, and would replace what is there.
bool somethingIsAt(const QString &path);

/// Whether the system says that a file is at PATH which is not empty.
bool isFilled(const QString &path);

/// All bytes of the file at PATH; they may be the caller's secret. Nothing if the file cannot be read, is
/// larger than largestFile, or is not a regular file: a pipe may have no writer, and a device may never end.
/// A link is followed.
std::optional<QByteArray> readRegularFile(const QString &path);

/// Replaces the content of the regular file at PATH, or makes the file. Afterwards its owner alone may read
/// and write it. False if it cannot be opened and emptied, and if it is not a regular file, is a link, or has
/// a second name: nothing is changed then. If the disk does not take all bytes, the file is left empty, and
/// the result is true: a part of a key would pass for a key.
bool writeRegularFile(const QString &path, const QByteArray &bytes);

} // namespace tideloft::local_files
