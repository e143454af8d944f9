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

// A text behind all names and ends of names that begin with TEXT: no name has this sign, and all of its signs
// come before it.
QString behind(const QString &text)
{
    return text + u'~';
}

QStringList namesIn(Rows rows)
{
    QStringList names;
    while (rows.next())
        names.append(rows.value(0).toString());
    return names;
}

QStringList beginningWith(Database &database, const QString &text, const User &except, int limit)
{
    return namesIn(
        database.run(u"SELECT name FROM users WHERE name >= ? AND name < ? AND id <> ? AND state <> ?"
                     " ORDER BY name LIMIT ?"_s,
                     {text, behind(text), except.id, static_cast<int>(UserState::Deleted), limit}));
}

// Of a text that stands in very many names only some are looked at.
QStringList containing(Database &database, const QString &text, const User &except, int limit)
{
    constexpr int mostLookedAt = 2000;
    return namesIn(database.run(
        u"SELECT name FROM users WHERE id IN (SELECT user_id FROM name_ends WHERE ending >= ? AND ending < ?"
        " LIMIT ?) AND name NOT BETWEEN ? AND ? AND id <> ? AND state <> ? ORDER BY name LIMIT ?"_s,
        {text, behind(text), mostLookedAt, text, behind(text), except.id,
         static_cast<int>(UserState::Deleted), limit}));
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

void lockUser(Database &database, const User &user)
{
    database.run(u"SELECT 1 FROM users WHERE id = ? FOR UPDATE"_s, {user.id});
}

UserState stateOf(Database &database, const User &user)
{
    return static_cast<UserState>(database.number(u"SELECT state FROM users WHERE id = ?"_s, {user.id}));
}

std::optional<Credentials> findCredentials(Database &database, const QString &name)
{
    const std::optional<QString> normalized = normalizedUserName(name);
    if (!normalized)
        return std::nullopt;
    Rows query = database.run(u"SELECT id, password, state FROM users WHERE name = ? AND state <> ?"_s,
                              {*normalized, static_cast<int>(UserState::Deleted)});
    if (!query.next())
        return std::nullopt;
    return Credentials{{query.value(0).toLongLong(), *normalized},
                       query.value(1).toString().toLatin1(),
                       static_cast<UserState>(query.value(2).toInt())};
}

Credentials lockCredentials(Database &database, const User &user)
{
    Rows query = database.run(u"SELECT password, state FROM users WHERE id = ? FOR UPDATE"_s, {user.id});
    if (!query.next())
        return {user, {}, UserState::Deleted};
    return {user, query.value(0).toString().toLatin1(), static_cast<UserState>(query.value(1).toInt())};
}

bool addUser(Database &database, const QString &name, const QByteArray &hash, qint64 now)
{
    Transaction transaction(database);
    const qint64 id = database.number(
        u"INSERT INTO users (name, password, created_at, conversations_version, groups_version)"
        " VALUES (?, ?, ?, ?, ?) ON CONFLICT (name) DO NOTHING RETURNING id"_s,
        {name, QString::fromLatin1(hash), now, newVersion(), newVersion()});
    if (id == 0)
        return false;
    for (qsizetype place = 0; place < name.size(); ++place)
        database.run(u"INSERT INTO name_ends (ending, user_id) VALUES (?, ?)"_s, {name.sliced(place), id});
    transaction.commit();
    return true;
}

Profile profileOf(Database &database, const User &user)
{
    Rows query = database.run(u"SELECT bio, pictures.name FROM users"
                              " LEFT JOIN pictures ON pictures.user_id = users.id WHERE users.id = ?"_s,
                              {user.id});
    return query.next() ? Profile{query.value(0).toString(), query.value(1).toString()} : Profile();
}

void setBio(Database &database, const User &user, const QString &bio)
{
    database.run(u"UPDATE users SET bio = ? WHERE id = ?"_s, {bio, user.id});
}

QStringList findNames(Database &database, const QString &text, const User &except, int limit)
{
    const QStringList names = beginningWith(database, text, except, limit);
    const int left = limit - static_cast<int>(names.size());
    return left > 0 ? names + containing(database, text, except, left) : names;
}

} // namespace tideloft::service
