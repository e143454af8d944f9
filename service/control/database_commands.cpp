// Copies, damage, and how much there is.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/control/database_commands.h"

#include "service/control/call.h"
#include "service/control/opened_database.h"
#include "service/control/output.h"
#include "service/control/problem.h"
#include "service/store/copy.h"
#include "service/store/database_lock.h"
#include "service/store/engines.h"
#include "service/store/maintenance.h"
#include "service/store/schema.h"
#include "service/store/statistics.h"

#include <QDateTime>
#include <QFileInfo>

#include <optional>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

// Megabytes of 1,048,576 bytes, rounded up.
QString sizeText(qint64 bytes)
{
    return u"%1 MiB"_s.arg((bytes + 1'048'575) / 1'048'576);
}

// A server has tools of its own, which know more than one file.
QString fileOf(const Call &call)
{
    const QString file = engineFor(call.database)->file();
    if (file.isEmpty())
        throw Problem(
            u"This is for a database in a file. Use pg_dump and pg_restore for one of PostgreSQL"_s);
    return file;
}

std::optional<DatabaseLock> lockAlone(const QString &place)
{
    const QString file = engineFor(place)->file();
    if (file.isEmpty())
        return std::nullopt;
    return std::optional<DatabaseLock>(std::in_place, file, DatabaseLock::Kind::Exclusive);
}

} // namespace

void backUpDatabase(const Call &call)
{
    const QString &file = call.arguments.constFirst();
    fileOf(call);
    OpenedDatabase database(call.database, OpenedDatabase::Form::AnyKnown);
    backUp(*database, file);
    say(u"%1 is a copy of the database, %2."_s.arg(file, sizeText(QFileInfo(file).size())));
}

void restoreDatabase(const Call &call)
{
    const QString time = QDateTime::currentDateTimeUtc().toString(u"yyyyMMdd'T'hhmmsszzz'Z'"_s);
    const QString file = fileOf(call);
    const QString kept = file + u".before-"_s + time;
    restore(file, call.arguments.constFirst(), kept);
    say(u"The database %1 is restored."_s.arg(file));
    if (QFileInfo::exists(kept))
        say(u"What was there before is %1."_s.arg(kept));
}

// What somebody would write meanwhile would be lost. A server cannot tell whether a service uses it.
void copyDatabase(const Call &call)
{
    const QString &from = call.arguments.constFirst();
    const QString &to = call.arguments.constLast();
    if (const QString file = engineFor(from)->file(); !file.isEmpty() && !QFileInfo::exists(file))
        throw Problem(u"There is no database %1"_s.arg(file));
    const std::optional<DatabaseLock> fromAlone = lockAlone(from);
    if (engineFor(from)->place() == engineFor(to)->place())
        throw Problem(u"A database cannot be copied to itself"_s);
    const std::optional<DatabaseLock> toAlone = lockAlone(to);
    Database source(from);
    requireCurrentVersion(source);
    Store target(to);
    if (holdsSomething(target) && !call.confirmed)
        throw Problem(u"%1 holds accounts, which would be replaced. Repeat the command with --yes"_s.arg(
            target.place()));
    QList<QStringList> rows{{u"TABLE"_s, u"ROWS"_s}};
    for (const CopiedTable &table : copyEverything(source, target))
        rows.append({table.name, QString::number(table.rows)});
    for (const QString &line : tableLines(rows))
        say(line);
    say(u"%1 holds the same as %2: every row was compared."_s.arg(target.place(), source.place()));
}

void checkDatabase(const Call &call)
{
    OpenedDatabase database(call.database, OpenedDatabase::Form::AnyKnown, Database::Access::ReadOnly);
    (*database).engine().allowLongWork(*database);
    const QStringList problems = problemsOf(*database);
    for (const QString &problem : problems)
        say(problem, stderr);
    if (!problems.isEmpty())
        throw Problem(u"The database %1 is damaged"_s.arg((*database).place()));
    say(u"The database %1 is sound."_s.arg((*database).place()));
}

void tellStatistics(const Call &call)
{
    OpenedDatabase database(call.database, OpenedDatabase::Form::Present, Database::Access::ReadOnly);
    const Statistics found = statistics(*database, QDateTime::currentMSecsSinceEpoch());
    const QList<QStringList> rows{
        {u"Users"_s, QString::number(found.activeUsers)},
        {u"Disabled users"_s, QString::number(found.disabledUsers)},
        {u"Deleted users"_s, QString::number(found.deletedUsers)},
        {u"Invitations"_s, QString::number(found.invitations)},
        {u"Sessions"_s, QString::number(found.sessions)},
        {u"Devices"_s, QString::number(found.devices)},
        {u"Messages"_s, QString::number(found.messages)},
        {u"Oldest message"_s, found.oldestMessage == 0 ? u"-"_s : timeText(found.oldestMessage)},
        {u"Conversations"_s, QString::number(found.conversations)},
        {u"Servers"_s, QString::number(found.groups)},
        {u"Pictures"_s, QString::number(found.pictures)},
        {u"Database"_s, sizeText(found.databaseBytes)},
        {u"Free in it"_s, sizeText(found.freeBytes)},
    };
    for (const QString &line : tableLines(rows))
        say(line);
}

} // namespace tideloft::service
