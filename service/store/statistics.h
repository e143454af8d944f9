// How much a database holds.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/database.h"

namespace tideloft::service
{

struct Statistics {
    qint64 activeUsers = 0;
    qint64 disabledUsers = 0;
    qint64 deletedUsers = 0;
    qint64 invitations = 0;
    qint64 sessions = 0; ///< that have not run out
    qint64 devices = 0;
    qint64 messages = 0;
    qint64 oldestMessage = 0; ///< ms since 1970; 0 when there is none
    qint64 conversations = 0; ///< counted for each of the two
    qint64 groups = 0;
    qint64 pictures = 0;
    qint64 databaseBytes = 0; ///< without what waits in the journal
    qint64 freeBytes = 0;     ///< of these, that new content takes up first
};

/// NOW is in ms since 1970. Looks at every message once.
Statistics statistics(Database &database, qint64 now);

} // namespace tideloft::service
