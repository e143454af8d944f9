// Preparing statements, and reading what they find.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/rows.h"

#include <QSqlError>

#include <algorithm>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

// A change of tables is done once; everything else comes again.
bool comesAgain(const QString &statement)
{
    static const QStringList beginnings{u"SELECT"_s, u"INSERT"_s, u"UPDATE"_s,    u"DELETE"_s, u"WITH"_s,
                                        u"BEGIN"_s,  u"COMMIT"_s, u"SAVEPOINT"_s, u"RELEASE"_s};
    return std::any_of(beginnings.begin(), beginnings.end(),
                       [&](const QString &beginning) { return statement.startsWith(beginning); });
}

// Qt stores a null text as NULL, and an empty JSON text may be either. Here the two mean the same.
QVariant bindable(const QVariant &value)
{
    return value.typeId() == QMetaType::QString && value.toString().isEmpty() ? QVariant(u""_s) : value;
}

} // namespace

void PreparedStatements::failWith(const QString &what, const QSqlQuery &query) const
{
    const QSqlError error = query.lastError();
    throw StorageError((what + u": "_s + error.text().simplified()).toStdString(), kind.troubleOf(error));
}

void PreparedStatements::clear()
{
    idle.clear();
    ++cleared;
}

std::unique_ptr<QSqlQuery> PreparedStatements::take(const QSqlDatabase &connection, const QString &statement)
{
    const auto found = idle.find(statement);
    if (found != idle.end()) {
        std::unique_ptr<QSqlQuery> query = std::move(found->second);
        idle.erase(found);
        return query;
    }
    auto query = std::make_unique<QSqlQuery>(connection);
    query->setForwardOnly(kind.streamsRows());
    if (kind.prepares(statement) && !query->prepare(kind.translated(statement)))
        failWith(u"Could not prepare a statement"_s, *query);
    return query;
}

void PreparedStatements::giveBack(const QString &statement, std::unique_ptr<QSqlQuery> query)
{
    if (comesAgain(statement))
        idle.insert_or_assign(statement, std::move(query));
}

Rows::~Rows()
{
    if (!query)
        return;
    query->finish(); // lets go of the state of the database that it has read
    if (!isKept || generation != statements->generation())
        return;
    statements->giveBack(statement, std::move(query));
}

void Rows::run(const QVariantList &values)
{
    for (qsizetype i = 0; i < values.size(); ++i)
        query->bindValue(static_cast<int>(i), statements->engine().bound(bindable(values[i])));
    const Engine &engine = statements->engine();
    if (!(engine.prepares(statement) ? query->exec() : query->exec(engine.translated(statement))))
        statements->failWith(u"Could not run a statement"_s, *query);
    changed = query->numRowsAffected();
}

bool Rows::next()
{
    if (query->next())
        return true;
    if (query->lastError().isValid())
        statements->failWith(u"Could not read a row"_s, *query);
    return false;
}

} // namespace tideloft::service
