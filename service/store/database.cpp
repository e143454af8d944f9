// Opening of the database, and running of statements.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/database.h"

#include "service/store/database_file.h"

#include <QSqlError>
#include <QUuid>

#include <utility>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

[[noreturn]] void fail(const QString &what, const QString &why)
{
    throw StorageError((what + u": "_s + why).toStdString());
}

} // namespace

Database::Database(const QString &file, Access wanted)
    : access(wanted),
      connectionName(QUuid::createUuid().toString(QUuid::WithoutBraces)),
      connection(QSqlDatabase::addDatabase(u"QSQLITE"_s, connectionName))
{
    try {
        open(file);
    } catch (...) {
        close();
        throw;
    }
}

void Database::open(const QString &file)
{
    // SQLite would create the file with the rights of the umask. The journals beside it take over the rights
    // of the file, so making it first is enough for all of them.
    if (access == Access::Full) {
        makeFolderOf(file);
        makeOwnFile(file);
    }
    connection.setDatabaseName(file);
    if (!connection.open())
        fail(u"Could not open the database "_s + file, connection.lastError().text());
    run(u"PRAGMA busy_timeout = %1"_s.arg(patience.count()));
    if (access == Access::ReadOnly) {
        run(u"PRAGMA query_only = ON"_s);
        return;
    }
    run(u"PRAGMA journal_mode = WAL"_s);
    run(u"PRAGMA synchronous = FULL"_s); // a message that was acknowledged survives a power cut
    run(u"PRAGMA foreign_keys = ON"_s);
}

void Database::close()
{
    prepared.clear(); // a connection closes only when nothing is prepared on it any more
    connection.close();
    connection = QSqlDatabase();
    QSqlDatabase::removeDatabase(connectionName);
}

Database::~Database()
{
    close();
}

Rows Database::run(const QString &statement, const QVariantList &values)
{
    Rows rows(prepared, statement, prepared.take(connection, statement));
    rows.run(values);
    return rows;
}

qint64 Database::number(const QString &statement, const QVariantList &values)
{
    Rows rows = run(statement, values);
    return rows.next() ? rows.value(0).toLongLong() : 0;
}

void Database::afterCommit(const Note &note)
{
    notes.push_back(note);
    if (depth == 0)
        tellNotes();
}

void Database::tellNotes()
{
    for (const Note &note : std::exchange(notes, {})) {
        if (known)
            note(*known);
    }
}

QVariant Database::pragma(const QString &name)
{
    Rows rows = run(u"PRAGMA "_s + name);
    return rows.next() ? rows.value(0) : QVariant();
}

// IMMEDIATE takes the write lock now: a later step can then no longer fail because of another writer.
Transaction::Transaction(Database &target) : database(target), notesBefore(target.notes.size())
{
    database.run(database.depth == 0 ? u"BEGIN IMMEDIATE"_s : u"SAVEPOINT part"_s);
    ++database.depth;
}

Transaction::~Transaction()
{
    if (!open)
        return;
    --database.depth;
    database.notes.resize(notesBefore);
    try {
        if (database.depth > 0)
            database.run(u"ROLLBACK TO part"_s);
        database.run(database.depth == 0 ? u"ROLLBACK"_s : u"RELEASE part"_s);
    } catch (const StorageError &) {
        // SQLite has already rolled back by itself, which is what was asked for.
    }
}

void Transaction::commit()
{
    database.run(database.depth == 1 ? u"COMMIT"_s : u"RELEASE part"_s);
    --database.depth;
    open = false;
    if (database.depth == 0)
        database.tellNotes();
}

} // namespace tideloft::service
