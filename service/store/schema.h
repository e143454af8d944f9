// The tables, and the way from every older form of them to this one.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/database.h"

namespace tideloft::service
{

/// The version that this program writes there.
int currentSchemaVersion(const Engine &engine);

/// Throws StorageError when the database is newer than this program, or is none of the service's.
void requireKnownVersion(Database &database);

/// Throws StorageError unless the database is in its current form.
void requireCurrentVersion(Database &database);

/// Brings the database to the current version, each step all or nothing. Throws StorageError when it is newer
/// than that.
void migrate(Database &database);

/// A database in its current form.
class Store : public Database
{
public:
    /// Throws StorageError, also when a newer version of the program wrote the file.
    explicit Store(const QString &place) : Database(place) { migrate(*this); }
};

} // namespace tideloft::service
