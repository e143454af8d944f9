// PostgreSQL: a server, or several of which one may be written, that any number of processes share.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/engine.h"
#include "service/store/postgresql_url.h"

namespace tideloft::service
{

class PostgresqlEngine : public Engine
{
public:
    /// Throws StorageError when the address is none.
    explicit PostgresqlEngine(const QString &address) : url(parsePostgresqlUrl(address)) {}

    QString place() const override { return url.place; }
    bool isShared() const override { return true; }
    QString driver() const override { return QStringLiteral("QPSQL"); }
    void open(QSqlDatabase &connection, Access access) const override;
    QStringList firstStatements(Access access) const override;
    QString translated(const QString &statement) const override;
    QString beginStatement() const override { return QStringLiteral("BEGIN"); }
    bool prepares(const QString &statement) const override;
    bool streamsRows() const override { return false; }
    Trouble troubleOf(const QSqlError &error) const override;

    /// U+0000 stands in no text of PostgreSQL. Here it has another form there.
    QVariant bound(const QVariant &value) const override;
    QVariant read(const QVariant &value) const override;

    int schemaVersion(StatementRunner &database) const override;
    void setSchemaVersion(StatementRunner &database, int version) const override;
    QList<SchemaStep> schemaSteps() const override;
    qint64 changesOfOthers(StatementRunner &) const override { return 0; }
    void numberFrom(StatementRunner &database, const QString &table, qint64 next) const override;
    void allowLongWork(StatementRunner &database) const override;
    Extent extent(StatementRunner &database) const override;
    QStringList problems(StatementRunner &database) const override;

private:
    const PostgresqlUrl url;
};

} // namespace tideloft::service
