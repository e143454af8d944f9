// Small regular files, read and written with as few questions to the system as possible: the private key's is
// read for every message.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tideloft::local_files
{

inline constexpr qsizetype largestFile = qsizetype{64} * 1024; ///< bytes; a key file has some 1,600

/// Whether the path, or the link there, leads to anything. Where the system cannot say because of an error of
/// its own, something is taken to be there: what is taken to be missing is made anew.
bool somethingIsAt(const QString &path);

/// Whether a file is there that certainly holds something.
bool isFilled(const QString &path);

/// All bytes of the file at `path`; they may be the caller's secret. Nothing if it cannot be read, is larger
/// than `largestFile`, or is no regular file: a pipe would be waited for, and a device never ends. A link
/// leads to its file.
std::optional<QByteArray> readRegularFile(const QString &path);

/// Replaces what the regular file at `path` holds, or makes it: for its owner alone, whatever it was before.
/// False if it cannot be opened and emptied, or is something else, which is left as it is: so are a link and
/// what it leads to, and a file that has a second name. A disk that then does not take the bytes leaves an
/// empty file, and true: a part of a key would pass for one.
bool writeRegularFile(const QString &path, const QByteArray &bytes);

} // namespace tideloft::local_files
