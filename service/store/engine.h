// What differs between the engines that can keep the tables. Statements are written once, in what both
// understand.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/storage_error.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QStringList>
#include <QVariant>

namespace tideloft::service
{

class StatementRunner;

enum class Access { Full, ReadOnly };

/// Bytes that a database takes, and how many of these new content takes up first.
struct Extent {
    qint64 bytes = 0;
    qint64 free = 0;
};

/// The statements that bring the tables from the version before to this one.
struct SchemaStep {
    int version = 0;
    QStringList statements;
};

class Engine
{
public:
    Engine() = default;
    Q_DISABLE_COPY_MOVE(Engine)
    virtual ~Engine() = default;

    /// What the database is called in messages: without a password.
    virtual QString place() const = 0;

    /// The file, where the database is one.
    virtual QString file() const { return {}; }

    /// True where other processes write all the time, so that nothing may be kept in memory of it.
    virtual bool isShared() const = 0;

    virtual QString driver() const = 0;
    virtual void open(QSqlDatabase &connection, Access access) const = 0;

    /// What is to be run on a connection that has just been opened.
    virtual QStringList firstStatements(Access access) const = 0;

    /// The engine's own words for a statement. Only these differ: "CAST(x AS BLOB)" of a text, its length,
    /// and "FOR UPDATE" behind a selection, which makes others who want to change these rows wait.
    virtual QString translated(const QString &statement) const = 0;
    virtual QString beginStatement() const = 0;

    /// True for what can be prepared, and is kept so between two runs.
    virtual bool prepares(const QString &statement) const = 0;

    /// True where rows can be read while another statement runs on the same connection.
    virtual bool streamsRows() const = 0;
    virtual Trouble troubleOf(const QSqlError &error) const = 0;

    /// A value in the form in which it is bound, and back.
    virtual QVariant bound(const QVariant &value) const { return value; }
    virtual QVariant read(const QVariant &value) const { return value; }

    /// The version of the tables; 0 when there are none yet.
    virtual int schemaVersion(StatementRunner &database) const = 0;
    virtual void setSchemaVersion(StatementRunner &database, int version) const = 0;

    /// From nothing to the present form. An engine may begin with any version, and leave out those that
    /// change nothing in it.
    virtual QList<SchemaStep> schemaSteps() const = 0;

    /// Another number after another process has written; always the same where nothing is kept in memory.
    virtual qint64 changesOfOthers(StatementRunner &database) const = 0;

    /// Rows of the table that are added without a number get this one and those behind it, if that needs
    /// saying.
    virtual void numberFrom(StatementRunner &, const QString &, qint64) const {}

    /// Lets statements of this connection take as long as they do.
    virtual void allowLongWork(StatementRunner &) const {}

    virtual Extent extent(StatementRunner &database) const = 0;

    /// What is wrong with the database, a line each.
    virtual QStringList problems(StatementRunner &database) const = 0;
};

} // namespace tideloft::service
