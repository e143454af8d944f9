// Opening of the database, and running of statements.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/database.h"

#include "service/store/engines.h"

#include <QUuid>

#include <utility>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int mostAttempts = 10;

// Nothing is lost when such a statement comes twice.
bool mayComeTwice(const QString &statement)
{
    return statement.startsWith(u"SELECT"_s) || statement.startsWith(u"BEGIN"_s);
}

} // namespace

Database::Database(const QString &place, Access wanted)
    : access(wanted),
      kind(engineFor(place)),
      connectionName(QUuid::createUuid().toString(QUuid::WithoutBraces)),
      connection(QSqlDatabase::addDatabase(kind->driver(), connectionName)),
      prepared(*kind)
{
    try {
        open();
    } catch (...) {
        close();
        throw;
    }
}

void Database::open()
{
    kind->open(connection, access);
    gone = false;
    for (const QString &statement : kind->firstStatements(access))
        attempt(statement, {});
}

// Where nobody answers, each attempt takes seconds. Whoever comes soon after one is told at once.
void Database::reopen()
{
    using namespace std::chrono;
    constexpr milliseconds pause{300};
    if (steady_clock::now() < nextOpening)
        throw StorageError((u"The database "_s + place() + u" does not answer"_s).toStdString(),
                           Trouble::Gone);
    prepared.clear();
    connection.close();
    nextOpening = steady_clock::time_point::max();
    try {
        open();
        nextOpening = {};
    } catch (...) {
        gone = true;
        nextOpening = steady_clock::now() + pause;
        throw;
    }
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

Rows Database::attempt(const QString &statement, const QVariantList &values)
{
    try {
        Rows rows(prepared, statement, prepared.take(connection, statement));
        rows.run(values);
        return rows;
    } catch (const StorageError &error) {
        gone = gone || error.kind() == Trouble::Gone;
        throw;
    }
}

// Reading alone leaves nothing that would have to be undone.
void Database::prepareFor(const QString &statement)
{
    if (gone && depth == 0)
        reopen();
    if (depth == 0)
        return;
    if (std::exchange(mustBegin, false))
        attempt(kind->beginStatement(), {});
    untouched = untouched && statement.startsWith(u"SELECT"_s) && !statement.contains(u"FOR UPDATE"_s);
}

Rows Database::run(const QString &statement, const QVariantList &values)
{
    prepareFor(statement);
    for (int left = mostAttempts;; --left) {
        try {
            return attempt(statement, values);
        } catch (const StorageError &error) {
            if (depth > 0 || left == 0)
                throw;
            if (error.kind() == Trouble::Gone && mayComeTwice(statement)) {
                left = 1;
                reopen();
            } else if (error.kind() != Trouble::Conflict) {
                throw;
            }
        }
    }
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
        if (cache)
            note(*cache);
    }
}

QVariant Database::pragma(const QString &name)
{
    Rows rows = run(u"PRAGMA "_s + name);
    return rows.next() ? rows.value(0) : QVariant();
}

Transaction::Transaction(Database &target)
    : database(target),
      notesBefore(target.notes.size()),
      isFromBeginning(target.depth == 0 || target.untouched)
{
    if (database.depth == 0) {
        database.run(database.kind->beginStatement());
        database.untouched = true;
        database.mustBegin = false;
    } else if (!isFromBeginning) {
        database.run(u"SAVEPOINT part"_s);
    }
    ++database.depth;
}

Transaction::~Transaction()
{
    if (!open)
        return;
    --database.depth;
    database.notes.resize(notesBefore);
    if (database.gone)
        return; // and with the connection everything that was not committed
    try {
        undo();
    } catch (const StorageError &) {
        // The engine has already rolled back by itself, which is what was asked for.
    }
}

void Transaction::undo()
{
    if (!isFromBeginning) {
        database.run(u"ROLLBACK TO part"_s);
        database.run(u"RELEASE part"_s);
        return;
    }
    const bool isUndone = database.mustBegin;
    database.untouched = true;
    database.mustBegin = database.depth > 0;
    if (!isUndone)
        database.attempt(u"ROLLBACK"_s, {});
}

void Transaction::commit()
{
    const bool isOutermost = database.depth == 1;
    if (isOutermost && !database.mustBegin)
        database.run(u"COMMIT"_s);
    else if (!isFromBeginning)
        database.run(u"RELEASE part"_s);
    --database.depth;
    open = false;
    if (database.depth == 0)
        database.tellNotes();
}

} // namespace tideloft::service
