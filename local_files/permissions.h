// Permissions of files and directories: other users of the computer are kept away from this one's.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QFileDevice>

namespace tideloft::local_files
{

/// Permissions of a file that only its owner may read and write.
inline constexpr QFileDevice::Permissions ownersFile = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
/// Permissions of a directory that only its owner may list, change and enter.
inline constexpr QFileDevice::Permissions ownersDirectory = ownersFile | QFileDevice::ExeOwner;

/// Makes a directory, with all its parents, that nobody but its owner may enter from its first moment on.
/// True also when another copy of the program was faster.
bool makeForOwner(const QString &directory);

/// Takes all permissions of other users away from the directory, or the regular file, at PATH. Nothing is
/// changed if another user owns it, if a link is in the place of the file, or if the file has a second name:
/// each may be something that this program never made.
void keepDirectoryForOwner(const QString &path);
void keepFileForOwner(const QString &path);

} // namespace tideloft::local_files
