// The rows that a statement finds, and statements that stay prepared between two runs.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/engine.h"

#include <QSqlQuery>
#include <QString>
#include <QVariant>
#include <QVariantList>

#include <memory>
#include <unordered_map>

namespace tideloft::service
{

/// Statements that nobody runs at the moment, by their text.
class PreparedStatements
{
public:
    explicit PreparedStatements(const Engine &owner) : kind(owner) {}

    const Engine &engine() const { return kind; }

    /// Another number after each time that everything was cleared.
    int generation() const { return cleared; }

    /// A statement that is ready to be bound. Throws StorageError.
    std::unique_ptr<QSqlQuery> take(const QSqlDatabase &connection, const QString &statement);
    void giveBack(const QString &statement, std::unique_ptr<QSqlQuery> query);
    void clear();

    /// Throws a StorageError that tells what QUERY could not do.
    [[noreturn]] void failWith(const QString &what, const QSqlQuery &query) const;

private:
    const Engine &kind;
    int cleared = 0;
    /// Statements are few, and hardly two are of one length; looking at every letter costs as much as a small
    /// query.
    struct ByLength {
        std::size_t operator()(const QString &statement) const
        {
            return static_cast<std::size_t>(statement.size());
        }
    };
    std::unordered_map<QString, std::unique_ptr<QSqlQuery>, ByLength> idle;
};

/// What a statement has found or changed. While it lives the statement holds the state of the database that
/// it has begun with; then the statement is kept for the next time. The database must outlive it.
class Rows
{
public:
    Rows(PreparedStatements &owner, QString text, std::unique_ptr<QSqlQuery> running)
        : statements(&owner),
          generation(owner.generation()),
          statement(std::move(text)),
          query(std::move(running))
    {
    }
    Rows(Rows &&other) noexcept = default;
    Rows &operator=(Rows &&other) = delete;
    Rows(const Rows &) = delete;
    ~Rows();

    /// Binds the values in order and runs the statement. Throws StorageError.
    void run(const QVariantList &values);

    /// Goes to the next row. Throws StorageError: an error is not the end of the rows.
    bool next();
    QVariant value(int column) const { return statements->engine().read(query->value(column)); }
    int numRowsAffected() const { return changed; }

    /// The statement is not kept for the next time: with it what is large would stay in memory.
    void keepNothing() { isKept = false; }

private:
    PreparedStatements *statements;
    int generation; ///< a statement of an older one belongs to a connection that was closed
    QString statement;
    std::unique_ptr<QSqlQuery> query;
    bool isKept = true;
    int changed = 0; ///< asked for at once: the driver tells of the last statement of all
};

} // namespace tideloft::service
