// The server dies and its standby takes over: the service finds it, and what was acknowledged is there once.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/daemon.h"
#include "tests/service/http_reply.h"
#include "tests/service/message_bodies.h"
#include "tests/service/postgresql_cluster.h"
#include "tests/support/test_main.h"

#include <atomic>
#include <thread>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestFailover : public QObject
{
    Q_OBJECT

private slots:
    void standbyTakesOver();

private:
    static HttpReply call(quint16 port, const QByteArray &method, const QByteArray &target,
                          const QByteArray &cookie, const QJsonObject &body = {})
    {
        const QByteArray text = body.isEmpty() ? QByteArray() : QJsonDocument(body).toJson();
        HttpClient client(port);
        return parsedReply(client.exchange(method + ' ' + target + " HTTP/1.1\r\nHost: h\r\nCookie: " + cookie
                                           + "\r\nContent-Type: application/json\r\nContent-Length: "
                                           + QByteArray::number(text.size()) + "\r\n\r\n" + text));
    }
    static QByteArray nonce(int writer, int number)
    {
        return QByteArray::number(writer * 100'000 + number).rightJustified(12, '0').toBase64();
    }
};

void TestFailover::standbyTakesOver()
{
    constexpr int writers = 4;
    PostgresqlCluster primary;
    PostgresqlCluster standby({u"fsync=off"_s}, PostgresqlCluster::Beginning::Bare);
    standby.follow(primary);
    QVERIFY(primary.run(u"ALTER SYSTEM SET synchronous_standby_names = '*'"_s));
    QVERIFY(primary.run(u"SELECT pg_reload_conf()"_s));
    QTRY_VERIFY(primary.run(u"SELECT 1 / count(*) FROM pg_stat_replication WHERE sync_state = 'sync'"_s));
    Daemon service;
    QVERIFY(service.startPlain(
        {u"--database"_s, u"postgresql://tideloft@127.0.0.1:%1,127.0.0.1:%2/postgres"_s.arg(primary.port())
                              .arg(standby.port())}));
    const quint16 port = service.port();
    const QJsonObject user{{u"username"_s, u"alice"_s}, {u"password"_s, u"a good password"_s}};
    QCOMPARE(call(port, "POST", "/api/auth/register", {}, user).status, 201);
    const QByteArray alice =
        call(port, "POST", "/api/auth/login", {}, user).headers.value("set-cookie").split(';').constFirst();
    std::atomic<bool> over = false;
    std::atomic<bool> givenUp = false;
    std::atomic<int> acknowledged = 0;
    std::atomic<int> refused = 0;
    std::atomic<int> others = 0;
    std::vector<std::thread> threads;
    for (int writer = 0; writer < writers; ++writer) {
        threads.emplace_back([&, writer] {
            for (int number = 0; !over; ++number) {
                QJsonObject message = sealedMessage(u"alice"_s);
                message.insert(u"iv"_s, QString::fromLatin1(nonce(writer, number)));
                for (int status = 0; status != 201 && !givenUp;) {
                    status = call(port, "POST", "/api/chat/send", alice, message).status;
                    refused += status == 503;
                    others += status != 503 && status != 201;
                }
                ++acknowledged;
            }
        });
    }
    QTRY_VERIFY(acknowledged > 40);
    primary.stop(SIGKILL);
    QTRY_VERIFY(refused > 0);
    const bool promoted = standby.run(u"SELECT pg_promote()"_s);
    const int before = acknowledged;
    const bool goesOn = QTest::qWaitFor([&] { return acknowledged > before + 40; }, 30'000);
    over = true;
    givenUp = !goesOn;
    for (std::thread &thread : threads)
        thread.join();
    QVERIFY(promoted);
    QVERIFY(goesOn);
    QCOMPARE(others.load(), 0);
    const QJsonArray history = call(port, "GET", "/api/chat/history/alice", alice).array();
    QSet<QString> kept;
    for (const QJsonValue &message : history)
        kept << message[u"iv"_s].toString();
    QCOMPARE(history.size(), acknowledged.load());
    QCOMPARE(kept.size(), acknowledged.load());
}

TIDELOFT_TEST_MAIN(TestFailover)
#include "tst_failover.moc"
