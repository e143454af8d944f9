// What is done with accounts by the person who looks after the service.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/users.h"

#include <functional>

namespace tideloft::service
{

struct Account {
    QString name;
    UserState state = UserState::Active;
    qint64 createdAt = 0; ///< ms since 1970
    qint64 messages = 0;  ///< that the service keeps of those sent
    qint64 devices = 0;
    qint64 sessions = 0; ///< that have not run out
};

/// Every account by its name, those that were deleted too. NOW is in ms since 1970.
void visitAccounts(Database &database, qint64 now, const std::function<void(const Account &)> &visit);

/// Signs the user out everywhere and says how many sessions that were.
int endSessions(Database &database, const User &user);

/// A disabled user is signed out, cannot sign in, and keeps everything.
void disableUser(Database &database, const User &user);
void enableUser(Database &database, const User &user);

/// Also signs the user out everywhere.
void setPassword(Database &database, const User &user, const QByteArray &hash);

/// Forgets the user's keys, picture, profile, sessions, servers and list of conversations, and the messages
/// that nobody else has. What others have written, and what they have got from the user, stays theirs.
///
/// The user is disabled at once, and what may be large goes in small transactions: others write in
/// BETWEENPIECES. A deletion that was broken off is begun again.
void deleteUser(
    Database &database, const User &user, const std::function<void()> &betweenPieces = [] {});

} // namespace tideloft::service
