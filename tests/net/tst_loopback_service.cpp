// The loopback service itself: every other net and window test believes what it reports.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/loopback_service.h"
#include "tests/support/test_main.h"

#include <QTcpSocket>

using tideloft::tests::LoopbackService;

namespace
{

// Sends BYTES and returns what has come back once it ends with END.
QByteArray talk(const LoopbackService &service, const QByteArray &bytes, const QByteArray &end)
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, service.serverPort());
    socket.write(bytes);
    QByteArray received;
    [[maybe_unused]] const bool complete = tideloft::tests::waitFor([&] {
        received += socket.readAll();
        return received.endsWith(end);
    });
    return received;
}

} // namespace

class TestLoopbackService : public QObject
{
    Q_OBJECT

private slots:
    void recordsARequestAsItCame();
    void answersWhatIsPrepared();
    void unknownPathsGetAMessage();
    void oneTimeAnswersComeFirst();
    void anExactQueryComesBeforeItsPath();
    void keepsAConnectionsOrder();
    void waitsForASplitBody();
    void heldRequestsLeaveInAnyOrder();
    void dropClosesWithoutAnAnswer();
};

void TestLoopbackService::recordsARequestAsItCame()
{
    LoopbackService service;
    service.answer("POST /a", 200, "{}");
    const QByteArray head =
        "POST /a?b=%41 HTTP/1.1\r\nHost: x\r\nx-Token:  one \r\nContent-Length: 3\r\n\r\n";
    talk(service, head + "b\r\n", "{}");
    QCOMPARE(service.requests().size(), 1);
    const auto request = service.lastRequest("POST /a");
    QCOMPARE(request.head, head);
    QCOMPARE(request.method, QByteArray("POST"));
    QCOMPARE(request.target, QByteArray("/a?b=%41"));
    QCOMPARE(request.headers.value(1).first, QByteArray("x-Token"));
    QCOMPARE(request.header("X-TOKEN"), QByteArray("one"));
    QVERIFY(!request.hasHeader("X-Other"));
    QCOMPARE(request.body, QByteArray("b\r\n"));
}

void TestLoopbackService::answersWhatIsPrepared()
{
    LoopbackService service;
    service.answer("GET /a", 500, "old");
    service.answer("GET /a", 401, R"({"message":"No"})", {{"Set-Cookie", "s=1"}});
    const QByteArray expected = "HTTP/1.1 401 Unauthorized\r\nContent-Type: application/json\r\n"
                                "Set-Cookie: s=1\r\nContent-Length: 16\r\n\r\n{\"message\":\"No\"}";
    QCOMPARE(talk(service, "GET /a HTTP/1.1\r\n\r\n", "}"), expected);
}

void TestLoopbackService::unknownPathsGetAMessage()
{
    LoopbackService service;
    const QByteArray received = talk(service, "GET /b?c HTTP/1.1\r\n\r\n", "}");
    QVERIFY(received.startsWith("HTTP/1.1 404 Not Found\r\n"));
    QVERIFY(received.endsWith(R"({"message":"No answer was prepared for GET /b"})"));
}

void TestLoopbackService::oneTimeAnswersComeFirst()
{
    LoopbackService service;
    service.answer("GET /a", 200, "always");
    service.answerOnce("GET /a", 200, "first");
    service.answerOnce("GET /a", 200, "second");
    const QByteArray get = "GET /a HTTP/1.1\r\n\r\n";
    QVERIFY(talk(service, get, "first").endsWith("\r\n\r\nfirst"));
    QVERIFY(talk(service, get, "second").endsWith("\r\n\r\nsecond"));
    QVERIFY(talk(service, get, "always").endsWith("\r\n\r\nalways"));
}

void TestLoopbackService::anExactQueryComesBeforeItsPath()
{
    LoopbackService service;
    service.answer("GET /a", 200, "any");
    service.answer("GET /a?q=1", 200, "one");
    QVERIFY(talk(service, "GET /a?q=1 HTTP/1.1\r\n\r\n", "one").endsWith("\r\n\r\none"));
    QVERIFY(talk(service, "GET /a?q=2 HTTP/1.1\r\n\r\n", "any").endsWith("\r\n\r\nany"));
    QCOMPARE(service.count("GET /a"), 2);
    QCOMPARE(service.count("GET /a?q=1"), 1);
}

void TestLoopbackService::keepsAConnectionsOrder()
{
    LoopbackService service;
    service.answer("GET /a", 200, "slow");
    service.answer("GET /b", 200, "quick");
    service.hold("GET /a");
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, service.serverPort());
    socket.write("GET /a HTTP/1.1\r\n\r\nGET /b HTTP/1.1\r\n\r\n");
    QVERIFY(service.waitForRequests("GET /b", 1));
    service.release("GET /a");
    QByteArray received;
    QTRY_VERIFY((received += socket.readAll()).endsWith("quick"));
    QVERIFY(received.indexOf("slow") < received.indexOf("quick"));
    QVERIFY(received.contains("slow"));
}

void TestLoopbackService::waitsForASplitBody()
{
    LoopbackService service;
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, service.serverPort());
    socket.write("GET /first HTTP/1.1\r\n\r\nPOST /a HTTP/1.1\r\nContent-Length: 6\r\n\r\nabc");
    QVERIFY(service.waitForRequests("GET /first", 1));
    QCOMPARE(service.count("POST /a"), 0);
    socket.write("def");
    QVERIFY(service.waitForRequests("POST /a", 1));
    QCOMPARE(service.lastRequest().body, QByteArray("abcdef"));
}

void TestLoopbackService::heldRequestsLeaveInAnyOrder()
{
    LoopbackService service;
    service.hold("GET /a");
    QTcpSocket first;
    first.connectToHost(QHostAddress::LocalHost, service.serverPort());
    first.write("GET /a HTTP/1.1\r\n\r\n");
    QVERIFY(service.waitForRequests("GET /a", 1));
    QTcpSocket second;
    second.connectToHost(QHostAddress::LocalHost, service.serverPort());
    second.write("GET /a HTTP/1.1\r\n\r\n");
    QVERIFY(service.waitForRequests("GET /a", 2));
    QCOMPARE(service.heldCount("GET /a"), 2);
    service.answerOnce("GET /a", 200, "newest");
    service.releaseAt("GET /a", 1);
    QTRY_VERIFY(second.peek(1000).endsWith("newest"));
    QCOMPARE(first.bytesAvailable(), 0);
    service.answerOnce("GET /a", 200, "oldest");
    service.release("GET /a");
    QTRY_VERIFY(first.peek(1000).endsWith("oldest"));
}

void TestLoopbackService::dropClosesWithoutAnAnswer()
{
    LoopbackService service;
    service.drop("GET /a");
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, service.serverPort());
    socket.write("GET /a HTTP/1.1\r\n\r\n");
    QVERIFY(service.waitForRequests("GET /a", 1));
    QTRY_COMPARE(socket.state(), QAbstractSocket::UnconnectedState);
    QCOMPARE(socket.readAll(), QByteArray());
}

TIDELOFT_TEST_MAIN(TestLoopbackService)
#include "tst_loopback_service.moc"
