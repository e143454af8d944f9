// A service that is killed while it brings an old database to the present form leaves the old one.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/schema.h"
#include "tests/service/daemon.h"
#include "tests/service/store/old_database.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestKilledUpgrade : public QObject
{
    Q_OBJECT

private slots:
    void oldDatabaseIsLeft();

private:
    static bool isLocked(const QString &file)
    {
        return !runStatements(file, {u"PRAGMA busy_timeout = 0"_s, u"BEGIN IMMEDIATE"_s, u"ROLLBACK"_s});
    }
    // What comes before the change that takes for ever holds the database for a moment only.
    static bool isBeingWritten(const QString &file)
    {
        for (int look = 0; look < 5; ++look) {
            if (!isLocked(file))
                return false;
            QTest::qSleep(10);
        }
        return true;
    }
};

// The upgrade to version 3 changes every conversation, and here each change takes for ever.
void TestKilledUpgrade::oldDatabaseIsLeft()
{
    Daemon daemon;
    const QString file = daemon.databaseFile();
    QVERIFY(makeOldDatabase(2, file));
    QVERIFY(
        runStatements(file, {u"PRAGMA journal_mode = WAL"_s,
                             u"CREATE TRIGGER endless AFTER UPDATE ON conversations BEGIN"
                             " INSERT INTO sessions WITH RECURSIVE c (n) AS"
                             " (SELECT 1 UNION ALL SELECT n + 1 FROM c) SELECT n, 1, 1 FROM c WHERE n < 0;"
                             " END"_s}));
    QVERIFY(daemon.startAndForget());
    QTRY_VERIFY(isBeingWritten(file));
    QCOMPARE(daemon.stop(SIGKILL), -1);
    {
        Database left(file, Database::Access::ReadOnly);
        QCOMPARE(left.pragma(u"user_version"_s).toInt(), 2);
        QCOMPARE(left.pragma(u"integrity_check"_s).toString(), u"ok"_s);
        QVERIFY(!left.run(u"SELECT 1 FROM pragma_table_info('users') WHERE name = 'state'"_s).next());
        QCOMPARE(left.number(u"SELECT count(*) FROM messages"_s), 4);
    }
    QVERIFY(runStatements(file, {u"DROP TRIGGER endless"_s}));
    QVERIFY(daemon.startPlain());
    QCOMPARE(daemon.stop(SIGTERM), 0);
    const Store upgraded(file);
    QCOMPARE(upgraded.place(), file);
}

TIDELOFT_TEST_MAIN(TestKilledUpgrade)
#include "tst_killed_upgrade.moc"
