// Statements about pictures.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/pictures.h"

#include "service/api/random.h"

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int nameSize = 20; // bytes; enough that no name is ever guessed or made twice

// `ownerColumn` is one of the two that the table has.
QString replace(Database &database, const QString &ownerColumn, qint64 owner, const Picture &picture)
{
    const QString name = QString::fromLatin1(randomBytes(nameSize).toHex());
    Transaction transaction(database);
    database.run(u"DELETE FROM pictures WHERE %1 = ?"_s.arg(ownerColumn), {owner});
    database.run(
        u"INSERT INTO pictures (name, %1, content_type, content) VALUES (?, ?, ?, ?)"_s.arg(ownerColumn),
        {name, owner, QString::fromLatin1(picture.contentType), picture.content});
    transaction.commit();
    return pictureUrl(name);
}

} // namespace

QString replaceAvatar(Database &database, const User &user, const Picture &picture)
{
    return replace(database, u"user_id"_s, user.id, picture);
}

QString replaceIcon(Database &database, qint64 groupRow, const Picture &picture)
{
    return replace(database, u"group_id"_s, groupRow, picture);
}

QString avatarUrl(Database &database, const User &user)
{
    QSqlQuery query = database.run(u"SELECT name FROM pictures WHERE user_id = ?"_s, {user.id});
    return query.next() ? pictureUrl(query.value(0).toString()) : QString();
}

QString pictureUrl(const QString &name)
{
    return name.isEmpty() ? QString() : u"/pictures/"_s + name;
}

std::optional<Picture> findPicture(Database &database, const QString &name)
{
    QSqlQuery query = database.run(u"SELECT content_type, content FROM pictures WHERE name = ?"_s, {name});
    if (!query.next())
        return std::nullopt;
    return Picture{query.value(0).toString().toLatin1(), query.value(1).toByteArray()};
}

} // namespace tideloft::service
