// Moving everything from one database to another, whatever engines keep them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/database.h"

namespace tideloft::service
{

struct CopiedTable {
    QString name;
    qint64 rows = 0;
};

/// True when the database holds an account.
bool holdsSomething(Database &database);

/// Puts everything that SOURCE holds into the place of what TARGET holds, and looks through both: all of it
/// or nothing. Both are in the present form, and nobody else writes to them. Throws StorageError, also when
/// the two are not alike afterwards.
QList<CopiedTable> copyEverything(Database &source, Database &target);

} // namespace tideloft::service
