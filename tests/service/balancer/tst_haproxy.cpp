// HAProxy as the package configures it: it asks for the health of the services, and passes TLS through
// unread.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/schema.h"
#include "tests/service/balancer/balancer.h"
#include "tests/service/balancer/front_client.h"
#include "tests/service/daemon.h"
#include "tests/service/proxy_lines.h"
#include "tests/support/test_main.h"

#include <QSslCertificate>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestHaproxy : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void goesWithDebiansConfiguration();
    void deadServiceIsTakenOutAndComesBack();
    void illServiceIsTakenOut();
    void connectionOfAClientKeepsOneToOneService();
    void connectionOfAClientOutlivesTheService();
    void certificateIsOfWhoEndsTls();
    void otherNamesAreNotPassedOn();
    void headersOfClientsAreNotTakenForHaproxys_data();
    void headersOfClientsAreNotTakenForHaproxys();
    void servicesTakeNoHeaderFromOthers();

private:
    static constexpr int patience = 20'000; // several looks at two seconds each
    static inline const QList<QByteArray> backends{"tideloft-ended", "tideloft-passed"};

    QStringList options() const { return haproxy->serviceOptions() << u"--proxy-protocol"_s; }
    bool allTellOf(const QByteArray &server, const QByteArray &state) const
    {
        return std::all_of(backends.begin(), backends.end(), [&](const QByteArray &backend) {
            return haproxy->stateOf(backend, server) == state;
        });
    }
    TlsPeer front() const { return {u"localhost"_s, haproxy->path(u"front.pem"_s)}; }
    TlsPeer service() const { return {u"localhost"_s, haproxy->path(u"service.pem"_s)}; }
    QSslCertificate certificate(const QString &name) const
    {
        return QSslCertificate::fromPath(haproxy->path(name)).value(0);
    }
    int healthAt(quint16 port, const TlsPeer &peer) const
    {
        return FrontClient(port, peer).get("/healthz").status;
    }
    static int healthOver(TlsClient &client)
    {
        return parsedReply(client.exchange("GET /healthz HTTP/1.1\r\nHost: localhost\r\n\r\n")).status;
    }

    std::unique_ptr<Haproxy> haproxy;
    std::unique_ptr<Daemon> one;
    std::unique_ptr<Daemon> two;
};

void TestHaproxy::init()
{
    haproxy = std::make_unique<Haproxy>();
    one = std::make_unique<Daemon>();
    two = std::make_unique<Daemon>();
    QVERIFY(one->startPlain(options()));
    QVERIFY(two->startPlain(options()));
    QVERIFY(haproxy->start({one->port(), two->port()}));
}

void TestHaproxy::cleanup()
{
    haproxy.reset();
    one.reset();
    two.reset();
}

void TestHaproxy::goesWithDebiansConfiguration()
{
    QCOMPARE(haproxy->problemsBehind(u"/etc/haproxy/haproxy.cfg"_s), QByteArray());
}

void TestHaproxy::deadServiceIsTakenOutAndComesBack()
{
    const quint16 port = one->port();
    QTRY_VERIFY_WITH_TIMEOUT(allTellOf("one", "UP"), patience);
    QCOMPARE(one->stop(SIGKILL), -1);
    QTRY_VERIFY_WITH_TIMEOUT(allTellOf("one", "DOWN"), patience);
    QVERIFY(allTellOf("two", "UP"));
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(healthAt(haproxy->endedPort, front()), 200);
        QCOMPARE(healthAt(haproxy->passedPort, service()), 200);
    }
    QVERIFY(one->startPlain(options() << u"--port"_s << QString::number(port)));
    QTRY_VERIFY_WITH_TIMEOUT(allTellOf("one", "UP"), patience);
    QCOMPARE(two->stop(SIGTERM), 0);
    QCOMPARE(healthAt(haproxy->endedPort, front()), 200);
    QCOMPARE(healthAt(haproxy->passedPort, service()), 200);
}

// The port of this one is open all the time.
void TestHaproxy::illServiceIsTakenOut()
{
    Store other(one->databaseFile());
    {
        const Transaction held(other);
        QTRY_VERIFY_WITH_TIMEOUT(allTellOf("one", "DOWN"), patience);
        const TlsPeer past{u"localhost"_s, service().authorityFile, QHostAddress(u"127.0.0.2"_s)};
        QCOMPARE(healthAt(one->port(), past), 503);
        for (int i = 0; i < 4; ++i)
            QCOMPARE(healthAt(haproxy->endedPort, front()), 200);
    }
    QTRY_VERIFY_WITH_TIMEOUT(allTellOf("one", "UP"), patience);
}

// Each connection to a service costs a handshake.
void TestHaproxy::connectionOfAClientKeepsOneToOneService()
{
    TlsClient client(haproxy->endedPort, front());
    for (int i = 0; i < 6; ++i)
        QCOMPARE(healthOver(client), 200);
    QCOMPARE(haproxy->statistic("connect", "tideloft-ended", "BACKEND"), "1");
}

void TestHaproxy::connectionOfAClientOutlivesTheService()
{
    TlsClient client(haproxy->endedPort, front());
    QCOMPARE(healthOver(client), 200);
    const bool isOne = haproxy->statistic("stot", "tideloft-ended", "one") == "1";
    QCOMPARE((isOne ? one : two)->stop(SIGKILL), -1);
    QCOMPARE(healthOver(client), 200);
    QCOMPARE(haproxy->statistic("stot", "tideloft-ended", isOne ? "two" : "one"), "1");
}

void TestHaproxy::certificateIsOfWhoEndsTls()
{
    const TlsClient ended(haproxy->endedPort, front());
    QVERIFY(ended.isEncrypted());
    QCOMPARE(ended.socket.peerCertificate(), certificate(u"front.pem"_s));
    const TlsClient passed(haproxy->passedPort, service());
    QVERIFY(passed.isEncrypted());
    QCOMPARE(passed.socket.peerCertificate(), certificate(u"service.pem"_s));
}

void TestHaproxy::otherNamesAreNotPassedOn()
{
    TlsPeer elsewhere = service();
    elsewhere.name = u"elsewhere.example"_s;
    TlsClient client(haproxy->passedPort, elsewhere);
    QVERIFY(!client.isEncrypted());
    QVERIFY(client.socket.peerCertificate().isNull());
    HttpClient plain(haproxy->passedPort);
    plain.send("GET /healthz HTTP/1.1\r\nHost: localhost\r\n\r\n");
    QCOMPARE(plain.readAll(), QByteArray());
}

void TestHaproxy::headersOfClientsAreNotTakenForHaproxys_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::newRow("line") << proxyLine("192.0.2.7");
    QTest::newRow("block") << proxyBlock(0x21, 0x11, QByteArray::fromHex("c00002070a0000010fa001bb"));
}

void TestHaproxy::headersOfClientsAreNotTakenForHaproxys()
{
    QFETCH(QByteArray, before);
    for (const bool passed : {false, true}) {
        TlsPeer peer = passed ? service() : front();
        peer.before = before;
        QVERIFY(!TlsClient(passed ? haproxy->passedPort : haproxy->endedPort, peer).isEncrypted());
    }
}

// 127.0.0.1 is HAProxy here, and everybody else is not.
void TestHaproxy::servicesTakeNoHeaderFromOthers()
{
    TlsPeer stranger = service();
    stranger.from = QHostAddress(u"127.0.0.2"_s);
    QVERIFY(TlsClient(one->port(), stranger).isEncrypted());
    stranger.before = proxyLine("192.0.2.7");
    QVERIFY(!TlsClient(one->port(), stranger).isEncrypted());
    TlsPeer itself = service();
    QVERIFY(!TlsClient(one->port(), itself).isEncrypted());
    itself.before = proxyLine("192.0.2.7");
    QVERIFY(TlsClient(one->port(), itself).isEncrypted());
}

TIDELOFT_TEST_MAIN(TestHaproxy)
#include "tst_haproxy.moc"
