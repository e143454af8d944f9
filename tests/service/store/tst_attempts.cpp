// Attempts that several processes count together: as many as are allowed, whoever counts them, and no more.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/attempts.h"
#include "service/store/schema.h"
#include "tests/service/postgresql_cluster.h"
#include "tests/support/test_main.h"

#include <atomic>
#include <thread>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestAttempts : public QObject
{
    Q_OBJECT

private slots:
    void init() { database = std::make_unique<Store>(PostgresqlCluster::ofThisProcess().newPlace()); }
    void cleanup() { database.reset(); }
    void attemptsOfAMinuteAreCounted();
    void everyKeyIsCountedAlone();
    void refusedAttemptIsNotStored();
    void manyAtOnceAreNotMoreThanAllowed();
    void lowerLimitHoldsAtOnce();
    void clockThatWasSetBackKeepsNobodyOut();
    void oldOnesAreRemoved();
    void onlyAHashIsKept();

private:
    void pass(int seconds) const
    {
        database->run(u"UPDATE attempts SET at = at - %1 * INTERVAL '1 second'"_s.arg(seconds));
    }
    qint64 stored() const { return database->number(u"SELECT count(*) FROM attempts"_s); }

    std::unique_ptr<Store> database;
};

void TestAttempts::attemptsOfAMinuteAreCounted()
{
    QCOMPARE(countAttempt(*database, "a", 2), 0);
    pass(100); // the first attempt is older than a minute now
    QCOMPARE(countAttempt(*database, "a", 2), 0);
    pass(30);
    QCOMPARE(countAttempt(*database, "a", 2), 0);
    const int wait = countAttempt(*database, "a", 2);
    QVERIFY2(wait >= 1 && wait <= 30, qPrintable(QString::number(wait)));
    pass(30); // and now the second one
    QCOMPARE(countAttempt(*database, "a", 2), 0);
    const int next = countAttempt(*database, "a", 2);
    QVERIFY2(next >= 1 && next <= 30, qPrintable(QString::number(next)));
}

void TestAttempts::everyKeyIsCountedAlone()
{
    QCOMPARE(countAttempt(*database, "a", 1), 0);
    QCOMPARE(countAttempt(*database, "b", 1), 0);
    QVERIFY(countAttempt(*database, "a", 1) > 0);
    QVERIFY(countAttempt(*database, "b", 1) > 0);
}

void TestAttempts::refusedAttemptIsNotStored()
{
    QCOMPARE(countAttempt(*database, "a", 1), 0);
    for (int i = 0; i < 5; ++i)
        QVERIFY(countAttempt(*database, "a", 1) > 0);
    QCOMPARE(stored(), 1);
}

void TestAttempts::manyAtOnceAreNotMoreThanAllowed()
{
    constexpr int most = 10;
    const QString place = PostgresqlCluster::ofThisProcess().newPlace();
    const Store made(place);
    std::atomic<int> allowed = 0;
    std::vector<std::thread> threads;
    threads.reserve(6);
    for (int i = 0; i < 6; ++i) {
        threads.emplace_back([&] {
            Database own(place);
            for (int attempt = 0; attempt < most; ++attempt)
                allowed += countAttempt(own, "a", most) == 0 ? 1 : 0;
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(allowed.load(), most);
}

void TestAttempts::lowerLimitHoldsAtOnce()
{
    for (int i = 0; i < 5; ++i)
        QCOMPARE(countAttempt(*database, "a", 10), 0);
    QVERIFY(countAttempt(*database, "a", 2) > 0);
}

void TestAttempts::clockThatWasSetBackKeepsNobodyOut()
{
    QCOMPARE(countAttempt(*database, "a", 1), 0);
    pass(-3600);
    QCOMPARE(countAttempt(*database, "a", 1), 0);
    removeOldAttempts(*database);
    QCOMPARE(stored(), 1);
}

void TestAttempts::oldOnesAreRemoved()
{
    for (const char *key : {"a", "b", "c"})
        QCOMPARE(countAttempt(*database, key, 2), 0);
    pass(60);
    QCOMPARE(countAttempt(*database, "a", 2), 0);
    removeOldAttempts(*database);
    QCOMPARE(stored(), 1);
    QCOMPARE(countAttempt(*database, "a", 2), 0);
    QVERIFY(countAttempt(*database, "a", 2) > 0);
}

void TestAttempts::onlyAHashIsKept()
{
    QCOMPARE(countAttempt(*database, "alice", 1), 0);
    Rows rows = database->run(u"SELECT who FROM attempts"_s);
    QVERIFY(rows.next());
    QCOMPARE(rows.value(0).toByteArray().size(), 32);
}

TIDELOFT_TEST_MAIN(TestAttempts)
#include "tst_attempts.moc"
