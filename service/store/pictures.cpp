// Rows of pictures.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/pictures.h"

#include "service/store/versions.h"

#include <mutex>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

// Several threads write to a server. On the way there a picture is a text that takes ten times its size in
// memory, so they insert pictures one after the other. The owner's row is locked already, so an insertion
// never waits for another transaction.
void insert(Database &database, const QString &ownerColumn, qint64 owner, const QString &name,
            const Picture &picture)
{
    static std::mutex writing;
    const std::lock_guard turn(writing);
    database
        .run(u"INSERT INTO pictures (name, %1, content_type, content) VALUES (?, ?, ?, ?)"_s.arg(ownerColumn),
             {name, owner, QString::fromLatin1(picture.contentType), picture.content})
        .keepNothing();
}

// OWNERCOLUMN is one of the two that the table has.
void replace(Database &database, const QString &ownerColumn, qint64 owner, const QString &name,
             const Picture &picture)
{
    database.run(u"DELETE FROM pictures WHERE %1 = ?"_s.arg(ownerColumn), {owner});
    insert(database, ownerColumn, owner, name, picture);
}

} // namespace

void replaceAvatar(Database &database, const User &user, const QString &name, const Picture &picture)
{
    Transaction transaction(database);
    lockUser(database, user);
    replace(database, u"user_id"_s, user.id, name, picture);
    transaction.commit();
}

void replaceIcon(Database &database, qint64 groupRow, const QString &name, const Picture &picture)
{
    Transaction transaction(database);
    database.run(u"SELECT 1 FROM chat_groups WHERE id = ? FOR UPDATE"_s, {groupRow});
    replace(database, u"group_id"_s, groupRow, name, picture);
    Rows members = database.run(u"SELECT user_id FROM group_members WHERE group_id = ?"_s, {groupRow});
    while (members.next())
        groupsChanged(database, {members.value(0).toLongLong(), {}});
    transaction.commit();
}

// The database knows the length of a picture without reading it.
qint64 pictureBytes(Database &database, const User &user)
{
    return database.number(u"SELECT sum(length(content)) FROM pictures WHERE user_id = ? OR group_id IN"
                           " (SELECT group_id FROM group_members WHERE user_id = ?)"_s,
                           {user.id, user.id});
}

std::optional<Picture> findPicture(Database &database, const QString &name)
{
    Rows query = database.run(u"SELECT content_type, content FROM pictures WHERE name = ?"_s, {name});
    query.keepNothing();
    if (!query.next())
        return std::nullopt;
    return Picture{query.value(0).toString().toLatin1(), query.value(1).toByteArray()};
}

} // namespace tideloft::service
