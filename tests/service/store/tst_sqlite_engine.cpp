// What only a file does: it is locked as a whole, has journals beside it, and its room is used again.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/retention.h"
#include "tests/service/store/gate.h"
#include "tests/service/store/store_fixture.h"
#include "tests/service/store/stored_users.h"
#include "tests/service/store/written_change.h"
#include "tests/support/test_main.h"

#include <atomic>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestSqliteEngine : public QObject
{
    Q_OBJECT

private slots:
    void init() { store.reset(new StoreFixture); }
    void fileThatCannotBeOpenedIsToldAtOnce();
    void whatWaitsTogetherIsCommittedTogether();
    void journalsGoWithTheLastConnection();
    void lockedDatabaseRefusesWritesAndAllowsReads();
    void workThatHasTimeWaitsWhileOthersHoldTheDatabase();
    void roomIsUsedAgain();

private:
    static constexpr qint64 fixtureUsers = 3;

    Database &database() const { return store->database; }
    qint64 usersInFile() const
    {
        Database other(store->file(), Database::Access::ReadOnly);
        return userCount(other);
    }

    QScopedPointer<StoreFixture> store;
};

void TestSqliteEngine::fileThatCannotBeOpenedIsToldAtOnce()
{
    QVERIFY_THROWS_EXCEPTION(StorageError, StoreThreads({u"/dev/null/x"_s}));
    const QString file = store->path(u"other.sqlite"_s);
    QFile other(file);
    QVERIFY(other.open(QIODevice::WriteOnly));
    other.write(QByteArray(4096, 'x'));
    other.close();
    QVERIFY_THROWS_EXCEPTION(StorageError, StoreThreads({file}));
}

void TestSqliteEngine::whatWaitsTogetherIsCommittedTogether()
{
    StoreThreads threads({store->file()});
    Gate gate;
    const auto first = write(threads, gate.change());
    gate.awaitWriter();
    QList<std::shared_ptr<WriteOutcome>> others;
    QList<qint64> seenFromOutside;
    for (int i = 0; i < 3; ++i) {
        others << write(threads, [&, i](Database &writer) {
            insertUser(writer, QString::number(i));
            seenFromOutside << usersInFile();
        });
    }
    gate.open();
    for (const auto &told : others)
        QVERIFY(isStored(told));
    QCOMPARE(seenFromOutside, (QList<qint64>(3, fixtureUsers))); // nothing was committed between them
    QCOMPARE(usersInFile(), fixtureUsers + 3);
}

void TestSqliteEngine::journalsGoWithTheLastConnection()
{
    const QString file = store->path(u"own.sqlite"_s);
    {
        StoreThreads threads({file});
        QVERIFY(isStored(write(threads, [](Database &writer) { insertUser(writer, u"dave"_s); })));
        QVERIFY(QFile::exists(file + u"-wal"_s));
    }
    QVERIFY(!QFile::exists(file + u"-wal"_s));
    Database other(file, Database::Access::ReadOnly);
    QCOMPARE(userCount(other), 1);
}

void TestSqliteEngine::lockedDatabaseRefusesWritesAndAllowsReads()
{
    StoreThreads threads({store->file()});
    {
        const Transaction held(database());
        QList<std::shared_ptr<WriteOutcome>> told;
        for (int i = 0; i < 5; ++i)
            told << write(threads, [i](Database &writer) { insertUser(writer, QString::number(i)); });
        QCOMPARE(userCount(threads), fixtureUsers); // while the writer waits
        for (const auto &each : told) {
            QVERIFY(!isStored(each));
            try {
                std::rethrow_exception(each->failure);
            } catch (const StorageError &error) {
                QVERIFY(error.isTemporary());
            }
        }
    }
    QVERIFY(isStored(write(threads, [](Database &writer) { insertUser(writer, u"dave"_s); })));
    QCOMPARE(userCount(threads), fixtureUsers + 1);
}

// The second change comes while the first is told that it is refused.
void TestSqliteEngine::workThatHasTimeWaitsWhileOthersHoldTheDatabase()
{
    std::atomic<int> pieces = 0;
    StoreSettings settings{store->file()};
    settings.background.piece = [&pieces](Database &) { return ++pieces < 0; };
    settings.background.whenDone = std::chrono::milliseconds(0);
    StoreThreads threads(settings);
    const Transaction held(database());
    Semaphore done;
    int before = -1;
    int after = -1;
    const auto nothing = [](Database &) {};
    threads.write({nothing, [&](const std::exception_ptr &) {
                       before = pieces;
                       threads.write({nothing, [&](const std::exception_ptr &) {
                                          after = pieces;
                                          done.release();
                                      }});
                   }});
    done.acquire();
    QCOMPARE(after, before);
    QVERIFY(before >= 0);
}

void TestSqliteEngine::roomIsUsedAgain()
{
    const QString text(20'000, u'x');
    for (int i = 0; i < 50; ++i)
        store->send(store->alice, store->bob, text, 10);
    const qint64 full = database().pragma(u"page_count"_s).toLongLong();
    QCOMPARE(removeMessagesBefore(database(), 20, 100), 50);
    QVERIFY(database().pragma(u"freelist_count"_s).toLongLong() > full / 2);
    for (int i = 0; i < 50; ++i)
        store->send(store->alice, store->bob, text, 30);
    QVERIFY(database().pragma(u"page_count"_s).toLongLong() <= full + 5);
}

TIDELOFT_TEST_MAIN(TestSqliteEngine)
#include "tst_sqlite_engine.moc"
