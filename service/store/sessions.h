// Who is signed in: sessions by the hash of their token.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/users.h"

#include <QByteArrayList>
#include <QHash>

namespace tideloft::service
{

/// How many sessions one user may have: more than a person has devices, and no way to fill the disk.
constexpr int maximumSessions = 100;

/// Keeps a session of USER until EXPIRESAT, and drops those that have run out 60 days before NOW. Of a user
/// who has too many, those that run out first end. Times are in ms since 1970.
void addSession(Database &database, const QByteArray &tokenHash, const User &user, qint64 now,
                qint64 expiresAt);

/// Whose session it is, also when it has run out; nobody when there is none.
std::optional<CachedSession> sessionOwner(Database &database, const QByteArray &tokenHash);

/// The same for many, by their hashes; those are left out that there are none of. For several hashes the
/// database must be shared.
QHash<QByteArray, CachedSession> sessionOwners(Database &database, const QByteArrayList &tokenHashes);

/// How many there are that have not run out at NOW.
qint64 sessionCount(Database &database, qint64 now);

void removeSession(Database &database, const QByteArray &tokenHash);

} // namespace tideloft::service
