// Who works with a database: any number of processes, or one that puts another file in its place.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::service
{

/// Held as long as it lives, and no longer than the process does. It lies in a file of its own beside the
/// database, which stays there: a lock on the database itself would go with the file that is replaced.
class DatabaseLock
{
public:
    enum class Kind { Shared, Exclusive };

    /// Throws StorageError when another process holds it in a way that does not allow this.
    DatabaseLock(const QString &databaseFile, Kind kind);
    Q_DISABLE_COPY_MOVE(DatabaseLock)
    ~DatabaseLock();

private:
    int descriptor;
};

} // namespace tideloft::service
