// nginx and HAProxy in front of two services, configured as the package says: who is counted, and what goes
// on.
//
// Where a test asks for no place on a server for both, each service has a database of its own.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/balancer/balancer.h"
#include "tests/service/balancer/front_client.h"
#include "tests/service/daemon.h"
#include "tests/service/message_bodies.h"
#include "tests/service/picture_material.h"
#include "tests/service/postgresql_cluster.h"
#include "tests/service/server_fixture.h"
#include "tests/support/test_main.h"

#include <atomic>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

namespace
{

/// What stands in front, and where its clients connect.
struct Front {
    explicit Front(const QString &kind)
        : isNginx(kind == u"nginx"),
          passesTls(kind.endsWith(u"passed")),
          balancer(isNginx ? static_cast<Balancer *>(new Nginx) : new Haproxy)
    {
    }

    quint16 port() const { return passesTls ? balancer->passedPort : balancer->endedPort; }
    QStringList serviceOptions() const
    {
        return balancer->serviceOptions() + (isNginx ? QStringList() : QStringList(u"--proxy-protocol"_s));
    }
    TlsPeer server() const
    {
        return {u"localhost"_s, balancer->path(passesTls ? u"service.pem"_s : u"front.pem"_s)};
    }
    FrontClient client(const QString &from = {}) const
    {
        TlsPeer peer = server();
        if (!from.isEmpty())
            peer.from = QHostAddress(from);
        return {port(), peer};
    }

    const bool isNginx;
    const bool passesTls;
    const std::unique_ptr<Balancer> balancer;
};

/// Is well, but drops the connections of all other requests without a reply, as a service does that is
/// killed.
class DroppingService
{
public:
    explicit DroppingService(const Front &front)
        : server([this](const Request &request) { return answer(request); }, settings(front))
    {
    }
    quint16 port() const { return server.port(); }
    int requests() const { return count; }

private:
    Reply answer(const Request &request)
    {
        if (request.target == "/healthz")
            return echo(request);
        ++count;
        throw std::runtime_error("dropped");
    }
    static ServerSettings settings(const Front &front)
    {
        ServerSettings wanted;
        wanted.certificateFile = front.balancer->path(u"service.pem"_s);
        wanted.keyFile = front.balancer->path(u"service-key.pem"_s);
        wanted.trustedProxies = QStringList(u"127.0.0.1"_s);
        wanted.proxyProtocol = !front.isNginx;
        return wanted;
    }

    std::atomic<int> count = 0;
    ServerFixture server;
};

void addFronts()
{
    QTest::addColumn<QString>("kind");
    for (const QString &kind : {u"nginx"_s, u"HAProxy, TLS ended"_s, u"HAProxy, TLS passed"_s})
        QTest::newRow(qPrintable(kind)) << kind;
}

// As the client: its toolkit asks again by itself when a connection ends without a reply.
int healthAskedLikeTheClient(const FrontClient &client)
{
    const int status = client.get("/healthz").status;
    return status == 0 ? client.get("/healthz").status : status;
}

} // namespace

class TestBalancers : public QObject
{
    Q_OBJECT

private slots:
    void twoPeopleTalkWhileOneServiceIsAway_data() { addFronts(); }
    void twoPeopleTalkWhileOneServiceIsAway();
    void servicesWithOneDatabaseAreOne_data() { addFronts(); }
    void servicesWithOneDatabaseAreOne();
    void limitsCountTheClient_data() { addFronts(); }
    void limitsCountTheClient();
    void picturesFit_data() { addFronts(); }
    void picturesFit();
    void requestsGoOnWhenAServiceIsKilled_data() { addFronts(); }
    void requestsGoOnWhenAServiceIsKilled();
    void sentRequestsAreRepeatedWhereTheyOnlyRead_data();
    void sentRequestsAreRepeatedWhereTheyOnlyRead();
    void servicesHaveToBeTheRightOnes_data();
    void servicesHaveToBeTheRightOnes();
};

// A connection that is refused was no request, so what is posted goes to the other service, and once.
void TestBalancers::twoPeopleTalkWhileOneServiceIsAway()
{
    QFETCH(QString, kind);
    const Front front(kind);
    Daemon service;
    QVERIFY(service.startPlain(front.serviceOptions()));
    QVERIFY(front.balancer->start({freePort(), service.port()}));
    FrontClient alice = front.client();
    FrontClient bob = front.client();
    QCOMPARE(alice.registerAs(u"alice"_s), 201);
    QCOMPARE(bob.registerAs(u"bob"_s), 201);
    QCOMPARE(alice.signIn(u"alice"_s), 200);
    QCOMPARE(bob.signIn(u"bob"_s), 200);
    for (int i = 0; i < 4; ++i)
        QCOMPARE(alice.post("/api/chat/send", sealedMessage(u"bob"_s, base64(40 + i))).status, 201);
    const HttpReply history = bob.get("/api/chat/history/alice");
    QCOMPARE(history.status, 200);
    QCOMPARE(history.array().size(), 4);
    QCOMPARE(history.array()[0][u"from"_s].toString(), u"alice"_s);
}

// Each request may go to another service than the one before, and one of the services dies meanwhile.
void TestBalancers::servicesWithOneDatabaseAreOne()
{
    QFETCH(QString, kind);
    const Front front(kind);
    const QStringList options =
        front.serviceOptions() + QStringList{u"--database"_s, PostgresqlCluster::ofThisProcess().newPlace()};
    Daemon one;
    Daemon two;
    QVERIFY(one.startPlain(options));
    QVERIFY(two.startPlain(options));
    QVERIFY(front.balancer->start({one.port(), two.port()}));
    FrontClient alice = front.client();
    FrontClient bob = front.client();
    QCOMPARE(alice.registerAs(u"alice"_s), 201);
    QCOMPARE(bob.registerAs(u"bob"_s), 201);
    QCOMPARE(alice.signIn(u"alice"_s), 200);
    QCOMPARE(bob.signIn(u"bob"_s), 200);
    for (int i = 0; i < 8; ++i) {
        if (i == 4)
            QCOMPARE(one.stop(SIGKILL), -1);
        QCOMPARE(alice.post("/api/chat/send", sealedMessage(u"bob"_s, base64(40 + i))).status, 201);
        QCOMPARE(bob.get("/api/chat/history/alice").array().size(), i + 1);
    }
    QCOMPARE(two.stop(SIGTERM), 0);
    QVERIFY2(two.errors().contains("/api/chat/send 201"), two.errors().constData());
}

void TestBalancers::limitsCountTheClient()
{
    QFETCH(QString, kind);
    const Front front(kind);
    Daemon service;
    QVERIFY(
        service.startPlain(front.serviceOptions() + QStringList{u"--registrations-per-minute"_s, u"1"_s}));
    QVERIFY(front.balancer->start({service.port(), freePort()}));
    FrontClient eager = front.client(u"127.0.0.5"_s);
    QCOMPARE(eager.registerAs(u"first"_s), 201);
    QCOMPARE(eager.registerAs(u"second"_s), 429);
    eager.more = "X-Forwarded-For: 192.0.2.7\r\nX-Forwarded-For: 192.0.2.8\r\nForwarded: for=192.0.2.7\r\n"
                 "X-Real-IP: 192.0.2.7\r\n";
    QCOMPARE(eager.registerAs(u"second"_s), 429);
    QCOMPARE(front.client(u"127.0.0.6"_s).registerAs(u"second"_s), 201);
    // Past the balancer, to the service itself, nobody is believed either.
    FrontClient direct(service.port(), {u"localhost"_s, front.balancer->path(u"service.pem"_s),
                                        QHostAddress(u"127.0.0.5"_s)});
    direct.more = eager.more;
    QCOMPARE(direct.registerAs(u"third"_s), 429);
}

void TestBalancers::picturesFit()
{
    QFETCH(QString, kind);
    const Front front(kind);
    Daemon service;
    QVERIFY(service.startPlain(front.serviceOptions()));
    QVERIFY(front.balancer->start({service.port(), freePort()}));
    FrontClient alice = front.client();
    QCOMPARE(alice.registerAs(u"alice"_s), 201);
    QCOMPARE(alice.signIn(u"alice"_s), 200);
    const auto upload = [&alice](qsizetype size) {
        const QByteArray picture = png() + QByteArray(size - png().size(), 'x');
        return alice.call("POST", "/api/profile/avatar/upload", form(filePart("avatar", picture)), formType);
    };
    QCOMPARE(upload(5 * 1024 * 1024).status, 200);
    const HttpReply tooLarge = upload(5 * 1024 * 1024 + 1);
    QCOMPARE(tooLarge.status, 413);
    QVERIFY(!tooLarge.message().isEmpty()); // the service's own words, and not the balancer's page
}

void TestBalancers::requestsGoOnWhenAServiceIsKilled()
{
    QFETCH(QString, kind);
    const Front front(kind);
    Daemon one;
    Daemon two;
    QVERIFY(one.startPlain(front.serviceOptions()));
    QVERIFY(two.startPlain(front.serviceOptions()));
    QVERIFY(front.balancer->start({one.port(), two.port()}));
    const FrontClient client = front.client();
    for (int i = 0; i < 10; ++i)
        QCOMPARE(client.get("/healthz").status, 200);
    QCOMPARE(one.stop(SIGKILL), -1);
    for (int i = 0; i < 20; ++i)
        QCOMPARE(healthAskedLikeTheClient(client), 200);
    QCOMPARE(client.registerAs(u"alice"_s), 201);
}

void TestBalancers::sentRequestsAreRepeatedWhereTheyOnlyRead_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<bool>("repeated");
    for (const QString &kind : {u"nginx"_s, u"HAProxy, TLS ended"_s}) {
        QTest::addRow("%s, GET", qPrintable(kind)) << kind << QByteArray("GET") << true;
        QTest::addRow("%s, POST", qPrintable(kind)) << kind << QByteArray("POST") << false;
    }
}

void TestBalancers::sentRequestsAreRepeatedWhereTheyOnlyRead()
{
    QFETCH(QString, kind);
    QFETCH(QByteArray, method);
    const Front front(kind);
    DroppingService one(front);
    DroppingService two(front);
    QVERIFY(front.balancer->start({one.port(), two.port()}));
    const int status = front.client().call(method, "/api/chat/send", "{}").status;
    QVERIFY(status == 502 || status == 0); // a balancer may also just close, so that the client asks again
    const int requests = one.requests() + two.requests();
    QVERIFY(requests >= 1);
    QTEST(requests > 1, "repeated");
}

void TestBalancers::servicesHaveToBeTheRightOnes_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("nginx") << u"nginx"_s;
    QTest::newRow("HAProxy, TLS ended") << u"HAProxy, TLS ended"_s;
}

void TestBalancers::servicesHaveToBeTheRightOnes()
{
    QFETCH(QString, kind);
    const Front front(kind);
    Daemon stranger;
    QStringList options = front.serviceOptions();
    options.replaceInStrings(u"service"_s, u"front"_s); // a certificate, but not one of the services
    QVERIFY(stranger.startPlain(options));
    QVERIFY(front.balancer->start({stranger.port(), freePort()}));
    const int status = front.client().get("/healthz").status;
    QVERIFY2(status == 502 || status == 503 || status == 0, // or it just closes, as above
             qPrintable(QString::number(status)));
    QCOMPARE(stranger.stop(SIGTERM), 0);
    QVERIFY2(!stranger.errors().contains("GET"), stranger.errors().constData());
}

TIDELOFT_TEST_MAIN(TestBalancers)
#include "tst_balancers.moc"
