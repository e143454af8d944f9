// One of two services is killed under load, again and again: what it had begun can be asked of the other,
// nothing that was acknowledged is lost, and nothing is there twice.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/schema.h"
#include "tests/service/daemon.h"
#include "tests/service/message_bodies.h"
#include "tests/service/postgresql_cluster.h"
#include "tests/service/service_call.h"
#include "tests/service/stored_session.h"
#include "tests/support/long_form.h"
#include "tests/support/test_main.h"

#include <QRandomGenerator>

#include <array>
#include <atomic>
#include <thread>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestKilledServices : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsLostAndNothingDoubled();

private:
    static constexpr int writerCount = 8;

    /// Sends to the next one, reads back, and asks again whatever got no reply.
    struct Writer {
        QString name;
        QString peer;
        QByteArray cookie;
        QByteArrayList acknowledged;
    };
    struct Service {
        std::unique_ptr<Daemon> daemon;
        std::atomic<quint16> port = 0;
    };
    using Writers = std::array<Writer, writerCount>;
    Writers storedWriters() const;
    void start(Service &service) const;
    bool killInTurns(int kills, QRandomGenerator &random);
    HttpReply repeated(const QByteArray &method, const QByteArray &target, const QByteArray &cookie,
                       const QJsonObject &body, QRandomGenerator &random);
    void write(Writer &writer, quint32 seed);
    void check(const Writer &writer) const;

    QString place;
    std::array<Service, 2> services;
    std::atomic<bool> over = false;
    std::atomic<bool> givenUp = false; ///< the writers stop asking: no service answers
    std::atomic<int> stored = 0;
    std::atomic<int> repetitions = 0;
    std::atomic<int> refused = 0; ///< replies that are neither success nor "try again later"
};

void TestKilledServices::start(Service &service) const
{
    service.daemon = std::make_unique<Daemon>();
    QVERIFY(service.daemon->startPlain({u"--database"_s, place}));
    service.port = service.daemon->port();
}

// One of the two is there at any time.
HttpReply TestKilledServices::repeated(const QByteArray &method, const QByteArray &target,
                                       const QByteArray &cookie, const QJsonObject &body,
                                       QRandomGenerator &random)
{
    std::size_t at = random.bounded(2U);
    for (; !givenUp; at = 1 - at) {
        const HttpReply reply = call(services[at].port, method, target, cookie, body);
        if (reply.status != 0 && reply.status != 503) {
            refused += reply.status == 200 || reply.status == 201 ? 0 : 1;
            return reply;
        }
        ++repetitions;
    }
    return {};
}

void TestKilledServices::write(Writer &writer, quint32 seed)
{
    QRandomGenerator random(seed);
    for (int i = 0; !over; ++i) {
        const QJsonObject message = numberedMessage(writer.peer, i);
        if (repeated("POST", "/api/chat/send", writer.cookie, message, random).status != 201)
            continue;
        writer.acknowledged << nonceOf(message);
        ++stored;
        if (random.bounded(4) == 0)
            repeated("GET", "/api/chat/conversations", writer.cookie, {}, random);
    }
}

void TestKilledServices::check(const Writer &writer) const
{
    Database database(place);
    Rows rows = database.run(u"SELECT iv FROM messages JOIN users ON users.id = sender_id WHERE name = ?"
                             " ORDER BY position, messages.id"_s,
                             {writer.name});
    QByteArrayList kept;
    while (rows.next())
        kept << rows.value(0).toByteArray();
    QCOMPARE(kept, writer.acknowledged);
}

TestKilledServices::Writers TestKilledServices::storedWriters() const
{
    Writers writers;
    Store database(place);
    for (std::size_t i = 0; i < writers.size(); ++i) {
        writers[i].name = u"user%1"_s.arg(i);
        writers[i].peer = u"user%1"_s.arg(i ^ 1U); // two and two talk to each other
        writers[i].cookie = storeSession(database, writers[i].name);
    }
    return writers;
}

// False when the writers do not get on.
bool TestKilledServices::killInTurns(int kills, QRandomGenerator &random)
{
    bool goesOn = true;
    for (int kill = 0; kill < kills && goesOn; ++kill) {
        const auto more = [this, wanted = stored + 20 + random.bounded(20)] { return stored >= wanted; };
        goesOn = QTest::qWaitFor(more, 60'000);
        Service &killed = services[random.bounded(2U)];
        killed.daemon->stop(SIGKILL);
        const auto others = [this, wanted = stored + 20] { return stored >= wanted; };
        goesOn = goesOn && QTest::qWaitFor(others, 60'000);
        start(killed);
        goesOn = goesOn && !QTest::currentTestFailed();
    }
    return goesOn;
}

void TestKilledServices::nothingIsLostAndNothingDoubled()
{
    PostgresqlCluster cluster;
    place = cluster.newPlace();
    Writers writers = storedWriters();
    for (Service &service : services)
        start(service);
    if (QTest::currentTestFailed())
        return;
    const quint32 seed = QRandomGenerator::global()->generate();
    qInfo("seed %u", seed);
    QRandomGenerator random(seed);
    std::vector<std::thread> threads;
    threads.reserve(writers.size());
    for (std::size_t i = 0; i < writers.size(); ++i)
        threads.emplace_back([&, i] { write(writers[i], seed + static_cast<quint32>(i)); });
    const bool goesOn = killInTurns(rounds(3, 50), random);
    over = true;
    givenUp = !goesOn;
    for (std::thread &thread : threads)
        thread.join();
    QVERIFY(goesOn);
    QCOMPARE(refused.load(), 0);
    QVERIFY(repetitions > 0);
    for (const Writer &writer : writers)
        check(writer);
}

TIDELOFT_TEST_MAIN(TestKilledServices)
#include "tst_killed_services.moc"
