// The tables of the service, and the steps from one version of them to the next.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

namespace tideloft::service
{

class Database;

/// The version that this program writes; stored in the database as PRAGMA user_version.
int currentSchemaVersion();

/// Brings the database to the current version, all or nothing. Throws StorageError when it is newer than
/// that.
void migrate(Database &database);

} // namespace tideloft::service
