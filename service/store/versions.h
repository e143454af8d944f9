// Versions: a number for each list that a client asks for again and again, another one after every change.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/database.h"
#include "service/store/user.h"

namespace tideloft::service
{

// What a version is of, as it is kept in memory.
QString conversationsSubject();
QString groupsSubject();
/// PEER is a normalised name.
QString historySubject(const QString &peer);

/// A number that is not used again and tells nothing, neither how much nor when.
qint64 newVersion();

/// Each is 0 when there is nothing yet that could change. PEER is any spelling of a name.
qint64 conversationsVersion(Database &database, const User &user);
qint64 groupsVersion(Database &database, const User &user);
qint64 historyVersion(Database &database, const User &user, const QString &peer);

/// To be called in the transaction that changes what they are of.
void conversationsChanged(Database &database, const User &user);
void groupsChanged(Database &database, const User &user);
void historyChanged(Database &database, const User &user, const User &peer);

/// Tells the memory of a version that the present transaction writes.
void noteVersion(Database &database, const User &user, const QString &subject, qint64 version);

} // namespace tideloft::service
