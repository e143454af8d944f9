// Opening of the database, and running of statements.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/database.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QUuid>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr QFileDevice::Permissions ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

[[noreturn]] void fail(const QString &what, const QString &why)
{
    throw StorageError((what + u": "_s + why).toStdString());
}

void makeFolder(const QString &folder)
{
    if (QDir(folder).exists())
        return;
    if (!QDir().mkpath(folder))
        fail(u"Could not create the folder of the database"_s, folder);
    QFile::setPermissions(folder, ownerOnly | QFileDevice::ExeOwner);
}

// SQLite would create the file with the rights of the umask. The journals beside it take over the rights of
// the file, so making it first is enough for all of them.
void makeFile(const QString &file)
{
    makeFolder(QFileInfo(file).absolutePath());
    QFile database(file);
    if (!database.open(QIODevice::ReadWrite, ownerOnly) || !database.setPermissions(ownerOnly))
        fail(u"Could not open the database "_s + file, database.errorString());
}

// Qt stores a null text as NULL, and an empty JSON text may be either. Here the two mean the same.
QVariant bindable(const QVariant &value)
{
    return value.typeId() == QMetaType::QString && value.toString().isEmpty() ? QVariant(u""_s) : value;
}

} // namespace

Database::Database(const QString &file)
    : connectionName(QUuid::createUuid().toString(QUuid::WithoutBraces)),
      connection(QSqlDatabase::addDatabase(u"QSQLITE"_s, connectionName))
{
    try {
        open(file);
    } catch (...) {
        connection = QSqlDatabase();
        QSqlDatabase::removeDatabase(connectionName);
        throw;
    }
}

void Database::open(const QString &file)
{
    makeFile(file);
    connection.setDatabaseName(file);
    if (!connection.open())
        fail(u"Could not open the database "_s + file, connection.lastError().text());
    run(u"PRAGMA busy_timeout = 5000"_s);
    run(u"PRAGMA journal_mode = WAL"_s);
    run(u"PRAGMA synchronous = FULL"_s); // a message that was acknowledged survives a power cut
    run(u"PRAGMA foreign_keys = ON"_s);
}

Database::~Database()
{
    QSqlQuery(connection).exec(u"PRAGMA wal_checkpoint(TRUNCATE)"_s);
    connection.close();
    connection = QSqlDatabase();
    QSqlDatabase::removeDatabase(connectionName);
}

QSqlQuery Database::run(const QString &statement, const QVariantList &values)
{
    QSqlQuery query(connection);
    query.setForwardOnly(true);
    if (!query.prepare(statement))
        fail(u"Could not prepare a statement"_s, query.lastError().text());
    for (const QVariant &value : values)
        query.addBindValue(bindable(value));
    if (!query.exec())
        fail(u"Could not run a statement"_s, query.lastError().text());
    return query;
}

QVariant Database::pragma(const QString &name)
{
    QSqlQuery query = run(u"PRAGMA "_s + name);
    return query.next() ? query.value(0) : QVariant();
}

Transaction::Transaction(Database &target) : database(target)
{
    // IMMEDIATE takes the write lock now: a later step can then no longer fail because of another writer.
    database.run(u"BEGIN IMMEDIATE"_s);
}

Transaction::~Transaction()
{
    try {
        if (open)
            database.run(u"ROLLBACK"_s);
    } catch (const StorageError &) {
        // SQLite has already rolled back by itself, which is what was asked for.
    }
}

void Transaction::commit()
{
    database.run(u"COMMIT"_s);
    open = false;
}

} // namespace tideloft::service
