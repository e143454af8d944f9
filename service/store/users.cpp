// Statements about users.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/users.h"

#include "service/store/user_name.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

std::optional<User> findUser(Database &database, const QString &name)
{
    const std::optional<QString> normalized = normalizedUserName(name);
    if (!normalized)
        return std::nullopt;
    QSqlQuery query = database.run(u"SELECT id FROM users WHERE name = ?"_s, {*normalized});
    if (!query.next())
        return std::nullopt;
    return User{query.value(0).toLongLong(), *normalized};
}

QByteArray passwordHash(Database &database, const User &user)
{
    QSqlQuery query = database.run(u"SELECT password FROM users WHERE id = ?"_s, {user.id});
    return query.next() ? query.value(0).toString().toLatin1() : QByteArray();
}

bool addUser(ApiContext &context, const QString &name, const QByteArray &hash)
{
    const QSqlQuery query = context.database.run(
        u"INSERT INTO users (name, password, created_at) VALUES (?, ?, ?) ON CONFLICT (name) DO NOTHING"_s,
        {name, QString::fromLatin1(hash), context.nowInMilliseconds()});
    return query.numRowsAffected() == 1;
}

} // namespace tideloft::service
