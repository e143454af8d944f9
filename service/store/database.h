// The service's storage: one connection to one database, whatever engine keeps it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/engine.h"
#include "service/store/statement_runner.h"
#include "service/store/store_cache.h"

#include <QSqlDatabase>
#include <QString>
#include <QVariantList>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace tideloft::service
{

/// Belongs to the thread that made it. Needs a QCoreApplication, because the driver is a plug-in.
class Database : public StatementRunner
{
public:
    using Access = service::Access;

    /// Opens the database at a place that engineFor() knows. Throws StorageError when it cannot be opened or
    /// is no database.
    explicit Database(const QString &place, Access wanted = Access::Full);
    Q_DISABLE_COPY_MOVE(Database)

    /// The last connection of all to a file writes everything into it and leaves nothing beside it. One that
    /// closes before the others keeps nobody waiting.
    ~Database() override;

    /// Statements are kept prepared, so a text must not carry values. A connection that was lost is opened
    /// again first, but not inside of a transaction. Outside of one, a statement that met others is tried
    /// again.
    Rows run(const QString &statement, const QVariantList &values = {}) override;

    /// NOTE gets the cache as soon as the present transaction is committed; at once outside of one.
    using Note = std::function<void(StoreCache &)>;
    void afterCommit(const Note &note);

    /// KEPT is what notes get. It must outlive the database.
    void use(StoreCache &kept) { cache = &kept; }

    const Engine &engine() const { return *kind; }

    /// What the database is called in messages.
    QString place() const { return kind->place(); }

    /// The number that PRAGMA NAME of SQLite reports, or its text.
    QVariant pragma(const QString &name);

private:
    friend class Transaction;
    void open();
    void reopen();
    void close();
    void tellNotes();
    void prepareFor(const QString &statement);
    Rows attempt(const QString &statement, const QVariantList &values);

    const Access access;
    const std::unique_ptr<Engine> kind;
    const QString connectionName;
    QSqlDatabase connection;
    PreparedStatements prepared;
    int depth = 0;          ///< of transactions inside each other
    bool untouched = false; ///< nothing was changed or locked since the outermost one began
    bool mustBegin = false; ///< all of the outermost one was undone, and it goes on
    bool gone = false;
    std::chrono::steady_clock::time_point nextOpening; ///< not tried before
    std::vector<Note> notes;
    StoreCache *cache = nullptr;
};

/// Undoes everything since its construction, unless commit() was called. Inside another one it is a part of
/// that, and what it commits is kept when the outer one commits. A part that begins before anything was
/// changed or locked asks nothing of the database: undoing the part is undoing everything.
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
    const bool isFromBeginning; ///< of the outermost one
    bool open = true;

    void undo();
};

} // namespace tideloft::service
