// Statements about users.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/users.h"

#include "service/store/account_rules.h"
#include "service/store/versions.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

std::optional<User> findWithState(Database &database, const QString &name, UserState highest)
{
    const std::optional<QString> normalized = normalizedUserName(name);
    if (!normalized)
        return std::nullopt;
    Rows query = database.run(u"SELECT id FROM users WHERE name = ? AND state <= ?"_s,
                              {*normalized, static_cast<int>(highest)});
    if (!query.next())
        return std::nullopt;
    return User{query.value(0).toLongLong(), *normalized};
}

} // namespace

std::optional<User> findUser(Database &database, const QString &name)
{
    return findWithState(database, name, UserState::Disabled);
}

std::optional<User> findUserOrDeleted(Database &database, const QString &name)
{
    return findWithState(database, name, UserState::Deleted);
}

UserState stateOf(Database &database, const User &user)
{
    return static_cast<UserState>(database.number(u"SELECT state FROM users WHERE id = ?"_s, {user.id}));
}

QByteArray passwordHash(Database &database, const User &user)
{
    Rows query = database.run(u"SELECT password FROM users WHERE id = ?"_s, {user.id});
    return query.next() ? query.value(0).toString().toLatin1() : QByteArray();
}

bool addUser(Database &database, const QString &name, const QByteArray &hash, qint64 now)
{
    const Rows query =
        database.run(u"INSERT INTO users (name, password, created_at, conversations_version, groups_version)"
                     " VALUES (?, ?, ?, ?, ?) ON CONFLICT (name) DO NOTHING"_s,
                     {name, QString::fromLatin1(hash), now, newVersion(), newVersion()});
    return query.numRowsAffected() == 1;
}

QString bioOf(Database &database, const User &user)
{
    Rows query = database.run(u"SELECT bio FROM users WHERE id = ?"_s, {user.id});
    return query.next() ? query.value(0).toString() : QString();
}

void setBio(Database &database, const User &user, const QString &bio)
{
    database.run(u"UPDATE users SET bio = ? WHERE id = ?"_s, {bio, user.id});
}

// instr() takes the text as it is: "%" and "_" are no wildcards, and "_" may stand in a name.
QStringList findNames(Database &database, const QString &text, const User &except, int limit)
{
    Rows query = database.run(u"SELECT name FROM users WHERE instr(name, ?) > 0 AND id <> ? AND state <> ?"
                              " ORDER BY instr(name, ?) > 1, name LIMIT ?"_s,
                              {text, except.id, static_cast<int>(UserState::Deleted), text, limit});
    QStringList names;
    while (query.next())
        names.append(query.value(0).toString());
    return names;
}

} // namespace tideloft::service
