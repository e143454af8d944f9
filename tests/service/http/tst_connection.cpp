// Connections: time-outs, slow work, resets, many at once, and the end of the server.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/http_client.h"
#include "tests/service/late_replies.h"
#include "tests/service/raw_requests.h"
#include "tests/service/server_fixture.h"
#include "tests/support/test_main.h"

#include <sys/socket.h>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestHttpConnections : public QObject
{
    Q_OBJECT

private slots:
    void halfHeaderIsDropped();
    void halfBodyIsDropped();
    void silentConnectionIsDropped();
    void idleConnectionIsDropped();
    void slowWorkDoesNotHoldOthersUp();
    void lateWorkIsAnsweredInItsPlace();
    void resetsDoNotHurt();
    void manyConnections();
    void connectionsAreLimited();
    void replyUnderWayIsFinishedWhenStopping();
    void stoppingDoesNotWaitForEver();

private:
    static ServerLimits impatient()
    {
        ServerLimits limits;
        limits.headerTime = limits.bodyTime = limits.idleTime = std::chrono::milliseconds(100);
        return limits;
    }
};

void TestHttpConnections::halfHeaderIsDropped()
{
    ServerFixture server(&echo, impatient());
    HttpClient client(server.port());
    client.send("GET / HTTP/1.1\r\nHo");
    QCOMPARE(statusOf(client.readAll()), 408);
}

void TestHttpConnections::halfBodyIsDropped()
{
    ServerFixture server(&echo, impatient());
    HttpClient client(server.port());
    client.send("POST / HTTP/1.1\r\nHost: h\r\nContent-Length: 10\r\n\r\nabc");
    QCOMPARE(statusOf(client.readAll()), 408);
}

void TestHttpConnections::silentConnectionIsDropped()
{
    ServerFixture server(&echo, impatient());
    HttpClient client(server.port());
    QVERIFY(client.isConnected());
    QVERIFY(client.readAll() != "still open");
}

void TestHttpConnections::idleConnectionIsDropped()
{
    ServerLimits limits = impatient();
    limits.headerTime = limits.bodyTime = std::chrono::minutes(1);
    ServerFixture server(&echo, limits);
    HttpClient client(server.port());
    QCOMPARE(statusOf(client.exchange(get)), 200);
    QCOMPARE(client.readAll(), QByteArray()); // nothing was asked, so nothing is said
}

void TestHttpConnections::slowWorkDoesNotHoldOthersUp()
{
    LateReplies late;
    ServerFixture server([&](const Request &request) -> Reply {
        return request.method == "GET" ? echo(request) : late.next();
    });
    HttpClient slow(server.port());
    slow.send(post("x"));
    late.await();
    HttpClient quick(server.port());
    QCOMPARE(statusOf(quick.exchange(get)), 200);
    late.finish();
    QVERIFY(slow.readReply().endsWith("{\"late\":true}"));
}

void TestHttpConnections::lateWorkIsAnsweredInItsPlace()
{
    LateReplies late;
    ServerFixture server([&](const Request &) { return late.next(std::chrono::milliseconds(20)); });
    HttpClient client(server.port());
    QCOMPARE(statusOf(client.exchange(get)), 503);
    late.finish(); // too late: it belongs to no request
    QCOMPARE(statusOf(client.exchange(get)), 503);
}

void TestHttpConnections::resetsDoNotHurt()
{
    LateReplies late;
    ServerFixture server([&](const Request &request) -> Reply {
        return request.method == "GET" ? echo(request) : late.next();
    });
    const linger reset{1, 0}; // closing sends a reset at once
    for (const QByteArray &part :
         {QByteArray("GET / HT"), post(QByteArray(900, 'x')).chopped(5), post("whole"), get}) {
        HttpClient client(server.port());
        QVERIFY(client.isConnected());
        client.send(part);
        setsockopt(int(client.socket.socketDescriptor()), SOL_SOCKET, SO_LINGER, &reset, sizeof reset);
        client.socket.abort();
    }
    late.finish();
    HttpClient next(server.port());
    QCOMPARE(statusOf(next.exchange(get)), 200);
}

void TestHttpConnections::manyConnections()
{
    ServerFixture server(&echo);
    std::vector<std::unique_ptr<HttpClient>> clients;
    clients.reserve(200);
    for (int i = 0; i < 200; ++i)
        clients.push_back(std::make_unique<HttpClient>(server.port()));
    for (const auto &client : clients) {
        QVERIFY(client->isConnected());
        client->send(post("abc"));
    }
    for (const auto &client : clients)
        QCOMPARE(statusOf(client->readReply()), 200);
    for (const auto &client : clients)
        QCOMPARE(statusOf(client->exchange(get)), 200);
}

void TestHttpConnections::connectionsAreLimited()
{
    LateReplies late;
    ServerLimits limits;
    limits.connections = 1;
    ServerFixture server([&](const Request &) { return late.next(); }, limits);
    HttpClient first(server.port());
    first.send(get);
    late.await();
    HttpClient second(server.port());
    const QByteArray refused = second.exchange(get); // which nobody reads
    QCOMPARE(statusOf(refused), 503);
    QVERIFY(refused.contains("\"message\""));
    QCOMPARE(second.readAll(), QByteArray());
    late.finish();
    QCOMPARE(statusOf(first.readReply()), 200);
    HttpClient third(server.port());
    third.send(get);
    late.await();
    QCOMPARE(first.readAll(), QByteArray()); // it only waited
    late.finish();
    QCOMPARE(statusOf(third.readReply()), 200);
}

void TestHttpConnections::replyUnderWayIsFinishedWhenStopping()
{
    LateReplies late;
    ServerLimits limits;
    limits.stopTime = std::chrono::minutes(1);
    ServerFixture server([&](const Request &) { return late.next(); }, limits);
    HttpClient idle(server.port());
    QVERIFY(idle.isConnected());
    HttpClient busy(server.port());
    busy.send(get);
    late.await();
    std::thread stopper([&] { server.stop(); });
    const QByteArray nothing = idle.readAll();
    late.finish();
    const QByteArray reply = busy.readAll();
    stopper.join();
    QCOMPARE(nothing, QByteArray());
    QCOMPARE(statusOf(reply), 200);
    QVERIFY(reply.contains("\r\nConnection: close\r\n"));
}

void TestHttpConnections::stoppingDoesNotWaitForEver()
{
    LateReplies late;
    ServerLimits limits;
    limits.stopTime = std::chrono::milliseconds(50);
    {
        ServerFixture server([&](const Request &) { return late.next(); }, limits);
        HttpClient client(server.port());
        client.send(get);
        late.await();
        server.stop(); // returns although a reply is still to come
    }
    late.finish(); // and what comes when the server is gone is dropped
}

TIDELOFT_TEST_MAIN(TestHttpConnections)
#include "tst_connection.moc"
