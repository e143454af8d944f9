// Counting of rows and pages.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/statistics.h"

#include "service/store/user.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

qint64 usersIn(Database &database, UserState state)
{
    return database.number(u"SELECT count(*) FROM users WHERE state = ?"_s, {static_cast<int>(state)});
}

} // namespace

Statistics statistics(Database &database, qint64 now)
{
    const Extent extent = database.engine().extent(database);
    return {
        .activeUsers = usersIn(database, UserState::Active),
        .disabledUsers = usersIn(database, UserState::Disabled),
        .deletedUsers = usersIn(database, UserState::Deleted),
        .invitations = database.number(u"SELECT count(*) FROM invitations"_s),
        .sessions = database.number(u"SELECT count(*) FROM sessions WHERE expires_at > ?"_s, {now}),
        .devices = database.number(u"SELECT count(*) FROM device_keys"_s),
        .messages = database.number(u"SELECT count(*) FROM messages"_s),
        .oldestMessage = database.number(u"SELECT created_at FROM messages ORDER BY created_at LIMIT 1"_s),
        .conversations = database.number(u"SELECT count(*) FROM conversations"_s),
        .groups = database.number(u"SELECT count(*) FROM chat_groups"_s),
        .pictures = database.number(u"SELECT count(*) FROM pictures"_s),
        .databaseBytes = extent.bytes,
        .freeBytes = extent.free,
    };
}

} // namespace tideloft::service
