// Statements about groups. Each begins with the user, so that nobody sees a group of others.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/groups.h"

#include "service/store/pictures.h"
#include "service/api/random.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int idSize = 16; // bytes

QJsonObject group(const QString &id, const QString &name, const QString &description, const QString &iconUrl)
{
    return {{u"groupId"_s, id}, {u"name"_s, name}, {u"description"_s, description}, {u"iconUrl"_s, iconUrl}};
}

QString selectGroups()
{
    return u"SELECT public_id, chat_groups.name, description, pictures.name FROM group_members"
           " JOIN chat_groups ON chat_groups.id = group_members.group_id"
           " LEFT JOIN pictures ON pictures.group_id = chat_groups.id"
           " WHERE group_members.user_id = ?"_s;
}

QJsonObject groupFromRow(const QSqlQuery &row)
{
    return group(row.value(0).toString(), row.value(1).toString(), row.value(2).toString(),
                 pictureUrl(row.value(3).toString()));
}

} // namespace

std::optional<QJsonObject> makeGroup(ApiContext &context, const User &maker, const QString &name,
                                     const QString &description)
{
    Transaction transaction(context.database);
    QSqlQuery theirs =
        context.database.run(u"SELECT count(*) FROM group_members WHERE user_id = ?"_s, {maker.id});
    if (!theirs.next() || theirs.value(0).toInt() >= maximumGroups)
        return std::nullopt;
    theirs.finish();
    const QString id = QString::fromLatin1(randomBytes(idSize).toHex());
    const QSqlQuery inserted = context.database.run(
        u"INSERT INTO chat_groups (public_id, name, description, created_at) VALUES (?, ?, ?, ?)"_s,
        {id, name, description, context.nowInMilliseconds()});
    context.database.run(u"INSERT INTO group_members (user_id, group_id) VALUES (?, ?)"_s,
                         {maker.id, inserted.lastInsertId()});
    transaction.commit();
    return group(id, name, description, QString());
}

// By number and not by time: the clock of a computer may be set back.
QJsonArray groupsOf(Database &database, const User &user)
{
    QSqlQuery query = database.run(selectGroups() + u" ORDER BY chat_groups.id"_s, {user.id});
    QJsonArray groups;
    while (query.next())
        groups.append(groupFromRow(query));
    return groups;
}

std::optional<QJsonObject> findGroup(Database &database, const User &user, const QString &groupId)
{
    QSqlQuery query = database.run(selectGroups() + u" AND public_id = ?"_s, {user.id, groupId});
    return query.next() ? std::optional(groupFromRow(query)) : std::nullopt;
}

std::optional<qint64> findGroupRow(Database &database, const User &user, const QString &groupId)
{
    QSqlQuery query = database.run(u"SELECT id FROM chat_groups JOIN group_members ON group_id = id"
                                   " WHERE user_id = ? AND public_id = ?"_s,
                                   {user.id, groupId});
    return query.next() ? std::optional(query.value(0).toLongLong()) : std::nullopt;
}

} // namespace tideloft::service
