// What PostgreSQL wants to be told, and tells, in its own way.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/postgresql_engine.h"

#include "service/store/statement_runner.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <utility>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

// A code of five signs says what went wrong; its first two, of which kind that is.
using Codes = std::initializer_list<QLatin1StringView>;

bool isOneOf(const QString &code, Codes beginnings)
{
    return std::any_of(beginnings.begin(), beginnings.end(),
                       [&](QLatin1StringView beginning) { return code.startsWith(beginning); });
}

// The mark stands for U+0000 with "0" behind it, and for itself with "1". No text of people has it: Unicode
// keeps it for such uses.
constexpr char16_t mark = u'\uFDD0';

QString withoutZeros(QString text)
{
    return text.replace(QChar(mark), QString(QChar(mark)) + u'1')
        .replace(QChar(0), QString(QChar(mark)) + u'0');
}

QString withZeros(QString text)
{
    return text.replace(QString(QChar(mark)) + u'0', QString(QChar(0)))
        .replace(QString(QChar(mark)) + u'1', QString(QChar(mark)));
}

} // namespace

void PostgresqlEngine::open(QSqlDatabase &connection, Access) const
{
    connection.setConnectOptions(url.options);
    if (connection.open())
        return;
    const QString why = connection.lastError().text().simplified();
    throw StorageError((u"Could not open the database "_s + url.place + u": "_s + why).toStdString(),
                       Trouble::Gone);
}

// A process that stands still must not hold rows that others wait for. What the server only remarks libpq
// would write between the lines of the log.
QStringList PostgresqlEngine::firstStatements(Access access) const
{
    QStringList statements{u"SET statement_timeout = '15s'"_s,
                           u"SET idle_in_transaction_session_timeout = '15s'"_s,
                           u"SET client_min_messages = error"_s};
    // Statements of those who write find their rows by indexes, whatever the values. The server would plan
    // the one that stores many messages anew each time, because arrays of known length look cheaper to it.
    if (access == Access::Full)
        statements << u"SET plan_cache_mode = force_generic_plan"_s;
    if (access == Access::ReadOnly)
        statements << u"SET default_transaction_read_only = on"_s;
    return statements;
}

QString PostgresqlEngine::translated(const QString &statement) const
{
    static const QRegularExpression length(u"length\\(CAST\\((\\w+) AS BLOB\\)\\)"_s);
    static const QRegularExpression bytes(u"CAST\\((\\w+) AS BLOB\\)"_s);
    return QString(statement)
        .replace(length,
                 u"octet_length(replace(replace(\\1, '\uFDD0' || '0', '.'), '\uFDD0' || '1', '...'))"_s)
        .replace(bytes, u"\\1"_s)
        .replace(u"FOR UPDATE"_s, u"FOR NO KEY UPDATE"_s); // rows may refer to these meanwhile
}

bool PostgresqlEngine::prepares(const QString &statement) const
{
    static const QStringList beginnings{u"SELECT"_s, u"INSERT"_s, u"UPDATE"_s, u"DELETE"_s, u"WITH"_s};
    return std::any_of(beginnings.begin(), beginnings.end(),
                       [&](const QString &beginning) { return statement.startsWith(beginning); });
}

// Gone: the connection, a server that stops or starts, and one that has become a standby. Without a code
// nothing came back at all.
Trouble PostgresqlEngine::troubleOf(const QSqlError &error) const
{
    const QString code = error.nativeErrorCode();
    if (code.isEmpty() || isOneOf(code, {"08"_L1, "57P"_L1, "25006"_L1}))
        return Trouble::Gone;
    if (isOneOf(code, {"40"_L1}))
        return Trouble::Conflict;
    return isOneOf(code, {"53"_L1, "55P03"_L1, "57"_L1, "58"_L1}) ? Trouble::Passing : Trouble::Lasting;
}

QVariant PostgresqlEngine::bound(const QVariant &value) const
{
    if (value.typeId() != QMetaType::QString)
        return value;
    const QString text = value.toString();
    return text.contains(QChar(0)) || text.contains(QChar(mark)) ? QVariant(withoutZeros(text)) : value;
}

QVariant PostgresqlEngine::read(const QVariant &value) const
{
    if (value.typeId() != QMetaType::QString)
        return value;
    const QString text = value.toString();
    return text.contains(QChar(mark)) ? QVariant(withZeros(text)) : value;
}

int PostgresqlEngine::schemaVersion(StatementRunner &database) const
{
    const qint64 exists = database.number(u"SELECT count(*) FROM information_schema.tables"
                                          " WHERE table_schema = current_schema() AND table_name = ?"_s,
                                          {u"schema_version"_s});
    return exists == 0 ? 0 : static_cast<int>(database.number(u"SELECT version FROM schema_version"_s));
}

void PostgresqlEngine::setSchemaVersion(StatementRunner &database, int version) const
{
    database.run(u"DELETE FROM schema_version"_s);
    database.run(u"INSERT INTO schema_version (version) VALUES (?)"_s, {version});
}

void PostgresqlEngine::numberFrom(StatementRunner &database, const QString &table, qint64 next) const
{
    database.run(u"ALTER TABLE %1 ALTER COLUMN id RESTART WITH %2"_s.arg(table).arg(next));
}

void PostgresqlEngine::allowLongWork(StatementRunner &database) const
{
    database.run(u"SET statement_timeout = 0"_s);
    database.run(u"SET idle_in_transaction_session_timeout = 0"_s);
}

Extent PostgresqlEngine::extent(StatementRunner &database) const
{
    return {database.number(u"SELECT pg_database_size(current_database())"_s), 0};
}

// The engine checks its files by tools of its own; what is left to look at are rows that it lets refer to
// nothing.
QStringList PostgresqlEngine::problems(StatementRunner &database) const
{
    const auto withoutUser = [](const QString &table, const QString &column) {
        return u"SELECT count(*) FROM %1 WHERE NOT EXISTS (SELECT 1 FROM users WHERE users.id = %2)"_s.arg(
            table, column);
    };
    const std::array<std::pair<QString, QString>, 5> looks{{
        {u"%1 conversations have no last message"_s,
         u"SELECT count(*) FROM conversations WHERE NOT EXISTS"
         " (SELECT 1 FROM messages WHERE messages.id = conversations.last_message_id)"_s},
        {u"%1 conversations have no user"_s, withoutUser(u"conversations"_s, u"user_id"_s)},
        {u"%1 conversations have no peer"_s, withoutUser(u"conversations"_s, u"peer_id"_s)},
        {u"%1 messages have no sender"_s, withoutUser(u"messages"_s, u"sender_id"_s)},
        {u"%1 messages have no recipient"_s, withoutUser(u"messages"_s, u"recipient_id"_s)},
    }};
    QStringList found;
    for (const auto &[problem, query] : looks) {
        if (const qint64 lost = database.number(query); lost > 0)
            found << problem.arg(lost);
    }
    return found;
}

} // namespace tideloft::service
