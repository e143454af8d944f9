// The users: their names, password hashes and what they say of themselves.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/database.h"
#include "service/store/user.h"

#include <QStringList>

#include <optional>

namespace tideloft::service
{

/// Finds a user by any spelling of the name; one whose account was deleted is not found.
std::optional<User> findUser(Database &database, const QString &name);

/// Finds the user whose messages others may have, also when the account was deleted.
std::optional<User> findUserOrDeleted(Database &database, const QString &name);

/// Lets nobody else change the user, and whatever is counted for the user, until the present transaction is
/// over.
void lockUser(Database &database, const User &user);

UserState stateOf(Database &database, const User &user);

/// What a sign-in is checked against.
struct Credentials {
    User user;
    QByteArray hash; ///< of the password
    UserState state = UserState::Active;
};

/// Of a user who is found by any spelling of the name, unless the account was deleted.
std::optional<Credentials> findCredentials(Database &database, const QString &name);

/// As lockUser() does. The hash is empty when the account was deleted.
Credentials lockCredentials(Database &database, const User &user);

/// False when the name is taken, also by an account that was deleted. NAME must be normalised; NOW is in
/// ms since 1970.
bool addUser(Database &database, const QString &name, const QByteArray &hash, qint64 now);

/// What the user shows of themselves: their own text, and the name of their picture, if they have one.
struct Profile {
    QString bio;
    QString pictureName;
};
Profile profileOf(Database &database, const User &user);
void setBio(Database &database, const User &user, const QString &bio);

/// At most LIMIT names that contain TEXT, which is in small letters, without that of EXCEPT. Names that
/// begin with it come first. Of those that merely contain it, some are left out when there are thousands.
QStringList findNames(Database &database, const QString &text, const User &except, int limit);

} // namespace tideloft::service
