// Connections of proxies that say first for whom they come: who is counted, and what is refused.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/http_reply.h"
#include "tests/service/proxy_lines.h"
#include "tests/service/server_fixture.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

namespace
{

const QHostAddress stranger(u"127.0.0.2"_s);

Reply tellPeer(const Request &request)
{
    return replyWith({{u"peer"_s, QString::fromLatin1(request.peer)}});
}

// 127.0.0.1 is the proxy.
ServerSettings behindProxy(const ServerLimits &limits = {})
{
    ServerSettings settings;
    settings.trustedProxies = QStringList(u"127.0.0.1"_s);
    settings.proxyProtocol = true;
    settings.limits = limits;
    return settings;
}

QString peerIn(const QByteArray &reply)
{
    return parsedReply(reply).text(u"peer"_s);
}

} // namespace

class TestProxyGreetings : public QObject
{
    Q_OBJECT

private slots:
    void clientIsTheOneThatIsNamed_data();
    void clientIsTheOneThatIsNamed();
    void headerMayComeInPieces_data() { clientIsTheOneThatIsNamed_data(); }
    void headerMayComeInPieces();
    void headersOfRequestsAreNotBelieved();
    void noConnectionOfAProxyWithoutHeader_data();
    void noConnectionOfAProxyWithoutHeader();
    void endBeforeTheHeaderIsNoProblem();
    void strangersSayNothingFirst();
    void secondHeaderIsNone();
    void connectionsAreCountedForTheClient();
    void placesOfClientsComeBack();
    void connectionsThatSayNothingAreCounted();
    void halfHeaderIsDropped();
    void stoppingDoesNotWaitForAHeader();
};

void TestProxyGreetings::clientIsTheOneThatIsNamed_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QString>("peer");
    QTest::newRow("line") << proxyLine("192.0.2.7") << u"192.0.2.7"_s;
    QTest::newRow("line, IPv6") << QByteArray("PROXY TCP6 2001:db8:1:2::9 ::1 4000 443\r\n")
                                << u"2001:db8:1:2::/64"_s;
    QTest::newRow("line, IPv4 in IPv6")
        << QByteArray("PROXY TCP6 ::ffff:192.0.2.7 ::1 4000 443\r\n") << u"192.0.2.7"_s;
    QTest::newRow("line, unknown") << QByteArray("PROXY UNKNOWN\r\n") << u"127.0.0.1"_s;
    QTest::newRow("block") << proxyBlock(0x21, 0x11, proxiedIpv4) << u"192.0.2.7"_s;
    QTest::newRow("block with an entry")
        << proxyBlock(0x21, 0x11, proxiedIpv4 + QByteArray::fromHex("04000100")) << u"192.0.2.7"_s;
    QTest::newRow("block, the proxy itself") << proxyBlock(0x20, 0x00, {}) << u"127.0.0.1"_s;
}

void TestProxyGreetings::clientIsTheOneThatIsNamed()
{
    QFETCH(QByteArray, header);
    ServerFixture server(&tellPeer, behindProxy());
    HttpClient client(server.port());
    QTEST(peerIn(client.exchange(header + get)), "peer");
    QTEST(peerIn(client.exchange(get)), "peer"); // the header is for the whole connection
}

void TestProxyGreetings::headerMayComeInPieces()
{
    QFETCH(QByteArray, header);
    ServerFixture server(&tellPeer, behindProxy());
    HttpClient client(server.port());
    for (const char byte : header)
        client.send(QByteArray(1, byte));
    QTEST(peerIn(client.exchange(get)), "peer");
}

void TestProxyGreetings::headersOfRequestsAreNotBelieved()
{
    ServerFixture server(&tellPeer, behindProxy());
    HttpClient client(server.port());
    const QByteArray forged = QByteArray(get).replace("Host", "X-Forwarded-For: 192.0.2.99\r\nHost");
    QCOMPARE(peerIn(client.exchange(proxyLine("192.0.2.7") + forged)), u"192.0.2.7"_s);
    HttpClient checking(server.port());
    QCOMPARE(peerIn(checking.exchange(proxyBlock(0x20, 0, {}) + forged)), u"127.0.0.1"_s);
}

void TestProxyGreetings::noConnectionOfAProxyWithoutHeader_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("request") << get;
    QTest::newRow("TLS") << QByteArray::fromHex("1603010200010001fc0303") + QByteArray(64, 'x');
    QTest::newRow("damaged line") << proxyLine("192.0.2.256") + get;
    QTest::newRow("line without end") << "PROXY UNKNOWN " + QByteArray(100'000, 'x');
    QTest::newRow("damaged block") << proxyBlock(0x22, 0x11, proxiedIpv4) + get;
    QTest::newRow("endless block") << proxyBlock(0x21, 0x11, proxiedIpv4 + QByteArray(65'000, '\0')) + get;
}

void TestProxyGreetings::noConnectionOfAProxyWithoutHeader()
{
    QFETCH(QByteArray, bytes);
    ServerFixture server(&tellPeer, behindProxy());
    HttpClient client(server.port());
    client.send(bytes);
    QCOMPARE(client.readAll(), QByteArray());
    QCOMPARE(server.log(), QList<QByteArray>{"a connection of a trusted proxy begins without its header"});
    HttpClient next(server.port());
    QCOMPARE(peerIn(next.exchange(proxyLine("192.0.2.7") + get)), u"192.0.2.7"_s);
}

// Some proxies look only whether the port is open.
void TestProxyGreetings::endBeforeTheHeaderIsNoProblem()
{
    ServerFixture server(&tellPeer, behindProxy());
    HttpClient looking(server.port());
    QVERIFY(looking.isConnected());
    looking.socket.disconnectFromHost();
    HttpClient next(server.port());
    QCOMPARE(peerIn(next.exchange(proxyLine("192.0.2.7") + get)), u"192.0.2.7"_s);
    server.stop();
    QCOMPARE(server.log(), QList<QByteArray>{"GET - 200"});
}

void TestProxyGreetings::strangersSayNothingFirst()
{
    ServerFixture server(&tellPeer, behindProxy());
    for (const QByteArray &header : {proxyLine("192.0.2.7"), proxyBlock(0x21, 0x11, proxiedIpv4)}) {
        HttpClient client(server.port(), stranger);
        client.send(header + get);
        QCOMPARE(statusOf(client.readAll()), 400);
    }
    HttpClient client(server.port(), stranger);
    QCOMPARE(peerIn(client.exchange(get)), u"127.0.0.2"_s);
}

// What a client sends comes behind the header of the proxy.
void TestProxyGreetings::secondHeaderIsNone()
{
    ServerFixture server(&tellPeer, behindProxy());
    HttpClient client(server.port());
    client.send(proxyLine("192.0.2.7") + proxyLine("192.0.2.99") + get);
    QCOMPARE(statusOf(client.readAll()), 400);
}

void TestProxyGreetings::connectionsAreCountedForTheClient()
{
    ServerLimits limits;
    limits.connectionsOfOnePeer = 2;
    ServerFixture server(&tellPeer, behindProxy(limits));
    HttpClient first(server.port());
    HttpClient second(server.port());
    QCOMPARE(statusOf(first.exchange(proxyLine("192.0.2.7") + get)), 200);
    QCOMPARE(statusOf(second.exchange(proxyLine("192.0.2.7") + get)), 200);
    HttpClient other(server.port());
    QCOMPARE(statusOf(other.exchange(proxyLine("192.0.2.8") + get)), 200);
    HttpClient third(server.port());
    QCOMPARE(statusOf(third.exchange(proxyLine("192.0.2.7") + get)), 200);
    QCOMPARE(first.readAll(), QByteArray()); // of that client's it has been idle for longest
    QCOMPARE(statusOf(second.exchange(get)), 200);
    QCOMPARE(statusOf(other.exchange(get)), 200);
}

void TestProxyGreetings::placesOfClientsComeBack()
{
    ServerLimits limits;
    limits.connectionsOfOnePeer = 1;
    ServerFixture server(&tellPeer, behindProxy(limits));
    for (int i = 0; i < 3; ++i) {
        QVERIFY(QTest::qWaitFor([&] {
            HttpClient client(server.port());
            client.send(proxyLine("192.0.2.7") + get);
            return statusOf(client.readReply()) == 200;
        }));
    }
}

void TestProxyGreetings::connectionsThatSayNothingAreCounted()
{
    ServerLimits limits;
    limits.connections = 1;
    ServerFixture server(&tellPeer, behindProxy(limits));
    HttpClient silent(server.port());
    QVERIFY(silent.isConnected());
    HttpClient second(server.port());
    QCOMPARE(second.readAll(), QByteArray());
    QCOMPARE(statusOf(silent.exchange(proxyLine("192.0.2.7") + get)), 200);
}

void TestProxyGreetings::halfHeaderIsDropped()
{
    ServerLimits limits;
    limits.headerTime = std::chrono::milliseconds(100);
    ServerFixture server(&tellPeer, behindProxy(limits));
    for (const QByteArray &begin :
         {QByteArray(), QByteArray("PROXY TC"), proxyBlock(0x21, 0x11, proxiedIpv4).left(20)}) {
        HttpClient client(server.port());
        client.send(begin);
        QCOMPARE(client.readAll(), QByteArray());
    }
}

void TestProxyGreetings::stoppingDoesNotWaitForAHeader()
{
    ServerLimits limits;
    limits.headerTime = limits.stopTime = std::chrono::hours(1);
    ServerFixture server(&tellPeer, behindProxy(limits));
    HttpClient client(server.port());
    client.send("PROXY TC");
    HttpClient other(server.port()); // is served after the first was accepted
    QCOMPARE(statusOf(other.exchange(proxyLine("192.0.2.7") + get)), 200);
    other.socket.abort();
    server.stop();
    QCOMPARE(client.readAll(), QByteArray());
}

TIDELOFT_TEST_MAIN(TestProxyGreetings)
#include "tst_proxy_greetings.moc"
