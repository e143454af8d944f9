// Rows of groups and members.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/groups.h"

#include "service/store/versions.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

QString selectGroups()
{
    return u"SELECT public_id, chat_groups.name, description, pictures.name FROM group_members"
           " JOIN chat_groups ON chat_groups.id = group_members.group_id"
           " LEFT JOIN pictures ON pictures.group_id = chat_groups.id"
           " WHERE group_members.user_id = ?"_s;
}

Group groupFromRow(const Rows &row)
{
    return {row.value(0).toString(), row.value(1).toString(), row.value(2).toString(),
            row.value(3).toString()};
}

} // namespace

bool addGroup(Database &database, const User &maker, const Group &group, qint64 now)
{
    Transaction transaction(database);
    lockUser(database, maker);
    if (findGroupRow(database, maker, group.id))
        return true; // this change has run before; its commit was not confirmed
    if (database.number(u"SELECT count(*) FROM group_members WHERE user_id = ?"_s, {maker.id})
        >= maximumGroups)
        return false;
    const qint64 row = database.number(
        u"INSERT INTO chat_groups (public_id, name, description, created_at) VALUES (?, ?, ?, ?) RETURNING id"_s,
        {group.id, group.name, group.description, now});
    database.run(u"INSERT INTO group_members (user_id, group_id) VALUES (?, ?)"_s, {maker.id, row});
    groupsChanged(database, maker);
    transaction.commit();
    return true;
}

// By number and not by time: the clock of a computer may be set back.
QList<Group> groupsOf(Database &database, const User &user)
{
    Rows query = database.run(selectGroups() + u" ORDER BY chat_groups.id"_s, {user.id});
    QList<Group> groups;
    while (query.next())
        groups.append(groupFromRow(query));
    return groups;
}

std::optional<Group> findGroup(Database &database, const User &user, const QString &groupId)
{
    Rows query = database.run(selectGroups() + u" AND public_id = ?"_s, {user.id, groupId});
    return query.next() ? std::optional(groupFromRow(query)) : std::nullopt;
}

std::optional<qint64> findGroupRow(Database &database, const User &user, const QString &groupId)
{
    Rows query = database.run(u"SELECT id FROM chat_groups JOIN group_members ON group_id = id"
                              " WHERE user_id = ? AND public_id = ?"_s,
                              {user.id, groupId});
    return query.next() ? std::optional(query.value(0).toLongLong()) : std::nullopt;
}

} // namespace tideloft::service
