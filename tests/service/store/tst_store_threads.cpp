// The database on threads of its own: what is acknowledged is stored, and one failure concerns nobody else.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/schema.h"
#include "tests/service/store/written_change.h"
#include "tests/support/test_main.h"

#include <atomic>
#include <utility>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using tideloft::tests::isStored;
using tideloft::tests::Semaphore;
using tideloft::tests::write;
using tideloft::tests::WriteOutcome;

class TestStoreThreads : public QObject
{
    Q_OBJECT

private slots:
    void init() { directory.reset(new QTemporaryDir); }
    void fileThatCannotBeOpenedIsToldAtOnce();
    void writesAreReadByEveryReader();
    void whatWaitsTogetherIsCommittedTogether();
    void refusedChangeLeavesTheOthers();
    void brokenChangeLeavesTheOthers();
    void failureOfTheWriterItselfIsTold();
    void acknowledgedIsOnTheDisk();
    void readersCannotWrite();
    void lockedDatabaseRefusesWritesAndAllowsReads();
    void fullQueueRefuses();
    void writesUnderWayAreFinishedAtTheEnd();
    void manyThreadsAtOnce();

private:
    QString file() const { return directory->filePath(u"test.sqlite"_s); }
    static void insert(Database &database, const QString &name)
    {
        database.run(u"INSERT INTO users (name, password, created_at) VALUES (?, '', 0)"_s, {name});
    }
    static qint64 users(Database &database) { return database.number(u"SELECT count(*) FROM users"_s); }
    qint64 usersInFile() const
    {
        Database other(file(), Database::Access::ReadOnly);
        return users(other);
    }

    static qint64 count(StoreThreads &store)
    {
        Semaphore done;
        qint64 result = -1;
        store.read([&](Database &database) {
            result = users(database);
            done.release();
        });
        done.acquire();
        return result;
    }

    QScopedPointer<QTemporaryDir> directory;
};

/// Keeps the writer busy until it is let go, so that what comes meanwhile waits together.
class Gate
{
public:
    std::function<void(Database &)> change()
    {
        return [this](Database &) {
            closed.release();
            opened.acquire();
        };
    }
    void awaitWriter() { closed.acquire(); }
    void open() { opened.release(); }

private:
    Semaphore closed;
    Semaphore opened;
};

void TestStoreThreads::fileThatCannotBeOpenedIsToldAtOnce()
{
    QVERIFY_THROWS_EXCEPTION(StorageError, StoreThreads({u"/dev/null/x"_s}));
    QFile other(file());
    QVERIFY(other.open(QIODevice::WriteOnly));
    other.write(QByteArray(4096, 'x'));
    other.close();
    QVERIFY_THROWS_EXCEPTION(StorageError, StoreThreads({file()}));
}

void TestStoreThreads::writesAreReadByEveryReader()
{
    StoreThreads store({file(), 2});
    for (int i = 0; i < 20; ++i) {
        QVERIFY(isStored(write(store, [i](Database &database) { insert(database, QString::number(i)); })));
        QCOMPARE(count(store), i + 1);
    }
}

void TestStoreThreads::whatWaitsTogetherIsCommittedTogether()
{
    StoreThreads store({file()});
    Gate gate;
    const auto first = write(store, gate.change());
    gate.awaitWriter();
    QList<std::shared_ptr<WriteOutcome>> others;
    QList<qint64> seenFromOutside;
    for (int i = 0; i < 3; ++i) {
        others << write(store, [&, i](Database &database) {
            insert(database, QString::number(i));
            seenFromOutside << usersInFile();
        });
    }
    gate.open();
    for (const auto &told : others)
        QVERIFY(isStored(told));
    QCOMPARE(seenFromOutside, (QList<qint64>{0, 0, 0})); // nothing was committed between them
    QCOMPARE(usersInFile(), 3);
}

void TestStoreThreads::refusedChangeLeavesTheOthers()
{
    StoreThreads store({file()});
    Gate gate;
    write(store, gate.change());
    gate.awaitWriter();
    const auto before = write(store, [](Database &database) { insert(database, u"before"_s); });
    const auto refused = write(store, [](Database &database) {
        insert(database, u"refused"_s);
        throw std::runtime_error("no");
    });
    const auto after = write(store, [](Database &database) { insert(database, u"after"_s); });
    gate.open();
    QVERIFY(isStored(before));
    QVERIFY(!isStored(refused));
    QVERIFY(isStored(after));
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, std::rethrow_exception(refused->failure));
    QCOMPARE(usersInFile(), 2);
}

void TestStoreThreads::brokenChangeLeavesTheOthers()
{
    StoreThreads store({file()});
    Gate gate;
    write(store, gate.change());
    gate.awaitWriter();
    const auto before = write(store, [](Database &database) { insert(database, u"same"_s); });
    const auto broken = write(store, [](Database &database) { insert(database, u"same"_s); });
    const auto after = write(store, [](Database &database) { insert(database, u"after"_s); });
    gate.open();
    QVERIFY(isStored(before));
    QVERIFY(!isStored(broken));
    QVERIFY(isStored(after));
    QVERIFY_THROWS_EXCEPTION(StorageError, std::rethrow_exception(broken->failure));
    QCOMPARE(usersInFile(), 2);
}

// Anything may fail on the way to the disk, not only a change.
void TestStoreThreads::failureOfTheWriterItselfIsTold()
{
    bool fails = true;
    StoreThreads store({.place = file(), .committed = [&fails](std::chrono::nanoseconds) {
                            if (std::exchange(fails, false))
                                throw std::bad_alloc();
                        }});
    QVERIFY(!isStored(write(store, [](Database &database) { insert(database, u"alice"_s); })));
    QVERIFY(isStored(write(store, [](Database &database) { insert(database, u"bob"_s); })));
}

void TestStoreThreads::acknowledgedIsOnTheDisk()
{
    StoreThreads store({file()});
    std::atomic<qint64> seen = -1;
    Semaphore done;
    store.write({[](Database &database) { insert(database, u"alice"_s); },
                 [&](const std::exception_ptr &) {
                     seen = usersInFile();
                     done.release();
                 }});
    done.acquire();
    QCOMPARE(seen, 1);
}

void TestStoreThreads::readersCannotWrite()
{
    StoreThreads store({file()});
    Semaphore done;
    bool refused = false;
    store.read([&](Database &database) {
        try {
            insert(database, u"alice"_s);
        } catch (const StorageError &) {
            refused = true;
        }
        done.release();
    });
    done.acquire();
    QVERIFY(refused);
}

void TestStoreThreads::lockedDatabaseRefusesWritesAndAllowsReads()
{
    StoreThreads store({file()});
    Store other(file());
    {
        const Transaction held(other);
        QList<std::shared_ptr<WriteOutcome>> told;
        for (int i = 0; i < 5; ++i)
            told << write(store, [i](Database &database) { insert(database, QString::number(i)); });
        QCOMPARE(count(store), 0); // while the writer waits
        for (const auto &each : told) {
            QVERIFY(!isStored(each));
            try {
                std::rethrow_exception(each->failure);
            } catch (const StorageError &error) {
                QVERIFY(error.isTemporary());
            }
        }
    }
    QVERIFY(isStored(write(store, [](Database &database) { insert(database, u"alice"_s); })));
    QCOMPARE(count(store), 1);
}

void TestStoreThreads::fullQueueRefuses()
{
    StoreThreads store({file(), 1, 1, 1});
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
        StoreThreads store({file()});
        told << write(store, gate.change());
        gate.awaitWriter();
        for (int i = 0; i < 3; ++i)
            told << write(store, [i](Database &database) { insert(database, QString::number(i)); });
        gate.open();
    }
    for (const auto &each : told)
        QVERIFY(isStored(each));
    QVERIFY(!QFile::exists(file() + u"-wal"_s));
    QCOMPARE(usersInFile(), 3);
}

void TestStoreThreads::manyThreadsAtOnce()
{
    constexpr int perThread = 50;
    StoreThreads store({file(), 3});
    std::atomic<int> stored = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < perThread; ++i) {
                const QString name = u"%1-%2"_s.arg(t).arg(i);
                if (isStored(write(store, [name](Database &database) { insert(database, name); }))
                    && count(store) > 0)
                    ++stored;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(stored, 4 * perThread);
    QCOMPARE(count(store), 4 * perThread);
}

TIDELOFT_TEST_MAIN(TestStoreThreads)
#include "tst_store_threads.moc"
