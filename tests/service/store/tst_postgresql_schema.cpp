// The tables in PostgreSQL: those of an older version are brought to the present form, newer ones are
// refused.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/attempts.h"
#include "service/store/history.h"
#include "service/store/invitations.h"
#include "service/store/maintenance.h"
#include "service/store/schema.h"
#include "service/store/users.h"
#include "tests/service/postgresql_cluster.h"
#include "tests/support/test_main.h"

#include <QDir>
#include <QFile>

#include <thread>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestPostgresqlSchema : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { cluster = std::make_unique<PostgresqlCluster>(); }
    void init() { place = cluster->newPlace(); }
    void cleanupTestCase() { cluster.reset(); }
    void everyVersionHasItsDatabase();
    void olderDatabaseIsKept_data();
    void olderDatabaseIsKept();
    void olderTableOfAttemptsIsReplaced();
    void stepWaitsForWhoStoresMessage();
    void newerDatabaseIsLeftAlone();

private:
    static constexpr int firstVersion = 5;
    static void writeOldDatabase(const QString &place, int version);
    static QStringList definitions(Database &database);

    std::unique_ptr<PostgresqlCluster> cluster;
    QString place;
};

void TestPostgresqlSchema::writeOldDatabase(const QString &place, int version)
{
    QFile text(QStringLiteral(OLD_DATABASES "/postgresql/version-%1.sql").arg(version));
    QVERIFY(text.open(QIODevice::ReadOnly));
    Database database(place);
    for (const QString &statement : QString::fromUtf8(text.readAll()).split(u";\n"_s, Qt::SkipEmptyParts))
        database.run(statement);
}

QStringList TestPostgresqlSchema::definitions(Database &database)
{
    Rows rows = database.run(
        u"SELECT table_name || ' ' || column_name || ' ' || data_type || ' ' || is_nullable || ' '"
        " || coalesce(column_default, '') || ' ' || is_identity FROM information_schema.columns"
        " WHERE table_schema = current_schema() UNION ALL SELECT replace(indexdef, current_schema(), '')"
        " FROM pg_indexes WHERE schemaname = current_schema()"
        " UNION ALL SELECT conrelid::regclass || ' ' || conname || ' ' || pg_get_constraintdef(oid)"
        " FROM pg_constraint WHERE connamespace = current_schema()::regnamespace ORDER BY 1"_s);
    QStringList all;
    while (rows.next())
        all << rows.value(0).toString();
    return all;
}

// Who makes a new version leaves one of the last here.
void TestPostgresqlSchema::everyVersionHasItsDatabase()
{
    const Store database(place);
    QCOMPARE(QDir(QStringLiteral(OLD_DATABASES "/postgresql")).entryList(QDir::Files).size(),
             currentSchemaVersion(database.engine()) - firstVersion);
}

void TestPostgresqlSchema::olderDatabaseIsKept_data()
{
    QTest::addColumn<int>("version");
    const Store database(cluster->newPlace());
    for (int version = firstVersion; version < currentSchemaVersion(database.engine()); ++version)
        QTest::addRow("version %d", version) << version;
}

void TestPostgresqlSchema::olderDatabaseIsKept()
{
    QFETCH(int, version);
    writeOldDatabase(place, version);
    Store upgraded(place);
    requireCurrentVersion(upgraded);
    const User alice = findUser(upgraded, u"alice"_s).value();
    QCOMPARE(profileOf(upgraded, alice).bio, u"I sail."_s);
    QCOMPARE(upgraded.number(u"SELECT count(*) FROM sessions"_s), 2);
    QCOMPARE(invitations(upgraded).size(), 1);
    QByteArrayList texts;
    visitHistory(upgraded, alice, findUser(upgraded, u"bob"_s).value(), 9, [&texts](const MessageRow &row) {
        texts << row.text;
        return true;
    });
    QCOMPARE(texts.size(), 2);
    QCOMPARE(texts[0], u"it's me \U0001F44B"_s.toUtf8());
    QVERIFY(addUser(upgraded, u"carol"_s, "hash", 1));
    QCOMPARE(countAttempt(upgraded, "alice", 1), 0); // and what is new can be used
    Store fresh(cluster->newPlace());
    QCOMPARE(definitions(upgraded), definitions(fresh));
}

// The first databases of version 5 had it.
void TestPostgresqlSchema::olderTableOfAttemptsIsReplaced()
{
    writeOldDatabase(place, 5);
    {
        Database database(place);
        database.run(
            u"CREATE TABLE attempts (name TEXT PRIMARY KEY, times TEXT NOT NULL, last_at BIGINT NOT NULL)"_s);
        database.run(u"CREATE INDEX attempts_by_time ON attempts (last_at)"_s);
    }
    Store upgraded(place);
    Store fresh(cluster->newPlace());
    QCOMPARE(definitions(upgraded), definitions(fresh));
}

// An older service stores a message while a new one starts: first its users' rows, then the message.
void TestPostgresqlSchema::stepWaitsForWhoStoresMessage()
{
    writeOldDatabase(place, 6);
    Database older(place);
    Transaction storing(older);
    older.run(u"SELECT id FROM users ORDER BY id FOR UPDATE"_s);
    QString failure;
    std::thread newer([&] {
        try {
            const Store database(place);
        } catch (const StorageError &error) {
            failure = QString::fromUtf8(error.what());
        }
    });
    QTRY_VERIFY(Database(place).number(u"SELECT count(*) FROM pg_locks WHERE NOT granted"_s) > 0);
    older.run(u"INSERT INTO messages (sender_id, recipient_id, text, iv, recipient_keys, sender_keys,"
              " encrypted, created_at) VALUES (1, 2, 'meanwhile', '', '[]', '[]', 0, 1)"_s);
    older.run(
        u"UPDATE conversations SET last_message_id = (SELECT max(id) FROM messages) WHERE user_id = 1"_s);
    storing.commit();
    newer.join();
    QCOMPARE(failure, QString());
    requireCurrentVersion(older);
    QCOMPARE(older.number(u"SELECT count(*) FROM messages WHERE text = 'meanwhile'"_s), 1);
    QCOMPARE(problemsOf(older), QStringList());
}

void TestPostgresqlSchema::newerDatabaseIsLeftAlone()
{
    {
        Store database(place);
        database.run(u"UPDATE schema_version SET version = version + 1"_s);
    }
    QVERIFY_THROWS_EXCEPTION(StorageError, Store{place});
}

TIDELOFT_TEST_MAIN(TestPostgresqlSchema)
#include "tst_postgresql_schema.moc"
