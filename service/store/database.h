// The service's storage: one SQLite database, opened with safe settings and brought to the current schema.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>

#include <stdexcept>

namespace tideloft::service
{

/// Something the storage cannot do. The text is for the log: it holds no values.
class StorageError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Belongs to the thread that made it. Needs a QCoreApplication, because the driver is a plug-in.
class Database
{
public:
    /// Creates the file, and missing folders above it, for the owner only. Throws StorageError when the file
    /// cannot be opened or is no database.
    explicit Database(const QString &file);
    Q_DISABLE_COPY_MOVE(Database)

    /// Writes everything into the database file itself, so that nothing is left beside it.
    ~Database();

    /// Runs one statement with its values bound in order. Throws StorageError.
    QSqlQuery run(const QString &statement, const QVariantList &values = {});

    /// The number that PRAGMA `name` reports, or its text.
    QVariant pragma(const QString &name);

private:
    void open(const QString &file);

    QString connectionName;
    QSqlDatabase connection;
};

/// Undoes everything since its construction, unless commit() was called.
class Transaction
{
public:
    explicit Transaction(Database &target);
    Q_DISABLE_COPY_MOVE(Transaction)
    ~Transaction();
    void commit();

private:
    Database &database;
    bool open = true;
};

} // namespace tideloft::service
