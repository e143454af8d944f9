// Who is signed in: sessions by the hash of their token.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/users.h"

namespace tideloft::service
{

/// Keeps a session of USER until EXPIRESAT, and drops those that have run out 60 days before NOW. Times
/// are in ms since 1970.
void addSession(Database &database, const QByteArray &tokenHash, const User &user, qint64 now,
                qint64 expiresAt);

/// Whose session it is, also when it has run out; nobody when there is none.
std::optional<KnownSession> sessionOwner(Database &database, const QByteArray &tokenHash);

/// How many there are that have not run out at NOW.
qint64 sessionCount(Database &database, qint64 now);

void removeSession(Database &database, const QByteArray &tokenHash);

} // namespace tideloft::service
