// Connections: time-outs, slow work, resets, many at once, and the end of the server.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/http_client.h"
#include "tests/service/raw_requests.h"
#include "tests/service/server_fixture.h"
#include "tests/support/test_main.h"

#include <QSemaphore>

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
    void tooMuchSlowWorkIsRefused();
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
    QSemaphore begun;
    QSemaphore mayEnd;
    ServerFixture server([&](const Request &request) -> Reply {
        if (request.method == "GET")
            return echo(request);
        return Deferred{[&]() -> Continuation {
                            begun.release();
                            mayEnd.acquire();
                            return [] { return replyWith(QJsonObject{{u"late"_s, true}}); };
                        },
                        {}};
    });
    HttpClient slow(server.port());
    slow.send(post("x"));
    begun.acquire();
    HttpClient quick(server.port());
    QCOMPARE(statusOf(quick.exchange(get)), 200);
    mayEnd.release();
    QVERIFY(slow.readReply().endsWith("{\"late\":true}"));
}

void TestHttpConnections::tooMuchSlowWorkIsRefused()
{
    QSemaphore begun;
    QSemaphore mayEnd;
    ServerLimits limits;
    limits.waitingJobs = 0;
    ServerFixture server(
        [&](const Request &) -> Reply {
            return Deferred{[&]() -> Continuation {
                                begun.release();
                                mayEnd.acquire();
                                return [] { return replyWith(QJsonObject()); };
                            },
                            "/slow"};
        },
        limits);
    HttpClient first(server.port());
    HttpClient second(server.port());
    first.send(get);
    second.send(get);
    begun.acquire(2);
    HttpClient third(server.port());
    const QByteArray reply = third.exchange(get);
    mayEnd.release(2);
    QCOMPARE(statusOf(reply), 503);
    QVERIFY(reply.contains("\r\nRetry-After: 1\r\n"));
    QCOMPARE(server.log().constFirst(), QByteArray("GET /slow 503"));
    QCOMPARE(statusOf(first.readReply()), 200);
    QCOMPARE(statusOf(second.readReply()), 200);
}

void TestHttpConnections::resetsDoNotHurt()
{
    QSemaphore mayEnd;
    ServerFixture server([&](const Request &request) -> Reply {
        if (request.method == "GET")
            return echo(request);
        return Deferred{[&]() -> Continuation {
                            mayEnd.acquire();
                            return [] { return replyWith(QJsonObject()); };
                        },
                        {}};
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
    mayEnd.release();
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
    ServerLimits limits;
    limits.connections = 1;
    ServerFixture server(&echo, limits);
    HttpClient first(server.port());
    QCOMPARE(statusOf(first.exchange(get)), 200);
    HttpClient second(server.port());
    QCOMPARE(second.readAll(), QByteArray());
    QCOMPARE(statusOf(first.exchange(get)), 200);
}

void TestHttpConnections::replyUnderWayIsFinishedWhenStopping()
{
    QSemaphore begun;
    QSemaphore mayEnd;
    ServerLimits limits;
    limits.stopTime = std::chrono::minutes(1);
    const auto handle = [&](const Request &) -> Reply {
        return Deferred{[&]() -> Continuation {
                            begun.release();
                            mayEnd.acquire();
                            return [] { return replyWith(QJsonObject()); };
                        },
                        {}};
    };
    ServerFixture server(handle, limits);
    HttpClient idle(server.port());
    QVERIFY(idle.isConnected());
    HttpClient busy(server.port());
    busy.send(get);
    begun.acquire();
    std::thread stopper([&] { server.stop(); });
    const QByteArray nothing = idle.readAll();
    mayEnd.release();
    const QByteArray reply = busy.readAll();
    stopper.join();
    QCOMPARE(nothing, QByteArray());
    QCOMPARE(statusOf(reply), 200);
    QVERIFY(reply.contains("\r\nConnection: close\r\n"));
}

void TestHttpConnections::stoppingDoesNotWaitForEver()
{
    QSemaphore begun;
    QSemaphore mayEnd;
    ServerLimits limits;
    limits.stopTime = std::chrono::milliseconds(50);
    {
        ServerFixture server(
            [&](const Request &) -> Reply {
                return Deferred{[&]() -> Continuation {
                                    begun.release();
                                    mayEnd.acquire();
                                    return [] { return replyWith(QJsonObject()); };
                                },
                                {}};
            },
            limits);
        HttpClient clients[] = {HttpClient(server.port()), HttpClient(server.port()),
                                HttpClient(server.port())};
        for (HttpClient &client : clients)
            client.send(get);
        begun.acquire(2); // the third waits for a thread
        server.stop();    // returns although both threads are busy
        mayEnd.release(2);
    }
    QCOMPARE(begun.available(), 0); // and the third was never begun
}

TIDELOFT_TEST_MAIN(TestHttpConnections)
#include "tst_connection.moc"
