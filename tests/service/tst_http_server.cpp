// What reaches a handler and what does not: limits, malformed requests, time-outs, connections.
#include "tests/service/http_client.h"
#include "tests/service/server_fixture.h"
#include "tests/support/test_main.h"

#include <QSemaphore>

#include <sys/socket.h>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestHttpServer : public QObject
{
    Q_OBJECT

private slots:
    void requestReachesTheHandlerWhole();
    void replyCarriesTheSecurityHeaders();
    void requests_data();
    void requests();
    void headerLimit_data();
    void headerLimit();
    void bodyLimit_data();
    void bodyLimit();
    void endlessChunkedBodyIsCutOff();
    void connectionIsKeptAndPipelined();
    void connectionIsClosedOnRequest_data();
    void connectionIsClosedOnRequest();
    void expectedBodyIsInvited();
    void tooLargeExpectedBodyIsNotInvited();
    void headHasNoBody();
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
    static Response echo(const Request &request)
    {
        return jsonResponse(QJsonObject{{u"method"_s, QString::fromLatin1(request.method)},
                                        {u"target"_s, QString::fromLatin1(request.target)},
                                        {u"type"_s, QString::fromLatin1(request.contentType)},
                                        {u"cookie"_s, QString::fromLatin1(request.cookie)},
                                        {u"size"_s, request.body.size()}});
    }
    static ServerLimits impatient()
    {
        ServerLimits limits;
        limits.headerTime = limits.bodyTime = limits.idleTime = std::chrono::milliseconds(100);
        return limits;
    }
};

namespace
{

const QByteArray get = "GET /x HTTP/1.1\r\nHost: h\r\n\r\n";

QByteArray post(const QByteArray &body, const QByteArray &headers = {})
{
    return "POST /x HTTP/1.1\r\nHost: h\r\n" + headers + "Content-Length: " + QByteArray::number(body.size())
           + "\r\n\r\n" + body;
}

} // namespace

void TestHttpServer::requestReachesTheHandlerWhole()
{
    ServerFixture server(&echo);
    HttpClient client(server.port());
    const QByteArray reply =
        client.exchange("POST /a%20b?q=%41 HTTP/1.1\r\nhost: h\r\ncontent-type: application/json\r\n"
                        "COOKIE: a=1; b=2\r\nContent-Length: 4\r\n\r\nbody");
    QVERIFY(reply.startsWith("HTTP/1.1 200 OK\r\n"));
    const QByteArray expected = "{\"cookie\":\"a=1; b=2\",\"method\":\"POST\",\"size\":4,"
                                "\"target\":\"/a%20b?q=%41\",\"type\":\"application/json\"}";
    QVERIFY2(reply.endsWith("\r\n\r\n" + expected), reply.constData());
    QCOMPARE(server.log(), QList<QByteArray>{"POST - 200"});
}

void TestHttpServer::replyCarriesTheSecurityHeaders()
{
    ServerFixture server(
        [](const Request &) -> Reply { throw std::logic_error("not reached through a router"); });
    HttpClient client(server.port());
    const QByteArray reply = client.exchange("nonsense\r\n\r\n");
    QCOMPARE(statusOf(reply), 400);
    QVERIFY(reply.contains("\r\nContent-Type: application/json; charset=utf-8\r\n"));
    QVERIFY(reply.contains("\r\nCache-Control: no-store\r\n"));
    QVERIFY(reply.contains("\r\nX-Content-Type-Options: nosniff\r\n"));
    QVERIFY(reply.endsWith("{\"message\":\"This is not a valid HTTP request.\"}"));
}

void TestHttpServer::requests_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<int>("status");
    const auto row = [](const char *name, const QByteArray &request, int status) {
        QTest::newRow(name) << request << status;
    };
    row("GET", get, 200);
    row("chunked", "POST / HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n0\r\n\r\n",
        200);
    row("HTTP/1.0 without host", "GET / HTTP/1.0\r\n\r\n", 200);
    row("no host", "GET / HTTP/1.1\r\n\r\n", 400);
    row("two hosts", "GET / HTTP/1.1\r\nHost: a\r\nHost: b\r\n\r\n", 400);
    row("no path", "GET h HTTP/1.1\r\nHost: h\r\n\r\n", 400);
    row("whole address", "GET http://h/ HTTP/1.1\r\nHost: h\r\n\r\n", 400);
    row("asterisk", "OPTIONS * HTTP/1.1\r\nHost: h\r\n\r\n", 400);
    row("HTTP/2.0", "GET / HTTP/2.0\r\nHost: h\r\n\r\n", 400);
    row("no version", "GET /\r\n\r\n", 400);
    row("blank in a header's name", "GET / HTTP/1.1\r\nHost : h\r\n\r\n", 400);
    row("control character", "GET / HTTP/1.1\r\nHost: h\r\nX: a\x01\r\n\r\n", 400);
    row("length is no number", "POST / HTTP/1.1\r\nHost: h\r\nContent-Length: x\r\n\r\n", 400);
    row("length is negative", "POST / HTTP/1.1\r\nHost: h\r\nContent-Length: -1\r\n\r\n", 400);
    row("two lengths", "POST / HTTP/1.1\r\nHost: h\r\nContent-Length: 1\r\nContent-Length: 2\r\n\r\nab", 400);
    row("length and chunked",
        "POST / HTTP/1.1\r\nHost: h\r\nContent-Length: 3\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n",
        400);
    row("bad chunk", "POST / HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n", 400);
    row("other encoding", "POST / HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: gzip\r\n\r\n", 501);
    row("other expectation", "GET / HTTP/1.1\r\nHost: h\r\nExpect: a-pony\r\n\r\n", 417);
    row("TLS at a plain port", QByteArray::fromHex("1603010200010001fc0303") + QByteArray(64, 'x'), 400);
}

void TestHttpServer::requests()
{
    QFETCH(QByteArray, request);
    QFETCH(int, status);
    ServerFixture server(&echo);
    HttpClient client(server.port());
    const QByteArray reply = client.exchange(request);
    QCOMPARE(statusOf(reply), status);
    QCOMPARE(reply.contains("\"message\""), status != 200);
    if (status != 200)
        QCOMPARE(client.readAll(), QByteArray()); // and the connection is closed
    HttpClient next(server.port());
    QCOMPARE(statusOf(next.exchange(get)), 200);
}

void TestHttpServer::headerLimit_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("status");
    QTest::newRow("16 KiB") << 16 * 1024 << 200;
    QTest::newRow("one byte more") << 16 * 1024 + 1 << 431;
    QTest::newRow("10 MiB") << 10 * 1024 * 1024 << 431;
}

void TestHttpServer::headerLimit()
{
    QFETCH(int, size);
    QFETCH(int, status);
    ServerFixture server(&echo);
    HttpClient client(server.port());
    const QByteArray begin = "GET / HTTP/1.1\r\nHost: h\r\nX: ";
    QCOMPARE(statusOf(client.exchange(begin + QByteArray(size - begin.size() - 4, 'x') + "\r\n\r\n")),
             status);
}

void TestHttpServer::bodyLimit_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("status");
    QTest::newRow("1 MiB") << 1024 * 1024 << 200;
    QTest::newRow("one byte more") << 1024 * 1024 + 1 << 413;
    QTest::newRow("20 MiB") << 20 * 1024 * 1024 << 413;
}

void TestHttpServer::bodyLimit()
{
    QFETCH(int, size);
    QFETCH(int, status);
    ServerFixture server(&echo);
    HttpClient client(server.port());
    QCOMPARE(statusOf(client.exchange(post(QByteArray(size, 'x')))), status);
}

void TestHttpServer::endlessChunkedBodyIsCutOff()
{
    ServerFixture server(&echo);
    HttpClient client(server.port());
    client.send("POST / HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n");
    for (int i = 0; i < 17; ++i)
        client.send("10000\r\n" + QByteArray(0x10000, 'x') + "\r\n");
    QCOMPARE(statusOf(client.readReply()), 413);
}

void TestHttpServer::connectionIsKeptAndPipelined()
{
    ServerFixture server(&echo);
    HttpClient client(server.port());
    for (int i = 0; i < 3; ++i)
        QCOMPARE(statusOf(client.exchange(post("abc"))), 200);
    client.send(get + post("abc") + "GET /last HTTP/1.1\r\nHost: h\r\n\r\n");
    const QByteArray replies = client.readUntil("/last\"");
    QCOMPARE(replies.count("HTTP/1.1 200 OK"), 3);
    QCOMPARE(client.socket.state(), QAbstractSocket::ConnectedState);
}

void TestHttpServer::connectionIsClosedOnRequest_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("asked to") << QByteArray("GET / HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n");
    QTest::newRow("HTTP/1.0") << QByteArray("GET / HTTP/1.0\r\nHost: h\r\n\r\n");
}

void TestHttpServer::connectionIsClosedOnRequest()
{
    QFETCH(QByteArray, request);
    ServerFixture server(&echo);
    HttpClient client(server.port());
    client.send(request);
    QCOMPARE(statusOf(client.readAll()), 200);
}

void TestHttpServer::expectedBodyIsInvited()
{
    ServerFixture server(&echo);
    HttpClient client(server.port());
    client.send("POST / HTTP/1.1\r\nHost: h\r\nExpect: 100-Continue\r\nContent-Length: 3\r\n\r\n");
    QCOMPARE(client.readReply(), QByteArray("HTTP/1.1 100 Continue\r\n\r\n"));
    client.send("abc");
    QVERIFY(client.readReply().contains("\"size\":3"));
}

void TestHttpServer::tooLargeExpectedBodyIsNotInvited()
{
    ServerFixture server(&echo);
    HttpClient client(server.port());
    client.send("POST / HTTP/1.1\r\nHost: h\r\nExpect: 100-continue\r\nContent-Length: 1048577\r\n\r\n");
    QCOMPARE(statusOf(client.readReply()), 413);
}

void TestHttpServer::headHasNoBody()
{
    ServerFixture server(&echo);
    HttpClient client(server.port());
    client.send("HEAD / HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n");
    const QByteArray reply = client.readAll();
    QCOMPARE(statusOf(reply), 200);
    QVERIFY(reply.endsWith("\r\n\r\n"));
}

void TestHttpServer::halfHeaderIsDropped()
{
    ServerFixture server(&echo, impatient());
    HttpClient client(server.port());
    client.send("GET / HTTP/1.1\r\nHo");
    QCOMPARE(statusOf(client.readAll()), 408);
}

void TestHttpServer::halfBodyIsDropped()
{
    ServerFixture server(&echo, impatient());
    HttpClient client(server.port());
    client.send("POST / HTTP/1.1\r\nHost: h\r\nContent-Length: 10\r\n\r\nabc");
    QCOMPARE(statusOf(client.readAll()), 408);
}

void TestHttpServer::silentConnectionIsDropped()
{
    ServerFixture server(&echo, impatient());
    HttpClient client(server.port());
    QVERIFY(client.isConnected());
    QVERIFY(client.readAll() != "still open");
}

void TestHttpServer::idleConnectionIsDropped()
{
    ServerLimits limits = impatient();
    limits.headerTime = limits.bodyTime = std::chrono::minutes(1);
    ServerFixture server(&echo, limits);
    HttpClient client(server.port());
    QCOMPARE(statusOf(client.exchange(get)), 200);
    QCOMPARE(client.readAll(), QByteArray()); // nothing was asked, so nothing is said
}

void TestHttpServer::slowWorkDoesNotHoldOthersUp()
{
    QSemaphore begun;
    QSemaphore mayEnd;
    ServerFixture server([&](const Request &request) -> Reply {
        if (request.method == "GET")
            return echo(request);
        return Deferred{[&]() -> Continuation {
                            begun.release();
                            mayEnd.acquire();
                            return [] { return jsonResponse(QJsonObject{{u"late"_s, true}}); };
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

void TestHttpServer::tooMuchSlowWorkIsRefused()
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
                                return [] { return jsonResponse(QJsonObject()); };
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

void TestHttpServer::resetsDoNotHurt()
{
    QSemaphore mayEnd;
    ServerFixture server([&](const Request &request) -> Reply {
        if (request.method == "GET")
            return echo(request);
        return Deferred{[&]() -> Continuation {
                            mayEnd.acquire();
                            return [] { return jsonResponse(QJsonObject()); };
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

void TestHttpServer::manyConnections()
{
    ServerFixture server(&echo);
    std::vector<std::unique_ptr<HttpClient>> clients;
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

void TestHttpServer::connectionsAreLimited()
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

void TestHttpServer::replyUnderWayIsFinishedWhenStopping()
{
    QSemaphore begun;
    QSemaphore mayEnd;
    ServerFixture server([&](const Request &) -> Reply {
        return Deferred{[&]() -> Continuation {
                            begun.release();
                            mayEnd.acquire();
                            return [] { return jsonResponse(QJsonObject()); };
                        },
                        {}};
    });
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

void TestHttpServer::stoppingDoesNotWaitForEver()
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
                                    return [] { return jsonResponse(QJsonObject()); };
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

TIDELOFT_TEST_MAIN(TestHttpServer)
#include "tst_http_server.moc"
