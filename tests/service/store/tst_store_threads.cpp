// The database on threads of its own: what is acknowledged is stored, and one failure concerns nobody else.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/schema.h"
#include "tests/service/chosen_storage.h"
#include "tests/service/store/gate.h"
#include "tests/service/store/stored_users.h"
#include "tests/service/store/written_change.h"
#include "tests/support/test_main.h"

#include <atomic>
#include <utility>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestStoreThreads : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        directory.reset(new QTemporaryDir);
        storage.reset(new ChosenStorage);
    }
    void writesAreReadByEveryReader();
    void refusedChangeLeavesTheOthers();
    void brokenChangeLeavesTheOthers();
    void failureOfTheWriterItselfIsTold();
    void acknowledgedIsOnTheDisk();
    void readersCannotWrite();
    void fullQueueRefuses();
    void writesUnderWayAreFinishedAtTheEnd();
    void manyThreadsAtOnce();
    void theJournalOfAFileIsTakenAwayAtTheEnd();

private:
    QString place() const { return storage->place(directory->filePath(u"test.sqlite"_s)); }

    /// What waits behind the gate is made by the same writer, on both storages.
    StoreSettings oneWriter() const
    {
        StoreSettings settings{place()};
        settings.writers = 1;
        return settings;
    }
    qint64 usersInPlace() const
    {
        Database other(place(), Database::Access::ReadOnly);
        return userCount(other);
    }

    QScopedPointer<ChosenStorage> storage;
    QScopedPointer<QTemporaryDir> directory;
};

void TestStoreThreads::writesAreReadByEveryReader()
{
    StoreThreads store({place(), 2});
    for (int i = 0; i < 20; ++i) {
        QVERIFY(
            isStored(write(store, [i](Database &database) { insertUser(database, QString::number(i)); })));
        QCOMPARE(userCount(store), i + 1);
    }
}

void TestStoreThreads::refusedChangeLeavesTheOthers()
{
    StoreThreads store(oneWriter());
    Gate gate;
    write(store, gate.change());
    gate.awaitWriter();
    const auto before = write(store, [](Database &database) { insertUser(database, u"before"_s); });
    const auto refused = write(store, [](Database &database) {
        insertUser(database, u"refused"_s);
        throw std::runtime_error("no");
    });
    const auto after = write(store, [](Database &database) { insertUser(database, u"after"_s); });
    gate.open();
    QVERIFY(isStored(before));
    QVERIFY(!isStored(refused));
    QVERIFY(isStored(after));
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, std::rethrow_exception(refused->failure));
    QCOMPARE(usersInPlace(), 2);
}

void TestStoreThreads::brokenChangeLeavesTheOthers()
{
    StoreThreads store(oneWriter());
    Gate gate;
    write(store, gate.change());
    gate.awaitWriter();
    const auto before = write(store, [](Database &database) { insertUser(database, u"same"_s); });
    const auto broken = write(store, [](Database &database) { insertUser(database, u"same"_s); });
    const auto after = write(store, [](Database &database) { insertUser(database, u"after"_s); });
    gate.open();
    QVERIFY(isStored(before));
    QVERIFY(!isStored(broken));
    QVERIFY(isStored(after));
    QVERIFY_THROWS_EXCEPTION(StorageError, std::rethrow_exception(broken->failure));
    QCOMPARE(usersInPlace(), 2);
}

// Anything may fail on the way to the disk, not only a change.
void TestStoreThreads::failureOfTheWriterItselfIsTold()
{
    bool fails = true;
    StoreThreads store({.place = place(), .committed = [&fails](std::chrono::nanoseconds) {
                            if (std::exchange(fails, false))
                                throw std::bad_alloc();
                        }});
    QVERIFY(!isStored(write(store, [](Database &database) { insertUser(database, u"alice"_s); })));
    QVERIFY(isStored(write(store, [](Database &database) { insertUser(database, u"bob"_s); })));
}

void TestStoreThreads::acknowledgedIsOnTheDisk()
{
    StoreThreads store({place()});
    std::atomic<qint64> seen = -1;
    Semaphore done;
    store.write({[](Database &database) { insertUser(database, u"alice"_s); },
                 [&](const std::exception_ptr &) {
                     seen = usersInPlace();
                     done.release();
                 }});
    done.acquire();
    QCOMPARE(seen, 1);
}

void TestStoreThreads::readersCannotWrite()
{
    StoreThreads store({place()});
    Semaphore done;
    bool refused = false;
    store.read([&](Database &database) {
        try {
            insertUser(database, u"alice"_s);
        } catch (const StorageError &) {
            refused = true;
        }
        done.release();
    });
    done.acquire();
    QVERIFY(refused);
}

void TestStoreThreads::fullQueueRefuses()
{
    StoreSettings settings{place(), 1, 1, 1};
    settings.writers = 1;
    StoreThreads store(settings);
    Gate gate;
    const auto first = write(store, gate.change());
    gate.awaitWriter();
    const auto second = write(store, [](Database &) {});
    QVERIFY(second);
    QVERIFY(!write(store, [](Database &) {}));
    Semaphore begun;
    Semaphore mayEnd;
    const auto slowRead = [&](Database &) {
        begun.release();
        mayEnd.acquire();
    };
    QVERIFY(store.read(slowRead));
    begun.acquire();
    QVERIFY(store.read([](Database &) {}));
    QVERIFY(!store.read([](Database &) {}));
    mayEnd.release();
    gate.open();
    QVERIFY(isStored(first));
    QVERIFY(isStored(second));
}

void TestStoreThreads::writesUnderWayAreFinishedAtTheEnd()
{
    Gate gate;
    QList<std::shared_ptr<WriteOutcome>> told;
    {
        StoreThreads store(oneWriter());
        told << write(store, gate.change());
        gate.awaitWriter();
        for (int i = 0; i < 3; ++i)
            told << write(store, [i](Database &database) { insertUser(database, QString::number(i)); });
        gate.open();
    }
    for (const auto &each : told)
        QVERIFY(isStored(each));
    QCOMPARE(usersInPlace(), 3);
}

void TestStoreThreads::manyThreadsAtOnce()
{
    constexpr int perThread = 50;
    StoreThreads store({place(), 3});
    std::atomic<int> stored = 0;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < perThread; ++i) {
                const QString name = u"%1-%2"_s.arg(t).arg(i);
                if (isStored(write(store, [name](Database &database) { insertUser(database, name); }))
                    && userCount(store) > 0)
                    ++stored;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(stored, 4 * perThread);
    QCOMPARE(userCount(store), 4 * perThread);
}

// Many times, for whether two connections end at the same moment is up to the threads.
void TestStoreThreads::theJournalOfAFileIsTakenAwayAtTheEnd()
{
    const QString file = directory->filePath(u"journal.sqlite"_s);
    for (int round = 1; round <= 100; ++round) {
        {
            StoreThreads store({file, 2});
            QVERIFY(isStored(
                write(store, [round](Database &database) { insertUser(database, QString::number(round)); })));
            QCOMPARE(userCount(store), round);
            QVERIFY(QFile::exists(file + u"-wal"_s));
        }
        QVERIFY(!QFile::exists(file + u"-wal"_s));
    }
}

TIDELOFT_TEST_MAIN(TestStoreThreads)
#include "tst_store_threads.moc"
