// What reaches a handler and what does not: limits and malformed requests.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/http_client.h"
#include "tests/service/raw_requests.h"
#include "tests/service/server_fixture.h"
#include "tests/support/test_main.h"

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
    void uploadsAreAllowedByTheHeadAlone();
    void uploadLimitMayBeTheSmallerOne();
    void endlessChunkedBodyIsCutOff();
    void connectionIsKeptAndPipelined();
    void connectionIsClosedOnRequest_data();
    void connectionIsClosedOnRequest();
    void expectedBodyIsInvited();
    void tooLargeExpectedBodyIsNotInvited();
    void headHasNoBody();
    void whatHasNotChangedIsToldByTheTagAlone();
};

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

void TestHttpServer::uploadsAreAllowedByTheHeadAlone()
{
    ServerLimits limits;
    limits.bodyBytes = 10;
    limits.uploadBytes = 20;
    ServerFixture server(&echo, limits, [](const Request &head) {
        const bool upload =
            head.target == "/x" && head.method == "POST" && head.cookie == "a=1" && head.body.isEmpty();
        return Admission{upload ? BodySize::Upload : BodySize::Usual};
    });
    const auto status = [&server](qsizetype size, const QByteArray &cookie) {
        HttpClient client(server.port());
        const QByteArray header = "Host: h\r\nCookie: " + cookie + "\r\n";
        return statusOf(client.exchange(post(QByteArray(size, 'x')).replace("Host: h\r\n", header)));
    };
    QCOMPARE(status(20, "a=1"), 200);
    QCOMPARE(status(21, "a=1"), 413);
    QCOMPARE(status(10, "a=2"), 200);
    QCOMPARE(status(11, "a=2"), 413);
}

void TestHttpServer::uploadLimitMayBeTheSmallerOne()
{
    ServerLimits limits;
    limits.bodyBytes = 20;
    limits.uploadBytes = 10;
    ServerFixture server(&echo, limits, [](const Request &head) {
        return Admission{head.target == "/upload" ? BodySize::Upload : BodySize::Usual};
    });
    HttpClient client(server.port());
    QCOMPARE(statusOf(client.exchange(post(QByteArray(20, 'x')))), 200);
    QCOMPARE(statusOf(client.exchange(post(QByteArray(11, 'x')).replace("/x", "/upload"))), 413);
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

void TestHttpServer::whatHasNotChangedIsToldByTheTagAlone()
{
    ServerFixture server([](const Request &request) {
        Response response;
        response.status = 304;
        response.headers.emplaceBack("ETag", request.ifNoneMatch);
        return response;
    });
    HttpClient client(server.port());
    const QByteArray request = "GET / HTTP/1.1\r\nHost: h\r\nif-none-match: \"a\"\r\n\r\n";
    for (int time = 0; time < 2; ++time) { // the connection goes on
        client.send(request);
        const QByteArray reply = client.readUntil("\r\n\r\n");
        QCOMPARE(reply, QByteArray("HTTP/1.1 304 Not Modified\r\nETag: \"a\"\r\n\r\n"));
        client.readReply();
    }
}

TIDELOFT_TEST_MAIN(TestHttpServer)
#include "tst_server.moc"
