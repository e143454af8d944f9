// Two services on one PostgreSQL server answer as one does, and neither the end of one nor of the server
// loses or doubles what was acknowledged.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/schema.h"
#include "tests/service/daemon.h"
#include "tests/service/message_bodies.h"
#include "tests/service/postgresql_cluster.h"
#include "tests/service/service_call.h"
#include "tests/service/stored_session.h"
#include "tests/support/test_main.h"

#include <QRegularExpression>

#include <atomic>
#include <mutex>
#include <thread>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestTwoServices : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { cluster = std::make_unique<PostgresqlCluster>(); }
    void init();
    void cleanupTestCase() { cluster.reset(); }
    void whatOneHasStoredTheOtherTellsAtOnce();
    void sessionThatEndsAtOneEndsAtTheOther();
    void sameMessageAtBothIsKeptOnce();
    void orderIsOneForAllAndNeverChanges();
    void attemptsAtBothAreCountedTogether_data();
    void attemptsAtBothAreCountedTogether();
    void oneThatIsKilledLosesAndDoublesNothing();
    void serverThatIsGoneIsToldAndComesBack();

private:
    HttpReply get(const Daemon &at, const QByteArray &target, const QByteArray &cookie,
                  const QByteArray &more = {}) const
    {
        return call(at.port(), "GET", target, cookie, {}, more);
    }
    std::unique_ptr<PostgresqlCluster> cluster;
    std::unique_ptr<Daemon> one;
    std::unique_ptr<Daemon> two;
    QString place;
    QByteArray alice;
    QByteArray bob;
};

void TestTwoServices::init()
{
    place = cluster->newPlace();
    one = std::make_unique<Daemon>();
    two = std::make_unique<Daemon>();
    for (Daemon *service : {one.get(), two.get()})
        QVERIFY(service->startPlain({u"--database"_s, place, u"--trusted-proxy"_s, u"127.0.0.1"_s}));
    Database database(place);
    alice = storeSession(database, u"alice"_s);
    bob = storeSession(database, u"bob"_s);
}

void TestTwoServices::whatOneHasStoredTheOtherTellsAtOnce()
{
    for (int i = 0; i < 20; ++i) {
        const Daemon &sender = i % 2 == 0 ? *one : *two;
        const Daemon &reader = i % 2 == 0 ? *two : *one;
        const QByteArray tag = get(reader, "/api/chat/history/bob", alice).headers.value("etag");
        QCOMPARE(
            call(sender.port(), "POST", "/api/chat/send", alice, numberedMessage(u"bob"_s, i, 'a')).status,
            201);
        const HttpReply after = get(reader, "/api/chat/history/bob", alice, "If-None-Match: " + tag + "\r\n");
        QCOMPARE(after.status, 200);
        QCOMPARE(after.array().size(), i + 1);
        const QByteArray known = "If-None-Match: " + after.headers.value("etag") + "\r\n";
        QCOMPARE(get(sender, "/api/chat/history/bob", alice, known).status, 304);
    }
}

void TestTwoServices::sessionThatEndsAtOneEndsAtTheOther()
{
    QCOMPARE(get(*one, "/api/me", alice).status, 200);
    QCOMPARE(get(*two, "/api/me", alice).status, 200);
    QCOMPARE(call(one->port(), "POST", "/api/auth/logout", alice).status, 200);
    QCOMPARE(get(*two, "/api/me", alice).status, 401);
    QCOMPARE(get(*two, "/api/me", bob).status, 200);
}

void TestTwoServices::sameMessageAtBothIsKeptOnce()
{
    constexpr int count = 30;
    std::atomic<int> acknowledged = 0;
    const auto sendAll = [&](quint16 port) {
        for (int i = 0; i < count; ++i)
            acknowledged +=
                call(port, "POST", "/api/chat/send", alice, numberedMessage(u"bob"_s, i, 'a')).status == 201;
    };
    std::thread first([&] { sendAll(one->port()); });
    std::thread second([&] { sendAll(two->port()); });
    first.join();
    second.join();
    QCOMPARE(acknowledged.load(), 2 * count);
    QCOMPARE(get(*one, "/api/chat/history/bob", alice).array().size(), count);
}

// Whoever reads meanwhile sees the beginning of what everybody sees at the end.
void TestTwoServices::orderIsOneForAllAndNeverChanges()
{
    constexpr int count = 40;
    std::atomic<bool> over = false;
    std::mutex mutex;
    QList<QByteArrayList> seen;
    const auto write = [](quint16 port, const QByteArray &cookie, const QString &to, char who) {
        for (int i = 0; i < count; ++i)
            call(port, "POST", "/api/chat/send", cookie, numberedMessage(to, i, who));
    };
    const auto read = [&](quint16 port, const QByteArray &cookie, const QByteArray &peer) {
        while (!over) {
            const QByteArrayList history =
                noncesOf(call(port, "GET", "/api/chat/history/" + peer, cookie).array());
            const std::lock_guard lock(mutex);
            seen << history;
        }
    };
    std::thread readers[] = {std::thread([&] { read(one->port(), alice, "bob"); }),
                             std::thread([&] { read(two->port(), bob, "alice"); })};
    std::thread writers[] = {std::thread([&] { write(one->port(), alice, u"bob"_s, 'a'); }),
                             std::thread([&] { write(two->port(), bob, u"alice"_s, 'b'); }),
                             std::thread([&] { write(two->port(), alice, u"bob"_s, 'c'); })};
    for (std::thread &writer : writers)
        writer.join();
    over = true;
    for (std::thread &reader : readers)
        reader.join();
    const QByteArrayList all = noncesOf(get(*one, "/api/chat/history/bob", alice).array());
    QCOMPARE(all.size(), 3 * count);
    QCOMPARE(noncesOf(get(*two, "/api/chat/history/alice", bob).array()), all);
    QVERIFY(seen.size() > 4);
    for (const QByteArrayList &history : std::as_const(seen))
        QCOMPARE(history, all.first(history.size()));
}

void TestTwoServices::attemptsAtBothAreCountedTogether_data()
{
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<bool>("oneName");
    QTest::addColumn<bool>("oneAddress");
    QTest::addColumn<int>("status");
    QTest::newRow("sign-ins to an account") << QByteArray("/api/auth/login") << true << false << 401;
    QTest::newRow("sign-ins from an address") << QByteArray("/api/auth/login") << false << true << 401;
    QTest::newRow("registrations from an address")
        << QByteArray("/api/auth/register") << false << true << 201;
}

void TestTwoServices::attemptsAtBothAreCountedTogether()
{
    QFETCH(QByteArray, target);
    QFETCH(bool, oneName);
    QFETCH(bool, oneAddress);
    QFETCH(int, status);
    const auto attempt = [&](const Daemon &at, int number, bool another = false) {
        const QString name = oneName && !another ? u"carol"_s : u"user%1"_s.arg(number);
        const QByteArray address =
            oneAddress && !another ? "10.0.0.1" : "10.0.1." + QByteArray::number(number);
        return call(at.port(), "POST", target, {},
                    {{u"username"_s, name}, {u"password"_s, u"a bad password"_s}},
                    "X-Forwarded-For: " + address + "\r\n");
    };
    for (int i = 0; i < 10; ++i)
        QCOMPARE(attempt(i < 6 ? *one : *two, i).status, status);
    for (const Daemon *service : {one.get(), two.get()}) {
        const HttpReply refused = attempt(*service, 10);
        QCOMPARE(refused.status, 429);
        QCOMPARE(refused.message(), u"Too many attempts. Please try again in a minute."_s);
        const int seconds = refused.headers.value("retry-after").toInt();
        QVERIFY2(seconds >= 1 && seconds <= 60, refused.headers.value("retry-after").constData());
    }
    QCOMPARE(attempt(*two, 11, true).status, status);
}

// A client that got no reply sends the same again, to the one that is left.
void TestTwoServices::oneThatIsKilledLosesAndDoublesNothing()
{
    constexpr int count = 80;
    std::atomic<int> acknowledged = 0;
    const quint16 ports[] = {one->port(), two->port()};
    const auto isAcknowledged = [&](int attempt, const QByteArray &cookie, const QJsonObject &message) {
        return call(ports[attempt % 2], "POST", "/api/chat/send", cookie, message).status == 201;
    };
    const auto write = [&](const QByteArray &cookie, const QString &to, char who) {
        for (int i = 0; i < count; ++i) {
            const QJsonObject message = numberedMessage(to, i, who);
            int attempt = i;
            while (attempt < i + 100 && !isAcknowledged(attempt, cookie, message))
                ++attempt;
            acknowledged += attempt < i + 100 ? 1 : 0;
        }
    };
    std::thread first([&] { write(alice, u"bob"_s, 'a'); });
    std::thread second([&] { write(bob, u"alice"_s, 'b'); });
    const bool isHalfDone = waitFor([&] { return acknowledged > count / 2; });
    one->stop(SIGKILL);
    const int before = acknowledged;
    first.join();
    second.join();
    QVERIFY(isHalfDone);
    QVERIFY(before < 2 * count);
    QCOMPARE(acknowledged.load(), 2 * count);
    const QByteArrayList all = noncesOf(get(*two, "/api/chat/history/bob", alice).array());
    QCOMPARE(all.size(), 2 * count);
    QCOMPARE(QSet<QByteArray>(all.begin(), all.end()).size(), 2 * count);
}

void TestTwoServices::serverThatIsGoneIsToldAndComesBack()
{
    const auto send = [this](int number) {
        return call(one->port(), "POST", "/api/chat/send", alice, numberedMessage(u"bob"_s, number, 'a'));
    };
    QCOMPARE(send(1).status, 201);
    cluster->stop(SIGQUIT);
    for (const HttpReply &refused : {send(2), get(*two, "/api/chat/history/bob", alice)}) {
        QCOMPARE(refused.status, 503);
        QCOMPARE(refused.message(),
                 u"The service cannot store anything at the moment. Please try again later."_s);
        QCOMPARE(refused.headers.value("retry-after"), QByteArray("1"));
    }
    QTRY_COMPARE(get(*one, "/healthz", {}).status, 503);
    cluster->start();
    // Not by a macro, which asks once more: each connection comes back by itself.
    QVERIFY(QTest::qWaitFor([&] { return send(2).status == 201; }, 30'000));
    QVERIFY(QTest::qWaitFor([&] { return get(*two, "/api/chat/history/bob", alice).array().size() == 2; },
                            30'000));
    QTRY_COMPARE_WITH_TIMEOUT(get(*one, "/healthz", {}).status, 200, 30'000);
    QCOMPARE(one->stop(SIGTERM), 0);
    const QByteArrayList lines = one->errors().trimmed().split('\n');
    static const QRegularExpression form(u"^[-0-9]{10}T[:.0-9]{12}Z (info|warning|problem) (-|\\d+) "_s);
    for (const QByteArray &line : lines)
        QVERIFY2(form.match(QString::fromUtf8(line)).hasMatch(), line);
}

TIDELOFT_TEST_MAIN(TestTwoServices)
#include "tst_two_services.moc"
