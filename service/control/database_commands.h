// Commands about the database as a whole.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

namespace tideloft::service
{

struct Call;

// Each does what the table of commands says, and throws Problem or StorageError when it cannot.
void backUpDatabase(const Call &call);
void restoreDatabase(const Call &call);
void copyDatabase(const Call &call);
void checkDatabase(const Call &call);
void tellStatistics(const Call &call);

} // namespace tideloft::service
