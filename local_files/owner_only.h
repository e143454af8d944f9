// Keeping other users of the computer away from what belongs to this one.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::local_files
{

/// Makes a directory, with all its parents, that nobody but its owner may enter from its first moment on.
/// True also when another copy of the program was faster.
bool makeForOwner(const QString &directory);

/// Takes from all others what they may do with the directory, or with the regular file, at `path`. Nothing
/// happens to what belongs to another user, to a link in the place of a file, or to a file that has a second
/// name: each may be something that this program never made.
void keepDirectoryForOwner(const QString &path);
void keepFileForOwner(const QString &path);

} // namespace tideloft::local_files
