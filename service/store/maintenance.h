// Copies of a database, and whether one is sound.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/database.h"

#include <QStringList>

namespace tideloft::service
{

/// What is wrong with the database, a line each; nothing when it is sound. Reads all of it.
QStringList problemsOf(Database &database);

/// Writes a copy as of now to FILE, which must not exist, and which is there when all of it is on the disk.
/// Others read and write meanwhile. Throws StorageError.
void backUp(Database &database, const QString &file);

/// Puts the copy into the place of the database and the database beside it, under the name KEPT. The copy
/// is looked through first; nothing changes when it is not sound, or a newer version of the program wrote it,
/// or another process works with the database. Throws StorageError.
void restore(const QString &databaseFile, const QString &copy, const QString &kept);

} // namespace tideloft::service
