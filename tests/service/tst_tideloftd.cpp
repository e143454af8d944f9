// The program as it is started: command line, TLS, log, and an end in order.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/database.h"
#include "tests/service/daemon.h"
#include "tests/service/message_bodies.h"
#include "tests/service/picture_material.h"
#include "tests/support/test_main.h"

#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkCookieJar>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QSslKey>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
namespace service = tideloft::service;

class TestTideloftd : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(QSslSocket::supportsSsl()); }
    void helpAndVersionEndAtOnce();
    void mistakesEndWithTwo();
    void unusableFilesAndPortsEndWithOne();
    void stopsCleanly_data();
    void stopsCleanly();
    void renewalIsNoEndWhileStarting();
    void twoUsersTalkOverTls();
    void ownPagesHaveTheOriginOfTls();
    void nothingSecretIsLogged();
    void oldTlsIsRefused_data();
    void oldTlsIsRefused();
    void plainHttpAtATlsPortIsNoReason();
    void deadlineHoldsUnderTls();

private:
    static int post(QNetworkAccessManager &network, const QString &url, const QJsonObject &body);
    static QByteArray get(QNetworkAccessManager &network, const QString &url);
    static QSslConfiguration trusting(const Daemon &daemon);
};

QSslConfiguration TestTideloftd::trusting(const Daemon &daemon)
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates(QSslCertificate::fromPath(daemon.certificateFile()));
    return configuration;
}

int TestTideloftd::post(QNetworkAccessManager &network, const QString &url, const QJsonObject &body)
{
    QNetworkRequest request{QUrl(url)};
    request.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_s);
    const std::unique_ptr<QNetworkReply> reply(network.post(request, QJsonDocument(body).toJson()));
    QSignalSpy(reply.get(), &QNetworkReply::finished).wait(20'000);
    return reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

QByteArray TestTideloftd::get(QNetworkAccessManager &network, const QString &url)
{
    const std::unique_ptr<QNetworkReply> reply(network.get(QNetworkRequest{QUrl(url)}));
    QSignalSpy(reply.get(), &QNetworkReply::finished).wait(20'000);
    return reply->readAll();
}

void TestTideloftd::helpAndVersionEndAtOnce()
{
    Daemon daemon;
    QCOMPARE(daemon.runToEnd({u"--help"_s}), 0);
    QVERIFY(daemon.output().contains("--tls-cert <FILE>"));
    QCOMPARE(daemon.runToEnd({u"--version"_s}), 0);
    QVERIFY(daemon.output().startsWith("tideloftd "));
}

void TestTideloftd::mistakesEndWithTwo()
{
    Daemon daemon;
    QCOMPARE(daemon.runToEnd({u"--frobnicate"_s}), 2);
    QVERIFY(daemon.errors().contains("frobnicate"));
    QVERIFY(daemon.output().isEmpty());
    QCOMPARE(daemon.runToEnd({u"--listen"_s, u"0.0.0.0"_s}), 2);
}

void TestTideloftd::unusableFilesAndPortsEndWithOne()
{
    Daemon daemon;
    QVERIFY(daemon.startPlain());
    Daemon other;
    QCOMPARE(
        other.runToEnd({u"--port"_s, QString::number(daemon.port()), u"--database"_s, other.databaseFile()}),
        1);
    QVERIFY(other.errors().startsWith("tideloftd: "));
    QCOMPARE(other.runToEnd({u"--port"_s, u"0"_s, u"--database"_s, u"/dev/null/x"_s}), 1);
    QCOMPARE(other.runToEnd({u"--port"_s, u"0"_s, u"--database"_s, other.databaseFile(), u"--tls-cert"_s,
                             u"missing.pem"_s, u"--tls-key"_s, u"missing.pem"_s}),
             1);
}

void TestTideloftd::stopsCleanly_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
}

void TestTideloftd::stopsCleanly()
{
    QFETCH(int, signal);
    Daemon daemon;
    QVERIFY(daemon.startPlain());
    QNetworkAccessManager network; // keeps its connection open while the service stops
    QCOMPARE(post(network, daemon.url(u"/api/auth/register"_s),
                  {{u"username"_s, u"alice"_s}, {u"password"_s, u"a good password"_s}}),
             201);
    QCOMPARE(daemon.stop(signal), 0);
    QVERIFY(!QFile::exists(daemon.databaseFile() + u"-wal"_s));
    QVERIFY(daemon.startPlain());
    QCOMPARE(post(network, daemon.url(u"/api/auth/login"_s),
                  {{u"username"_s, u"alice"_s}, {u"password"_s, u"a good password"_s}}),
             200);
}

// The database that is to be brought to its present form is held, so the start takes its time and then fails.
void TestTideloftd::renewalIsNoEndWhileStarting()
{
    Daemon daemon;
    service::Database held(daemon.databaseFile());
    const service::Transaction nobodyElseWrites(held);
    QVERIFY(daemon.startAndForget());
    const QString lock = daemon.databaseFile() + u".lock"_s;
    QTRY_VERIFY(QFile::exists(lock)); // main() has begun
    QCOMPARE(daemon.stop(SIGHUP), 1);
    QVERIFY2(daemon.errors().contains("locked"), daemon.errors().constData());
}

void TestTideloftd::twoUsersTalkOverTls()
{
    Daemon daemon;
    QVERIFY(daemon.startTls());
    QVERIFY(daemon.output().contains("listening on https://127.0.0.1:" + QByteArray::number(daemon.port())
                                     + "\n"));
    QNetworkAccessManager alice;
    QNetworkAccessManager bob;
    const QSslConfiguration before = QSslConfiguration::defaultConfiguration();
    QSslConfiguration::setDefaultConfiguration(trusting(daemon));
    for (auto *network : {&alice, &bob}) {
        const QJsonObject user{{u"username"_s, network == &alice ? u"alice"_s : u"bob"_s},
                               {u"password"_s, u"a good password"_s}};
        QCOMPARE(post(*network, daemon.url(u"/api/auth/register"_s), user), 201);
        QCOMPARE(post(*network, daemon.url(u"/api/auth/login"_s), user), 200);
    }
    QCOMPARE(post(alice, daemon.url(u"/api/chat/send"_s), sealedMessage(u"bob"_s)), 201);
    const QByteArray history = get(bob, daemon.url(u"/api/chat/history/alice"_s));
    QSslConfiguration::setDefaultConfiguration(before);
    const QJsonArray items = QJsonDocument::fromJson(history).array();
    QCOMPARE(items.size(), 1);
    QCOMPARE(items[0][u"text"_s], sealedMessage(u"bob"_s)[u"text"_s]);
    QCOMPARE(items[0][u"from"_s].toString(), u"alice"_s);
}

void TestTideloftd::ownPagesHaveTheOriginOfTls()
{
    Daemon daemon;
    QVERIFY(daemon.startTls());
    QNetworkAccessManager network;
    const QSslConfiguration before = QSslConfiguration::defaultConfiguration();
    QSslConfiguration::setDefaultConfiguration(trusting(daemon));
    const QJsonObject user{{u"username"_s, u"alice"_s}, {u"password"_s, u"a good password"_s}};
    QCOMPARE(post(network, daemon.url(u"/api/auth/register"_s), user), 201);
    QCOMPARE(post(network, daemon.url(u"/api/auth/login"_s), user), 200);
    const auto upload = [&](const QString &origin) {
        QNetworkRequest request{QUrl(daemon.url(u"/api/profile/avatar/upload"_s))};
        request.setHeader(QNetworkRequest::ContentTypeHeader, formType);
        request.setRawHeader("Origin", origin.toLatin1());
        const std::unique_ptr<QNetworkReply> reply(network.post(request, form(filePart("avatar", png()))));
        QSignalSpy(reply.get(), &QNetworkReply::finished).wait(20'000);
        return reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    };
    const int own = upload(daemon.url({}));
    const int other = upload(daemon.url({}).replace(u"https"_s, u"http"_s));
    QSslConfiguration::setDefaultConfiguration(before);
    QCOMPARE(own, 200);
    QCOMPARE(other, 403);
}

void TestTideloftd::nothingSecretIsLogged()
{
    Daemon daemon;
    QVERIFY(daemon.startPlain());
    QNetworkAccessManager network;
    const QJsonObject user{{u"username"_s, u"alice"_s}, {u"password"_s, u"a good password"_s}};
    post(network, daemon.url(u"/api/auth/register"_s), user);
    post(network, daemon.url(u"/api/auth/login"_s), user);
    post(network, daemon.url(u"/api/chat/send"_s), plainMessage(u"alice"_s, u"the text"_s));
    get(network, daemon.url(u"/api/chat/history/alice"_s));
    QCOMPARE(daemon.stop(SIGTERM), 0);
    const QByteArray lines = daemon.errors();
    const QRegularExpression time(u"^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}Z "_s,
                                  QRegularExpression::MultilineOption);
    QCOMPARE(QString::fromLatin1(lines).remove(time),
             u"info 1 POST /api/auth/register 201\ninfo 2 POST /api/auth/login 200\n"
             "info 3 POST /api/chat/send 201\ninfo 4 GET /api/chat/history/{peer} 200\n"_s);
    QCOMPARE(lines.count('\n'), QString::fromLatin1(lines).count(time));
    QVERIFY(daemon.startPlain({u"--quiet"_s}));
    get(network, daemon.url(u"/healthz"_s));
    QCOMPARE(daemon.stop(SIGTERM), 0);
    QCOMPARE(daemon.errors(), QByteArray());
}

void TestTideloftd::oldTlsIsRefused_data()
{
    QTest::addColumn<int>("protocol");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("TLS 1.2") << int(QSsl::TlsV1_2) << false;
    QTest::newRow("TLS 1.3") << int(QSsl::TlsV1_3) << true;
}

void TestTideloftd::oldTlsIsRefused()
{
    QFETCH(int, protocol);
    QFETCH(bool, accepted);
    Daemon daemon;
    QVERIFY(daemon.startTls());
    QSslSocket socket;
    QSslConfiguration configuration = trusting(daemon);
    configuration.setProtocol(QSsl::SslProtocol(protocol));
    socket.setSslConfiguration(configuration);
    socket.connectToHostEncrypted(u"127.0.0.1"_s, daemon.port());
    QCOMPARE(socket.waitForEncrypted(), accepted);
    if (accepted)
        QCOMPARE(socket.sessionProtocol(), QSsl::TlsV1_3);
}

void TestTideloftd::plainHttpAtATlsPortIsNoReason()
{
    Daemon daemon;
    QVERIFY(daemon.startTls());
    QTcpSocket socket;
    socket.connectToHost(u"127.0.0.1"_s, daemon.port());
    QVERIFY(socket.waitForConnected());
    socket.write("GET /healthz HTTP/1.1\r\nHost: h\r\n\r\n");
    QTRY_COMPARE(socket.state(), QAbstractSocket::UnconnectedState);
    QVERIFY(!socket.readAll().contains("HTTP/1.1 200"));
    QCOMPARE(daemon.stop(SIGTERM), 0);
}

void TestTideloftd::deadlineHoldsUnderTls()
{
    Daemon daemon;
    QVERIFY(daemon.startTls());
    QSslSocket socket; // connects, and leaves the service waiting in the middle of a request
    socket.setSslConfiguration(trusting(daemon));
    socket.connectToHostEncrypted(u"127.0.0.1"_s, daemon.port());
    QVERIFY(socket.waitForEncrypted());
    socket.write("GET /healthz HTTP/1.1\r\nHo");
    QVERIFY(socket.waitForBytesWritten());
    QTRY_COMPARE_WITH_TIMEOUT(socket.state(), QAbstractSocket::UnconnectedState, 30'000);
    QVERIFY(socket.readAll().startsWith("HTTP/1.1 408 "));
}

TIDELOFT_TEST_MAIN(TestTideloftd)
#include "tst_tideloftd.moc"
