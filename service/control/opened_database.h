// The database of a service, opened beside it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/database.h"
#include "service/store/database_lock.h"

#include <optional>

namespace tideloft::service
{

/// Throws Problem where there is no such database, StorageError where it cannot be used.
class OpenedDatabase
{
public:
    /// Older forms of a database can be copied and looked through; everything else needs the present one.
    enum class Form { Present, AnyKnown };

    explicit OpenedDatabase(const QString &place, Form form = Form::Present,
                            Database::Access access = Database::Access::Full);

    Database &operator*() { return database; }

private:
    const std::optional<DatabaseLock> lock; ///< of a file
    Database database;
};

} // namespace tideloft::service
