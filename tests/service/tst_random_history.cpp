// A random history of two users through two services whose clocks are two seconds apart: everybody sees one
// order, and what somebody has seen never changes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/schema.h"
#include "tests/service/daemon.h"
#include "tests/service/message_bodies.h"
#include "tests/service/postgresql_cluster.h"
#include "tests/service/service_call.h"
#include "tests/service/stored_session.h"
#include "tests/service/variable.h"
#include "tests/support/long_form.h"
#include "tests/support/test_main.h"

#include <QRandomGenerator>

#include <atomic>
#include <thread>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestRandomHistory : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void orderIsOneForAllAndNeverChanges_data();
    void orderIsOneForAllAndNeverChanges();
    void clocksWereApart();

private:
    /// A user of one round, who writes on one thread and reads on another.
    struct Person {
        QString name;
        QByteArray cookie;
        QByteArrayList sent;        ///< nonces, in the order in which they were acknowledged
        QList<QByteArrayList> seen; ///< every history that was read
        int failedReads = 0;
        std::atomic<bool> hasWritten = false;
    };
    quint16 randomPort(QRandomGenerator &random) const
    {
        return random.bounded(2) == 0 ? one->port() : two->port();
    }
    QJsonArray historyAt(const Daemon &service, const Person &reader, const Person &peer) const;
    void write(Person &writer, const Person &peer, quint32 seed) const;
    void read(Person &reader, const Person &peer, quint32 seed) const;
    void countStepsBack(const QJsonArray &history);

    static constexpr int messagesEach = 25;
    std::unique_ptr<PostgresqlCluster> cluster;
    std::unique_ptr<Store> database;
    std::unique_ptr<Daemon> one;
    std::unique_ptr<Daemon> two; ///< two seconds ahead
    int stepsBack = 0;           ///< messages with an earlier time than the one before
};

void TestRandomHistory::initTestCase()
{
    cluster = std::make_unique<PostgresqlCluster>();
    const QStringList options{u"--database"_s, cluster->newPlace()};
    one = std::make_unique<Daemon>();
    QVERIFY(one->startPlain(options));
    two = std::make_unique<Daemon>();
    const Preloaded clock(SHIFTED_CLOCK_NAME, SHIFTED_CLOCK_FOLDER);
    const Variable ahead("TIDELOFT_CLOCK_AHEAD", "2000");
    QVERIFY(two->startPlain(options));
    database = std::make_unique<Store>(options.at(1));
}

void TestRandomHistory::cleanupTestCase()
{
    database.reset();
    one.reset();
    two.reset();
    cluster.reset();
}

// Now and then the same comes once more, as from a client that got no reply.
void TestRandomHistory::write(Person &writer, const Person &peer, quint32 seed) const
{
    QRandomGenerator random(seed);
    for (int i = 0; i < messagesEach; ++i) {
        const QJsonObject message = numberedMessage(peer.name, i, writer.name.back().toLatin1());
        const int times = random.bounded(6) == 0 ? 2 : 1;
        bool acknowledged = true;
        for (int time = 0; time < times; ++time)
            acknowledged =
                acknowledged
                && call(randomPort(random), "POST", "/api/chat/send", writer.cookie, message).status == 201;
        if (acknowledged)
            writer.sent << nonceOf(message);
    }
    writer.hasWritten = true;
}

// As the client does: what has not changed is what was read before.
void TestRandomHistory::read(Person &reader, const Person &peer, quint32 seed) const
{
    QRandomGenerator random(seed);
    QByteArray known;
    do {
        const QByteArray condition = known.isEmpty() ? QByteArray() : "If-None-Match: " + known + "\r\n";
        const HttpReply reply = call(randomPort(random), "GET", "/api/chat/history/" + peer.name.toLatin1(),
                                     reader.cookie, {}, condition);
        if (reply.status == 304)
            continue;
        if (reply.status != 200) {
            ++reader.failedReads;
            continue;
        }
        known = reply.headers.value("etag");
        reader.seen << noncesOf(reply.array());
    } while (!reader.hasWritten || !peer.hasWritten);
}

QJsonArray TestRandomHistory::historyAt(const Daemon &service, const Person &reader, const Person &peer) const
{
    return call(service.port(), "GET", "/api/chat/history/" + peer.name.toLatin1(), reader.cookie).array();
}

void TestRandomHistory::countStepsBack(const QJsonArray &history)
{
    for (qsizetype i = 1; i < history.size(); ++i)
        stepsBack +=
            history[i][u"createdAt"_s].toString() < history[i - 1][u"createdAt"_s].toString() ? 1 : 0;
}

void TestRandomHistory::orderIsOneForAllAndNeverChanges_data()
{
    QTest::addColumn<quint32>("seed");
    const int count = rounds(4, 300);
    for (int i = 0; i < count; ++i) {
        const quint32 seed = QRandomGenerator::global()->generate();
        QTest::addRow("%u", seed) << seed;
    }
}

void TestRandomHistory::orderIsOneForAllAndNeverChanges()
{
    QFETCH(quint32, seed);
    Person alice;
    Person bob;
    alice.name = u"u%1a"_s.arg(seed);
    bob.name = u"u%1b"_s.arg(seed);
    for (Person *person : {&alice, &bob})
        person->cookie = storeSession(*database, person->name);
    std::thread threads[] = {
        std::thread([&] { write(alice, bob, seed); }), std::thread([&] { write(bob, alice, seed + 1); }),
        std::thread([&] { read(alice, bob, seed + 2); }), std::thread([&] { read(bob, alice, seed + 3); })};
    for (std::thread &thread : threads)
        thread.join();
    const QJsonArray history = historyAt(*one, alice, bob);
    countStepsBack(history);
    const QByteArrayList all = noncesOf(history);
    QHash<QString, QByteArrayList> of;
    for (const QJsonValue &message : history)
        of[message[u"from"_s].toString()] << nonceOf(message);
    QCOMPARE(all.size(), 2 * messagesEach);
    for (const Person *person : {&alice, &bob}) {
        QCOMPARE(person->sent.size(), messagesEach);
        QCOMPARE(of[person->name], person->sent);
        QCOMPARE(person->failedReads, 0);
        QVERIFY(!person->seen.isEmpty());
        for (const QByteArrayList &seen : person->seen)
            QCOMPARE(seen, all.first(seen.size()));
        const Person &peer = person == &alice ? bob : alice;
        for (const Daemon *service : {one.get(), two.get()})
            QCOMPARE(noncesOf(historyAt(*service, *person, peer)), all);
    }
}

// The order above is not that of the times, so it was put to the test. A history of the test before is
// needed.
// NOLINTNEXTLINE(readability-make-member-function-const): a test
void TestRandomHistory::clocksWereApart()
{
    QVERIFY(stepsBack > 0);
}

TIDELOFT_TEST_MAIN(TestRandomHistory)
#include "tst_random_history.moc"
