// The service's storage: one SQLite database, opened with safe settings.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/known.h"
#include "service/store/rows.h"

#include <QSqlDatabase>
#include <QString>
#include <QVariantList>

#include <chrono>
#include <functional>
#include <vector>

namespace tideloft::service
{

/// Belongs to the thread that made it. Needs a QCoreApplication, because the driver is a plug-in.
class Database
{
public:
    enum class Access { Full, ReadOnly };

    /// How long a statement waits for another process that holds the database.
    static constexpr std::chrono::milliseconds patience{900};

    /// Creates the file, and missing folders above it, for the owner only. Throws StorageError when the file
    /// cannot be opened or is no database.
    explicit Database(const QString &file, Access access = Access::Full);
    Q_DISABLE_COPY_MOVE(Database)

    /// The last connection of all writes everything into the database file itself and leaves nothing beside
    /// it. One that closes before the others keeps nobody waiting.
    ~Database();

    /// Runs one statement with its values bound in order. Throws StorageError. Statements are kept prepared,
    /// so a text must not carry values.
    Rows run(const QString &statement, const QVariantList &values = {});

    /// The number in the first row that the statement finds; 0 when it finds none.
    qint64 number(const QString &statement, const QVariantList &values = {});

    /// NOTE gets the state in memory as soon as the present transaction is committed; at once outside of one.
    using Note = std::function<void(KnownState &)>;
    void afterCommit(const Note &note);

    /// STATE is what notes get. It must outlive the database.
    void keep(KnownState &state) { known = &state; }

    QString file() const { return connection.databaseName(); }

    /// The number that PRAGMA NAME reports, or its text.
    QVariant pragma(const QString &name);

private:
    friend class Transaction;
    void open(const QString &file);
    void close();
    void tellNotes();

    const Access access;
    QString connectionName;
    QSqlDatabase connection;
    PreparedStatements prepared;
    int depth = 0; ///< of transactions inside each other
    std::vector<Note> notes;
    KnownState *known = nullptr;
};

/// Undoes everything since its construction, unless commit() was called. Inside another one it is a part of
/// that, and what it commits is kept when the outer one commits.
class Transaction
{
public:
    explicit Transaction(Database &target);
    Q_DISABLE_COPY_MOVE(Transaction)
    ~Transaction();
    void commit();

private:
    Database &database;
    const std::size_t notesBefore;
    bool open = true;
};

} // namespace tideloft::service
