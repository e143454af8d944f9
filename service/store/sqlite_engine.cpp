// What SQLite wants to be told, and tells, in its own way.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/sqlite_engine.h"

#include "service/store/database_file.h"
#include "service/store/statement_runner.h"

#include <algorithm>
#include <array>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

// Result codes of SQLite: busy, locked, no memory, read-only, input or output, full, cannot open.
constexpr std::array temporaryCodes{5, 6, 7, 8, 10, 13, 14};

void addLines(StatementRunner &database, const QString &statement, QStringList &lines)
{
    Rows rows = database.run(statement);
    while (rows.next())
        lines << rows.value(0).toString();
}

} // namespace

void SqliteEngine::open(QSqlDatabase &connection, Access access) const
{
    // SQLite would create the file with the rights of the umask. The journals beside it take over the rights
    // of the file, so making it first is enough for all of them.
    if (access == Access::Full) {
        makeFolderOf(path);
        makeOwnFile(path);
    }
    connection.setDatabaseName(path);
    if (!connection.open())
        throw StorageError(
            (u"Could not open the database "_s + path + u": "_s + connection.lastError().text())
                .toStdString());
}

QStringList SqliteEngine::firstStatements(Access access) const
{
    const QString wait = u"PRAGMA busy_timeout = %1"_s.arg(busyTimeout.count());
    if (access == Access::ReadOnly)
        return {wait, u"PRAGMA query_only = ON"_s};
    return {wait, u"PRAGMA journal_mode = WAL"_s,
            u"PRAGMA synchronous = FULL"_s, // a message that was acknowledged survives a power cut
            u"PRAGMA foreign_keys = ON"_s};
}

// There is only one who writes, so nobody has to wait for single rows.
QString SqliteEngine::translated(const QString &statement) const
{
    return QString(statement).remove(u" FOR UPDATE"_s);
}

// IMMEDIATE takes the write lock now: a later step can then no longer fail because of another writer.
QString SqliteEngine::beginStatement() const
{
    return u"BEGIN IMMEDIATE"_s;
}

Trouble SqliteEngine::troubleOf(const QSqlError &error) const
{
    const int code = error.nativeErrorCode().toInt() & 0xff; // above stand details
    return std::find(temporaryCodes.begin(), temporaryCodes.end(), code) == temporaryCodes.end()
               ? Trouble::Lasting
               : Trouble::Passing;
}

int SqliteEngine::schemaVersion(StatementRunner &database) const
{
    return static_cast<int>(database.number(u"PRAGMA user_version"_s));
}

// A pragma takes no bound value; this one is a number of our own.
void SqliteEngine::setSchemaVersion(StatementRunner &database, int version) const
{
    database.run(u"PRAGMA user_version = %1"_s.arg(version));
}

qint64 SqliteEngine::changesOfOthers(StatementRunner &database) const
{
    return database.number(u"PRAGMA data_version"_s);
}

Extent SqliteEngine::extent(StatementRunner &database) const
{
    const qint64 page = database.number(u"PRAGMA page_size"_s);
    return {page * database.number(u"PRAGMA page_count"_s),
            page * database.number(u"PRAGMA freelist_count"_s)};
}

QStringList SqliteEngine::problems(StatementRunner &database) const
{
    QStringList lines;
    addLines(database, u"PRAGMA integrity_check(20)"_s, lines);
    lines.removeAll(u"ok"_s);
    Rows rows = database.run(u"PRAGMA foreign_key_check"_s);
    if (rows.next())
        lines << u"a row of %1 belongs to nothing"_s.arg(rows.value(0).toString());
    return lines;
}

} // namespace tideloft::service
