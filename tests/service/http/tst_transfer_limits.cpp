// What large bodies and replies may hold in memory together, and that every end of one gives it back.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/http_reply.h"
#include "tests/service/server_fixture.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestTransferLimits : public QObject
{
    Q_OBJECT

private slots:
    void unfinishedBodiesShareTheBudget();
    void everyEndOfABodyGivesItBack_data();
    void everyEndOfABodyGivesItBack();
    void unreadRepliesShareTheBudget();
    void unreadReplyStaysWithTheService();
    void readerWhoGoesGivesItBack();
    void largestReplyGoesAlone();
    void littleIsCountedByAddress();
    void slowBodyRunsOutOfTime();
    void slowReaderRunsOutOfTime();

private:
    static constexpr int large = 32 * 1024 * 1024; // more than the system buffers for a connection
    static constexpr int medium = 1024 * 1024;     // which it would take at once

    static ServerLimits limits(std::uint64_t all, std::uint64_t ofOneAccount)
    {
        ServerLimits wanted;
        wanted.uncountedBytes = wanted.countedByAddress = 100;
        wanted.transferBytes = all;
        wanted.accountTransferBytes = ofOneAccount;
        wanted.bodyBytes = 1000;
        return wanted;
    }

    static Admission admit(const Request &head) { return {BodySize::Usual, head.cookie.toLongLong(), {}}; }

    static Reply handle(const Request &request)
    {
        if (request.method == "PUT")
            throw std::runtime_error("broken");
        Response response;
        response.body = QByteArray(request.target == "/large"    ? large
                                   : request.target == "/medium" ? medium
                                                                 : 3,
                                   'r');
        return response;
    }

    // The service answers this once it waits for the body.
    static QByteArray beginning(int account, const QByteArray &length, const QByteArray &method = "POST")
    {
        return method + " / HTTP/1.1\r\nHost: h\r\nCookie: " + QByteArray::number(account)
               + "\r\nExpect: 100-continue\r\n" + length + "\r\n\r\n";
    }

    static int announce(HttpClient &client, int account, int size)
    {
        return statusOf(client.exchange(beginning(account, "Content-Length: " + QByteArray::number(size))));
    }

    static HttpReply offer(const ServerFixture &server, int account, int size)
    {
        HttpClient client(server.port());
        announce(client, account, size);
        return parsedReply(client.exchange(QByteArray(size, 'x')));
    }

    static QByteArray get(const QByteArray &target, int account = 1)
    {
        return "GET " + target + " HTTP/1.1\r\nHost: h\r\nCookie: " + QByteArray::number(account)
               + "\r\n\r\n";
    }

    static void readNoFurtherThanTheHead(HttpClient &client)
    {
        client.socket.setReadBufferSize(1000);
        client.readUntil("\r\n\r\n");
    }
};

// What is declared takes nothing; what has come does.
void TestTransferLimits::unfinishedBodiesShareTheBudget()
{
    ServerFixture server(&handle, limits(2400, 600), &admit);
    HttpClient idle(server.port());
    QCOMPARE(announce(idle, 1, 1000), 100);
    HttpClient first(server.port());
    QCOMPARE(announce(first, 1, 501), 100);
    QCOMPARE(offer(server, 1, 600).status, 200);
    first.send(QByteArray(500, 'x'));
    QVERIFY(QTest::qWaitFor([&] { return offer(server, 1, 101).status == 503; }));
    const HttpReply refused = offer(server, 1, 101);
    QCOMPARE(refused.headers.value("retry-after"), QByteArray("1"));
    QVERIFY(!refused.message().isEmpty());
    HttpClient second(server.port());
    QCOMPARE(announce(second, 2, 501), 100);
    second.send(QByteArray(400, 'x'));
    QVERIFY(QTest::qWaitFor([&] { return offer(server, 3, 501).status == 503; })); // 1500 are left
    QCOMPARE(offer(server, 3, 500).status, 200);
    HttpClient small(server.port());
    QCOMPARE(announce(small, 1, 100), 100);
    QCOMPARE(statusOf(small.exchange(QByteArray(100, 'x'))), 200);
    QCOMPARE(statusOf(small.exchange(get("/"))), 200);
    QCOMPARE(statusOf(first.exchange("x")), 200);
    QCOMPARE(offer(server, 3, 600).status, 200);
}

void TestTransferLimits::everyEndOfABodyGivesItBack_data()
{
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("status");
    const QByteArray length = "Content-Length: 1000";
    const QByteArray chunked = "Transfer-Encoding: chunked";
    const QByteArray whole(1000, 'x');
    QTest::newRow("whole") << beginning(1, length) << whole << 200;
    QTest::newRow("whole, length not announced")
        << beginning(1, chunked) << "3e8\r\n" + whole + "\r\n0\r\n\r\n"
        << 200;
    QTest::newRow("too long") << beginning(1, chunked) << "3e9\r\n" + whole + "x\r\n0\r\n\r\n" << 413;
    QTest::newRow("broken") << beginning(1, chunked) << QByteArray("zz\r\n") << 400;
    QTest::newRow("too slow") << beginning(1, length) << whole.chopped(1) << 408;
    QTest::newRow("handler fails") << beginning(1, length, "PUT") << whole << 0;
    QTest::newRow("client goes") << beginning(1, length) << QByteArray() << 0;
    QTest::newRow("client goes on its way") << beginning(1, length) << whole.chopped(1) << -1;
}

void TestTransferLimits::everyEndOfABodyGivesItBack()
{
    QFETCH(QByteArray, head);
    QFETCH(QByteArray, body);
    QFETCH(int, status);
    ServerLimits wanted = limits(1000, 1000);
    if (status == 408)
        wanted.bodyTime = std::chrono::milliseconds(100);
    ServerFixture server(&handle, wanted, &admit);
    HttpClient client(server.port());
    QCOMPARE(statusOf(client.exchange(head)), 100);
    if (status < 0) {
        client.send(body);
        QVERIFY(QTest::qWaitFor([&] { return offer(server, 2, 1000).status == 503; }));
    }
    if (status < 0 || body.isEmpty())
        client.socket.abort();
    else
        QCOMPARE(statusOf(client.exchange(body)), status);
    const auto next = [&server] { return offer(server, 2, 1000).status; };
    if (status > 0)
        QCOMPARE(next(), 200);
    else // the service notices that the connection has ended, but tells nobody
        QVERIFY(waitFor([&] { return next() == 200; }));
}

void TestTransferLimits::unreadRepliesShareTheBudget()
{
    ServerFixture server(&handle, limits(large, large), &admit);
    HttpClient slow(server.port());
    slow.send(get("/large"));
    readNoFurtherThanTheHead(slow);
    HttpClient other(server.port());
    const HttpReply refused = parsedReply(other.exchange(get("/large", 2)));
    QCOMPARE(refused.status, 503);
    QCOMPARE(refused.headers.value("retry-after"), QByteArray("1"));
    QCOMPARE(statusOf(other.exchange(get("/", 2))), 200); // on the same connection
    QCOMPARE(server.log(), (QList<QByteArray>{"GET - 200", "GET - 503", "GET - 200"}));
    slow.socket.setReadBufferSize(0);
    QCOMPARE(parsedReply(slow.readReply()).body.size(), large);
    QCOMPARE(statusOf(slow.exchange(get("/large"))), 200);
}

void TestTransferLimits::unreadReplyStaysWithTheService()
{
    ServerFixture server(&handle, limits(medium, medium), &admit);
    HttpClient slow(server.port());
    slow.send(get("/medium"));
    readNoFurtherThanTheHead(slow);
    HttpClient other(server.port());
    QCOMPARE(statusOf(other.exchange(get("/medium", 2))), 503);
}

void TestTransferLimits::readerWhoGoesGivesItBack()
{
    ServerFixture server(&handle, limits(large, large), &admit);
    {
        HttpClient slow(server.port());
        slow.send(get("/large"));
        readNoFurtherThanTheHead(slow);
    }
    const auto next = [&server] {
        HttpClient other(server.port());
        return statusOf(other.exchange(get("/large", 2)));
    };
    QVERIFY(waitFor([&] { return next() == 200; }));
}

// A long conversation must not become unreadable because of its length.
void TestTransferLimits::largestReplyGoesAlone()
{
    ServerFixture server(&handle, limits(1000, 500), &admit);
    HttpClient client(server.port());
    QCOMPARE(parsedReply(client.exchange(get("/large"))).body.size(), large);
}

// Many connections of one address, each with little: another address has its part all the same.
void TestTransferLimits::littleIsCountedByAddress()
{
    ServerLimits wanted = limits(1000, 1000);
    wanted.countedByAddress = 1000;
    wanted.smallTransferBytes = 900;
    ServerFixture server(&handle, wanted, &admit);
    HttpClient slow(server.port());
    QCOMPARE(announce(slow, 1, 251), 100);
    slow.send(QByteArray(250, 'x'));
    QVERIFY(QTest::qWaitFor([&] { return offer(server, 2, 101).status == 503; }));
    HttpClient elsewhere(server.port(), QHostAddress(u"127.0.0.2"_s));
    QCOMPARE(announce(elsewhere, 1, 200), 100);
    QCOMPARE(statusOf(elsewhere.exchange(QByteArray(200, 'x'))), 200);
    QCOMPARE(statusOf(slow.exchange("x")), 200);
    QCOMPARE(offer(server, 2, 300).status, 200);
}

// Each byte comes long before the time of a silent body is over.
void TestTransferLimits::slowBodyRunsOutOfTime()
{
    ServerLimits wanted;
    wanted.bodyTime = std::chrono::milliseconds(300);
    ServerFixture server(&handle, wanted, &admit);
    HttpClient client(server.port());
    QCOMPARE(announce(client, 1, 16'000), 100);
    for (int i = 0; i < 1000 && client.socket.bytesAvailable() == 0; ++i) {
        client.send("x");
        client.socket.waitForReadyRead(5);
    }
    QCOMPARE(statusOf(client.socket.readAll()), 408);
}

// The bytes that are read are fewer in a second than the rate demands.
void TestTransferLimits::slowReaderRunsOutOfTime()
{
    ServerLimits wanted;
    wanted.bodyTime = std::chrono::milliseconds(300);
    wanted.leastBytesPerSecond = 4ULL * large;
    ServerFixture server(&handle, wanted, &admit);
    HttpClient slow(server.port());
    slow.send(get("/large"));
    slow.socket.setReadBufferSize(64 * 1024);
    qint64 size = 0;
    QVERIFY(QTest::qWaitFor(
        [&] {
            size += slow.socket.readAll().size();
            return slow.socket.state() == QAbstractSocket::UnconnectedState;
        },
        60'000));
    QVERIFY2(size < large, qPrintable(QString::number(size)));
}

TIDELOFT_TEST_MAIN(TestTransferLimits)
#include "tst_transfer_limits.moc"
