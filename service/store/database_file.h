// The file of a database: made for its owner alone, and brought to the disk. Here and in database_lock.h
// stands all that the store asks of the system; on another system somebody would have to provide both.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::service
{

/// Makes the folder of the file, and missing ones above it, for the owner only. Throws StorageError.
void makeFolderOf(const QString &file);

/// Makes the file where there is none, and sees to it that only its owner may read it. A symbolic link is
/// refused: it may lead to a file of somebody else. Throws StorageError.
void makeOwnFile(const QString &file);

/// Gives the file to the owner of another one, if this process may and has made it: what root makes beside a
/// database must be the service's too.
void giveToOwnerOf(const QString &file, const QString &other);

/// Whether this process may write the file or the folder, as the system says: some file systems may only be
/// read.
bool mayWrite(const QString &path);

/// Gives the file a second name where nothing is yet. False if the system refuses; errno says why.
bool linkFile(const QString &file, const QString &secondName);

/// Waits until the file and its name in the folder are on the disk. Throws StorageError.
void syncFile(const QString &file);

} // namespace tideloft::service
