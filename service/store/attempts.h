// Attempts that several processes count together, in the database that they share.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/database.h"

namespace tideloft::service
{

/// Counts an attempt of KEY by the clock of the database, which is the same for all. 0 when it may go on,
/// because there were fewer than MOST within the last minute; otherwise after how many seconds the next one
/// may. An attempt that may not go on does not count, and costs no write. Of the key only a hash is kept.
int countAttempt(Database &database, const QByteArray &key, int most);

/// Removes what no longer counts.
void removeOldAttempts(Database &database);

} // namespace tideloft::service
