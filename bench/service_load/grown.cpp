// Filling tables by statements that make the rows themselves.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/service_load/grown.h"

#include "service/store/schema.h"

#include <QCryptographicHash>
#include <QDateTime>

using namespace Qt::StringLiterals;

namespace tideloft::bench
{

namespace
{

constexpr int begunByAUser = 5; // conversations; as many were begun by others
constexpr int firstName = 1'000'000;

// A text with the numbers of this database in the place of the marks.
QString filledIn(QString statement, int users)
{
    const qint64 conversations = qint64{users} * begunByAUser;
    const qint64 messages = qint64{users} * messagesOfAUser;
    return statement.replace(u"{users}"_s, QString::number(users))
        .replace(u"{conversations}"_s, QString::number(conversations))
        .replace(u"{messages}"_s, QString::number(messages))
        .replace(u"{now}"_s, QString::number(QDateTime::currentMSecsSinceEpoch()))
        .replace(u"{names}"_s, QString::number(firstName))
        .replace(u"{keys}"_s, u"[{\"deviceId\":\"mine\",\"encryptedKey\":\"%1\"}]"_s.arg(QString(344, u'k')))
        .replace(u"{text}"_s, QString(128, u'c'));
}

// The numbers from 0 on, as many as the mark says.
QString numbers(const QString &mark)
{
    return u"WITH RECURSIVE numbers (n) AS (SELECT CAST(0 AS BIGINT) UNION ALL"
           " SELECT n + 1 FROM numbers WHERE n + 1 < %1)"_s.arg(mark);
}

// Conversation N is between the user who has begun it and one of the next five in a ring.
QString pairs()
{
    return u"(SELECT n, n / {conversations} AS turn, n % {conversations} % {users} + 1 AS one,"
           " (n % {conversations} % {users} + n % {conversations} / {users} + 1) % {users} + 1 AS other"
           " FROM numbers) AS pairs"_s;
}

QStringList fillingStatements()
{
    return {
        u"INSERT INTO users (id, name, password, created_at, message_count, message_bytes,"
        " conversations_version, groups_version, last_position) "_s
            + numbers(u"{users}"_s)
            + u" SELECT n + 1, 'user' || ({names} + n), 'no password fits', {now}, 100, 100000, n + 1, n + 1,"
              " {messages} FROM numbers"_s,
        u"INSERT INTO name_ends (ending, user_id) "_s + numbers(u"11"_s)
            + u" SELECT substr(name, CAST(n + 1 AS INTEGER)), id FROM users CROSS JOIN numbers"_s,
        u"INSERT INTO messages (id, sender_id, recipient_id, text, iv, recipient_keys, sender_keys, "
        u"encrypted,"
        " created_at, position) "_s
            + numbers(u"{messages}"_s)
            + u" SELECT n + 1, CASE WHEN turn % 2 = 0 THEN one ELSE other END,"
              " CASE WHEN turn % 2 = 0 THEN other ELSE one END, '{text}',"
              " CAST(1000000000000000 + n AS TEXT), '{keys}', '{keys}', 1, {now} - {messages} + n, n + 1 FROM "_s
            + pairs(),
        u"INSERT INTO conversations (user_id, peer_id, last_message_id, version, begun) "_s
            + numbers(u"{conversations}"_s)
            + u" SELECT one, other, {messages} - {conversations} + n + 1, n + 1, 1 FROM "_s + pairs()
            + u" UNION ALL SELECT other, one, {messages} - {conversations} + n + 1, n + 1, 0 FROM "_s
            + pairs(),
    };
}

/// What the two engines do before and after a great many rows.
struct Preparations {
    QStringList before; ///< the transaction
    QStringList inside;
    QString indexes; ///< their names and definitions
    QStringList after;
};

Preparations preparationsFor(const service::Database &database)
{
    if (database.engine().isShared())
        return {{u"SET session_replication_role = replica"_s}, // references are not checked
                {u"TRUNCATE messages, conversations"_s},       // what follows needs no write-ahead log
                u"SELECT indexname, indexdef FROM pg_indexes WHERE schemaname = current_schema()"
                " AND tablename = 'messages' AND indexname <> 'messages_pkey'"_s,
                {u"VACUUM ANALYZE"_s, u"CREATE EXTENSION pg_prewarm"_s,
                 // as after a day of work, when the indexes are in the server's memory
                 u"SELECT sum(pg_prewarm(indexrelid)) FROM pg_index WHERE indrelid >= 16384"_s,
                 u"CHECKPOINT"_s}};
    return {{u"PRAGMA foreign_keys = OFF"_s, u"PRAGMA synchronous = OFF"_s},
            {},
            u"SELECT name, sql FROM sqlite_master WHERE type = 'index' AND tbl_name = 'messages'"_s,
            {u"PRAGMA wal_checkpoint(TRUNCATE)"_s}};
}

// Filling first and sorting then is many times as fast as keeping each index sorted.
QStringList dropIndexes(service::Database &database, const QString &question)
{
    QStringList names;
    QStringList definitions;
    {
        service::Rows rows = database.run(question);
        while (rows.next()) {
            names << rows.value(0).toString();
            definitions << rows.value(1).toString();
        }
    }
    for (const QString &name : std::as_const(names))
        database.run(u"DROP INDEX "_s + name);
    return definitions;
}

std::vector<SeededUser> signAllIn(service::Database &database, int users)
{
    const auto nameOf = [](int index) { return "user" + std::to_string(firstName + index); };
    const qint64 tomorrow = QDateTime::currentMSecsSinceEpoch() + qint64{24} * 3'600'000;
    std::vector<SeededUser> seeded;
    for (int i = 0; i < users; ++i) {
        const QByteArray token = QByteArray::number(i).rightJustified(43, 'A');
        database.run(u"INSERT INTO sessions (token_hash, user_id, expires_at) VALUES (?, ?, ?)"_s,
                     {QCryptographicHash::hash(token, QCryptographicHash::Sha256), i + 1, tomorrow});
        seeded.push_back({nameOf(i), nameOf((i + 1) % users), "tideloft_session=" + token.toStdString()});
    }
    return seeded;
}

} // namespace

std::vector<SeededUser> grow(const QString &place, int users)
{
    service::Store database(place);
    const Preparations preparations = preparationsFor(database);
    database.engine().allowLongWork(database);
    for (const QString &statement : preparations.before)
        database.run(statement);
    service::Transaction transaction(database);
    for (const QString &statement : preparations.inside)
        database.run(statement);
    const QStringList definitions = dropIndexes(database, preparations.indexes);
    for (const QString &statement : fillingStatements())
        database.run(filledIn(statement, users));
    for (const QString &definition : definitions)
        database.run(definition);
    std::vector<SeededUser> seeded = signAllIn(database, users);
    database.engine().numberFrom(database, u"users"_s, users + 1);
    database.engine().numberFrom(database, u"messages"_s, qint64{users} * messagesOfAUser + 1);
    transaction.commit();
    for (const QString &statement : preparations.after)
        database.run(statement);
    return seeded;
}

} // namespace tideloft::bench
