// Sessions that several requests wait for: one question finds all of them, and each gets its own.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/schema.h"
#include "service/store/session_look_ups.h"
#include "tests/service/postgresql_cluster.h"
#include "tests/support/test_main.h"

#include <atomic>
#include <latch>
#include <thread>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestSessionLookUps : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { cluster = std::make_unique<PostgresqlCluster>(); }
    void init();
    void cleanup() { database.reset(); }
    void cleanupTestCase() { cluster.reset(); }
    void oneQuestionFindsAllThatWait();
    void endedRequestsAreNotLookedUp();
    void whatIsWantedLaterIsFoundAsItIsThen();
    void withoutServerEachIsLookedUpAlone();
    void othersAskForThemselvesAfterFailure();
    void everyThreadGetsItsOwn();

private:
    static QByteArray hashOf(int user) { return QByteArray("\\\"{},\0x", 7) + QByteArray::number(user); }
    QString ownerOf(SessionLookUps &lookUps, const SessionLookUps::Ticket &ticket)
    {
        return lookUps.find(*database, ticket).value_or(CachedSession{0, u"nobody"_s, 0}).name;
    }

    static constexpr int users = 20;
    std::unique_ptr<PostgresqlCluster> cluster;
    QString place;
    std::unique_ptr<Database> database;
};

void TestSessionLookUps::init()
{
    place = cluster->newPlace();
    Store store(place);
    for (int i = 0; i < users; ++i) {
        const QString name = u"user%1"_s.arg(i);
        addUser(store, name, "hash", 1);
        addSession(store, hashOf(i), findUser(store, name).value(), 0, 1000 + i);
    }
    database = std::make_unique<Database>(PostgresqlCluster::logged(place));
    sessionOwner(*database, {}); // is prepared the first time, as the next is
    sessionOwners(*database, {"one", "two"});
}

void TestSessionLookUps::oneQuestionFindsAllThatWait()
{
    SessionLookUps lookUps(true);
    const auto first = lookUps.want(hashOf(1));
    const auto second = lookUps.want(hashOf(2));
    const auto unknown = lookUps.want("unknown");
    const auto secondAgain = lookUps.want(hashOf(2));
    const qsizetype before = cluster->statements();
    QCOMPARE(ownerOf(lookUps, second), u"user2"_s);
    QCOMPARE(ownerOf(lookUps, first), u"user1"_s);
    QCOMPARE(ownerOf(lookUps, unknown), u"nobody"_s);
    QCOMPARE(ownerOf(lookUps, secondAgain), u"user2"_s);
    QCOMPARE(lookUps.find(*database, first).value().expiresAt, 1001);
    QCOMPARE(cluster->statements() - before, 1);
}

void TestSessionLookUps::endedRequestsAreNotLookedUp()
{
    SessionLookUps lookUps(true);
    lookUps.want(hashOf(1));
    const auto second = lookUps.want(hashOf(2));
    const qsizetype before = cluster->log().size();
    QCOMPARE(ownerOf(lookUps, second), u"user2"_s);
    QVERIFY(!cluster->log().mid(before).contains("ANY(CAST")); // one alone has a statement of its own
}

void TestSessionLookUps::whatIsWantedLaterIsFoundAsItIsThen()
{
    SessionLookUps lookUps(true);
    const auto before = lookUps.want(hashOf(1));
    QCOMPARE(ownerOf(lookUps, before), u"user1"_s);
    Store store(place);
    removeSession(store, hashOf(1));
    QCOMPARE(ownerOf(lookUps, before), u"user1"_s);
    QCOMPARE(ownerOf(lookUps, lookUps.want(hashOf(1))), u"nobody"_s);
}

void TestSessionLookUps::withoutServerEachIsLookedUpAlone()
{
    SessionLookUps lookUps(false);
    const auto first = lookUps.want(hashOf(1));
    const auto second = lookUps.want(hashOf(2));
    const qsizetype before = cluster->statements();
    QCOMPARE(ownerOf(lookUps, first), u"user1"_s);
    QCOMPARE(cluster->statements() - before, 1);
    QCOMPARE(ownerOf(lookUps, second), u"user2"_s);
    QCOMPARE(cluster->statements() - before, 2);
}

void TestSessionLookUps::othersAskForThemselvesAfterFailure()
{
    SessionLookUps lookUps(true);
    const auto first = lookUps.want(hashOf(1));
    const auto second = lookUps.want(hashOf(2));
    Database broken(place);
    broken.run(u"SET search_path = pg_catalog"_s);
    QVERIFY_THROWS_EXCEPTION(StorageError, lookUps.find(broken, first));
    QCOMPARE(ownerOf(lookUps, second), u"user2"_s);
    QCOMPARE(ownerOf(lookUps, first), u"user1"_s);
}

void TestSessionLookUps::everyThreadGetsItsOwn()
{
    constexpr int rounds = 100;
    constexpr int atOnce = 5;
    constexpr int readers = 4;
    SessionLookUps lookUps(true);
    std::latch begin(readers);
    std::atomic<int> right = 0;
    const auto findSome = [&](Database &own, int from) {
        std::vector<SessionLookUps::Ticket> tickets;
        tickets.reserve(atOnce);
        for (int i = 0; i < atOnce; ++i)
            tickets.push_back(lookUps.want(hashOf((from + i) % (users + 1))));
        for (int i = 0; i < atOnce; ++i) {
            const int user = (from + i) % (users + 1);
            const auto session = lookUps.find(own, tickets[static_cast<std::size_t>(i)]);
            right += user == users ? !session : session && session->name == u"user%1"_s.arg(user);
        }
    };
    std::vector<std::thread> threads;
    threads.reserve(readers);
    for (int reader = 0; reader < readers; ++reader) {
        threads.emplace_back([&, reader] {
            Database own(place, Database::Access::ReadOnly);
            begin.arrive_and_wait();
            for (int round = 0; round < rounds; ++round)
                findSome(own, reader * 7 + round);
        });
    }
    for (std::thread &each : threads)
        each.join();
    QCOMPARE(right.load(), rounds * atOnce * readers);
}

TIDELOFT_TEST_MAIN(TestSessionLookUps)
#include "tst_session_look_ups.moc"
