// Several may work with a database, or one alone.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/database_lock.h"
#include "service/store/storage_error.h"
#include "service/store/store_threads.h"
#include "tests/support/test_main.h"

#include <QFile>
#include <QTemporaryDir>

#include <optional>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using Kind = DatabaseLock::Kind;

class TestDatabaseLock : public QObject
{
    Q_OBJECT

private slots:
    void lockExcludes_data();
    void lockExcludes();
    void lockGoesWithItsHolder();
    void storeHoldsIt();
    void lockIsTheOwnersAlone();
};

void TestDatabaseLock::lockExcludes_data()
{
    QTest::addColumn<bool>("firstAlone");
    QTest::addColumn<bool>("secondAlone");
    QTest::addColumn<bool>("allowed");
    QTest::newRow("two share") << false << false << true;
    QTest::newRow("one works, another wants it alone") << false << true << false;
    QTest::newRow("one is alone, another wants to work") << true << false << false;
    QTest::newRow("two want it alone") << true << true << false;
}

void TestDatabaseLock::lockExcludes()
{
    QFETCH(bool, firstAlone);
    QFETCH(bool, secondAlone);
    QFETCH(bool, allowed);
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"new/test.sqlite"_s);
    const DatabaseLock first(file, firstAlone ? Kind::Exclusive : Kind::Shared);
    std::optional<DatabaseLock> second;
    bool refused = false;
    try {
        second.emplace(file, secondAlone ? Kind::Exclusive : Kind::Shared);
    } catch (const StorageError &error) {
        refused = QString::fromUtf8(error.what()).contains(file);
    }
    QCOMPARE(second.has_value(), allowed);
    QCOMPARE(refused, !allowed);
}

void TestDatabaseLock::lockGoesWithItsHolder()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"test.sqlite"_s);
    std::optional<DatabaseLock> first(std::in_place, file, Kind::Exclusive);
    first.reset();
    const DatabaseLock second(file, Kind::Exclusive);
    QVERIFY(!QFile::exists(file)); // it makes no database
}

void TestDatabaseLock::storeHoldsIt()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"test.sqlite"_s);
    {
        const StoreThreads store({file});
        QVERIFY_THROWS_EXCEPTION(StorageError, DatabaseLock(file, Kind::Exclusive));
    }
    const DatabaseLock alone(file, Kind::Exclusive);
    QVERIFY_THROWS_EXCEPTION(StorageError, StoreThreads({file}));
}

void TestDatabaseLock::lockIsTheOwnersAlone()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"test.sqlite"_s);
    const DatabaseLock lock(file, Kind::Shared);
    QCOMPARE(QFile::permissions(file + u".lock"_s) & (QFile::ReadGroup | QFile::ReadOther), 0);
}

TIDELOFT_TEST_MAIN(TestDatabaseLock)
#include "tst_database_lock.moc"
