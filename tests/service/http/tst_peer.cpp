// Who counts as one client: addresses, networks, and what a proxy says.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/peer.h"
#include "tests/service/http_reply.h"
#include "tests/service/late_replies.h"
#include "tests/service/server_fixture.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestPeer : public QObject
{
    Q_OBJECT

private slots:
    void addresses_data();
    void addresses();
    void proxies_data();
    void proxies();
    void connectionsOfOnePeerAreLimited();
    void requestsOfOneForwardedPeerAreLimited();
    void placesComeBack();
    void trustedProxies_data();
    void trustedProxies();
    void proxyIsBelievedWhereItIsTrusted_data();
    void proxyIsBelievedWhereItIsTrusted();

private:
    static Reply tellPeer(const Request &request)
    {
        return replyWith({{u"peer"_s, QString::fromLatin1(request.peer)}});
    }
};

void TestPeer::addresses_data()
{
    QTest::addColumn<QByteArray>("address");
    QTest::addColumn<QByteArray>("peer");
    QTest::newRow("IPv4") << QByteArray("192.0.2.7") << QByteArray("192.0.2.7");
    QTest::newRow("IPv4 in IPv6") << QByteArray("::ffff:192.0.2.7") << QByteArray("192.0.2.7");
    QTest::newRow("IPv6") << QByteArray("2001:db8:1:2:3:4:5:6") << QByteArray("2001:db8:1:2::/64");
    QTest::newRow("the same network")
        << QByteArray("2001:db8:1:2:f:f:f:f") << QByteArray("2001:db8:1:2::/64");
    QTest::newRow("another network") << QByteArray("2001:db8:1:3::1") << QByteArray("2001:db8:1:3::/64");
}

void TestPeer::addresses()
{
    QFETCH(QByteArray, address);
    QTEST(peerOf(boost::asio::ip::make_address(address.toStdString())), "peer");
}

void TestPeer::proxies_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QByteArray>("peer");
    QTest::newRow("none") << QByteArray() << QByteArray("proxy");
    QTest::newRow("one") << QByteArray("192.0.2.7") << QByteArray("192.0.2.7");
    QTest::newRow("what the client made up stands before")
        << QByteArray("1.1.1.1, 192.0.2.7") << QByteArray("192.0.2.7");
    QTest::newRow("IPv6") << QByteArray("x,2001:db8:1:2::9") << QByteArray("2001:db8:1:2::/64");
    QTest::newRow("no address") << QByteArray("192.0.2.7, unknown") << QByteArray("proxy");
}

void TestPeer::proxies()
{
    QFETCH(QByteArray, header);
    QTEST(forwardedPeer(header, "proxy"), "peer");
}

// What only waits makes room; what is busy does not.
void TestPeer::connectionsOfOnePeerAreLimited()
{
    LateReplies late;
    ServerLimits limits;
    limits.connectionsOfOnePeer = 2;
    ServerFixture server(
        [&](const Request &request) -> Reply {
            return request.method == "POST" ? late.next() : tellPeer(request);
        },
        limits);
    HttpClient busy(server.port());
    busy.send(post("x"));
    late.await();
    HttpClient idle(server.port());
    QCOMPARE(statusOf(idle.exchange(get)), 200);
    HttpClient third(server.port());
    QCOMPARE(statusOf(third.exchange(get)), 200);
    QCOMPARE(idle.readAll(), QByteArray());
    third.send(post("x"));
    late.await();
    HttpClient fourth(server.port());
    const HttpReply refused = parsedReply(fourth.readAll());
    QCOMPARE(refused.status, 503);
    QCOMPARE(refused.headers.value("retry-after"), QByteArray("1"));
    QVERIFY(!refused.message().isEmpty());
    HttpClient other(server.port(), QHostAddress(u"127.0.0.2"_s));
    QCOMPARE(parsedReply(other.exchange(get)).text(u"peer"_s), u"127.0.0.2"_s);
    late.finish();
    QCOMPARE(statusOf(busy.readReply()), 200);
    QCOMPARE(statusOf(third.readReply()), 200);
}

// A proxy brings all of an address over connections of its own.
void TestPeer::requestsOfOneForwardedPeerAreLimited()
{
    LateReplies late;
    ServerSettings settings;
    settings.port = 0;
    settings.trustedProxies = {u"127.0.0.1"_s};
    settings.limits.connectionsOfOnePeer = 2;
    HttpServer server(settings, [&](const Request &) { return late.next(); });
    std::thread thread([&] { server.run(); });
    const auto requestOf = [](const QByteArray &peer) {
        return "GET / HTTP/1.1\r\nHost: h\r\nX-Forwarded-For: " + peer + "\r\n\r\n";
    };
    HttpClient clients[]{HttpClient(server.port()), HttpClient(server.port()), HttpClient(server.port()),
                         HttpClient(server.port())};
    clients[0].send(requestOf("192.0.2.7"));
    clients[1].send(requestOf("192.0.2.7"));
    late.await(2);
    const int refused = statusOf(clients[2].exchange(requestOf("192.0.2.7")));
    clients[3].send(requestOf("192.0.2.8"));
    late.await();
    late.finish();
    const QList<int> statuses{statusOf(clients[0].readReply()), statusOf(clients[1].readReply()),
                              statusOf(clients[3].readReply())};
    clients[2].send(requestOf("192.0.2.7"));
    late.await();
    late.finish();
    const int afterwards = statusOf(clients[2].readReply());
    for (HttpClient &client : clients)
        client.socket.abort();
    server.stop();
    thread.join();
    QCOMPARE(refused, 503);
    QCOMPARE(statuses, (QList<int>{200, 200, 200}));
    QCOMPARE(afterwards, 200);
}

void TestPeer::placesComeBack()
{
    ServerLimits limits;
    limits.connectionsOfOnePeer = 1;
    ServerFixture server(&tellPeer, limits);
    for (int i = 0; i < 3; ++i) {
        QVERIFY(QTest::qWaitFor([&] {
            HttpClient client(server.port());
            return statusOf(client.exchange(get)) == 200;
        }));
    }
}

void TestPeer::trustedProxies_data()
{
    QTest::addColumn<QStringList>("trusted");
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("isAmong");
    const QStringList both{u"192.0.2.7"_s, u"2001:db8::7"_s};
    QTest::newRow("nobody") << QStringList() << u"192.0.2.7"_s << false;
    QTest::newRow("first") << both << u"192.0.2.7"_s << true;
    QTest::newRow("second") << both << u"2001:db8:0:0::7"_s << true;
    QTest::newRow("neighbour") << both << u"192.0.2.8"_s << false;
    QTest::newRow("neighbour in the network") << both << u"2001:db8::8"_s << false;
    QTest::newRow("as seen by a socket for both families") << both << u"::ffff:192.0.2.7"_s << true;
    QTest::newRow("written like that") << QStringList(u"::ffff:192.0.2.7"_s) << u"192.0.2.7"_s << true;
}

void TestPeer::trustedProxies()
{
    QFETCH(QStringList, trusted);
    QFETCH(QString, address);
    QTEST(TrustedProxies(trusted).contains(boost::asio::ip::make_address(address.toStdString())), "isAmong");
}

void TestPeer::proxyIsBelievedWhereItIsTrusted_data()
{
    QTest::addColumn<QString>("trusted");
    QTest::addColumn<QString>("peer");
    QTest::newRow("nobody") << QString() << u"127.0.0.1"_s;
    QTest::newRow("another") << u"127.0.0.9"_s << u"127.0.0.1"_s;
    QTest::newRow("this one") << u"127.0.0.1"_s << u"192.0.2.7"_s;
    QTest::newRow("one of two") << u"127.0.0.9,127.0.0.1"_s << u"192.0.2.7"_s;
}

void TestPeer::proxyIsBelievedWhereItIsTrusted()
{
    QFETCH(QString, trusted);
    ServerSettings settings;
    settings.port = 0;
    settings.trustedProxies = trusted.split(u',', Qt::SkipEmptyParts);
    settings.limits.connectionsOfOnePeer = 1;
    HttpServer server(settings, &tellPeer);
    std::thread thread([&] { server.run(); });
    HttpClient client(server.port());
    const HttpReply reply =
        parsedReply(client.exchange("GET / HTTP/1.1\r\nHost: h\r\nX-Forwarded-For: 1.1.1.1\r\n"
                                    "X-Forwarded-For: 1.1.1.2, 192.0.2.7\r\n\r\n"));
    HttpClient second(server.port()); // a proxy brings many, and needs a connection for each
    second.exchange(get);
    const bool bothStay = statusOf(client.exchange(get)) == 200;
    client.socket.abort();
    second.socket.abort();
    server.stop();
    thread.join();
    QTEST(reply.text(u"peer"_s), "peer");
    QCOMPARE(bothStay, trusted.endsWith(u"127.0.0.1"_s));
}

TIDELOFT_TEST_MAIN(TestPeer)
#include "tst_peer.moc"
