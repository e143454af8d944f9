// Databases as every earlier version of the service has written them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>

namespace tideloft::tests
{

inline QString oldDatabaseText(int version)
{
    return QStringLiteral(OLD_DATABASES "/version-%1.sql").arg(version);
}

/// Runs the statements on a connection of their own; false when one of them fails.
inline bool runStatements(const QString &file, const QStringList &statements)
{
    const QString name = QStringLiteral("statements");
    bool done = false;
    {
        QSqlDatabase connection = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        connection.setDatabaseName(file);
        done = connection.open();
        for (const QString &statement : statements)
            done = done && QSqlQuery(connection).exec(statement);
    }
    QSqlDatabase::removeDatabase(name);
    return done;
}

/// Makes a database of that version out of its text.
inline bool makeOldDatabase(int version, const QString &file)
{
    QFile text(oldDatabaseText(version));
    if (!text.open(QIODevice::ReadOnly))
        return false;
    QStringList statements = QString::fromUtf8(text.readAll()).split(QStringLiteral(";\n"));
    statements.removeAll(QString());
    return runStatements(file, statements);
}

} // namespace tideloft::tests
