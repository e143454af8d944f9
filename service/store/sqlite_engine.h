// SQLite: one file on this machine.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/engine.h"

#include <chrono>

namespace tideloft::service
{

class SqliteEngine : public Engine
{
public:
    /// How long a statement waits for another process that holds the database.
    static constexpr std::chrono::milliseconds busyTimeout{900};

    explicit SqliteEngine(QString databaseFile) : path(std::move(databaseFile)) {}

    QString place() const override { return path; }
    QString file() const override { return path; }
    bool isShared() const override { return false; }
    QString driver() const override { return QStringLiteral("QSQLITE"); }

    /// Creates the file, and missing folders above it, for the owner only.
    void open(QSqlDatabase &connection, Access access) const override;
    QStringList firstStatements(Access access) const override;
    QString translated(const QString &statement) const override;
    QString beginStatement() const override;
    bool prepares(const QString &) const override { return true; }
    bool streamsRows() const override { return true; }
    Trouble troubleOf(const QSqlError &error) const override;
    int schemaVersion(StatementRunner &database) const override;
    void setSchemaVersion(StatementRunner &database, int version) const override;
    QList<SchemaStep> schemaSteps() const override;
    qint64 changesOfOthers(StatementRunner &database) const override;
    Extent extent(StatementRunner &database) const override;
    QStringList problems(StatementRunner &database) const override;

private:
    const QString path;
};

} // namespace tideloft::service
