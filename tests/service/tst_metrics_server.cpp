// The figures of a running service, asked for as a monitoring program does.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/metrics/metrics_text.h"
#include "service/store/schema.h"
#include "tests/service/daemon.h"
#include "tests/service/message_bodies.h"
#include "tests/service/metrics_parser.h"
#include "tests/service/service_call.h"
#include "tests/support/test_main.h"

#include <QFileInfo>
#include <QSslCertificate>
#include <QSslSocket>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestMetricsServer : public QObject
{
    Q_OBJECT

private slots:
    void everythingIsTold();
    void certificateIsTold();
    void figuresComeWhileTheDatabaseIsHeld();
    void neitherNamesNorContentsAreTold();
    void onlyThePageIsThere();
    void offWithoutThePort();

private:
    static quint16 metricsPort(Daemon &daemon)
    {
        const QRegularExpression line(u"metrics on http://127.0.0.1:(\\d+)/metrics\n"_s);
        return line.match(QString::fromLatin1(daemon.outputOfLines(2))).captured(1).toUShort();
    }
    static HttpReply get(quint16 port, const QByteArray &target)
    {
        return parsedReply(HttpClient(port).exchange("GET " + target + " HTTP/1.1\r\nHost: h\r\n\r\n"));
    }
    static HttpReply post(HttpClient &client, const QByteArray &target, const QByteArray &cookie,
                          const QJsonObject &object)
    {
        return call(client, "POST", target, cookie, QJsonDocument(object).toJson());
    }
    static void useService(HttpClient &client)
    {
        const QJsonObject user{{u"username"_s, u"alice"_s}, {u"password"_s, u"a good password"_s}};
        QCOMPARE(post(client, "/api/auth/register", {}, user).status, 201);
        const HttpReply signedIn = post(client, "/api/auth/login", {}, user);
        const QByteArray cookie = signedIn.headers.value("set-cookie").split(';').constFirst();
        QCOMPARE(post(client, "/api/chat/send", cookie, plainMessage(u"alice"_s, u"the text"_s)).status, 201);
    }
    static ParsedMetrics metrics(quint16 port) { return parsedMetrics(get(port, "/metrics").body); }
};

void TestMetricsServer::everythingIsTold()
{
    Daemon daemon;
    QVERIFY(daemon.startPlain({u"--metrics-port"_s, u"0"_s}));
    const quint16 port = metricsPort(daemon);
    HttpClient client(daemon.port());
    useService(client);
    const HttpReply reply = get(port, "/metrics");
    QCOMPARE(reply.status, 200);
    QCOMPARE(reply.headers.value("content-type"), QByteArray(MetricsText::contentType));
    const ParsedMetrics parsed = parsedMetrics(reply.body);
    QCOMPARE(parsed.problem, QString());
    const auto value = [&](const QString &name) { return parsed.samples.value(u"tideloftd_"_s + name, -1); };
    const QString sent = u"{method=\"POST\",route=\"/api/chat/send\"%1}"_s;
    QCOMPARE(value(u"requests_total"_s + sent.arg(u",status=\"201\""_s)), 1.0);
    QCOMPARE(value(u"request_duration_seconds_count"_s + sent.arg(QString())), 1.0);
    QVERIFY(value(u"request_duration_seconds_sum"_s + sent.arg(QString())) > 0);
    QCOMPARE(value(u"commit_duration_seconds_count"_s), 3.0);
    QCOMPARE(value(u"connections"_s), 1.0);
    QCOMPARE(value(u"sessions"_s), 1.0);
    for (const QString &queue : {u"reads"_s, u"writes"_s, u"hashing"_s})
        QCOMPARE(value(u"queue_length{queue=\"%1\"}"_s.arg(queue)), 0.0);
    QCOMPARE(value(u"database_bytes{file=\"database\"}"_s), double(QFileInfo(daemon.databaseFile()).size()));
    QCOMPARE(value(u"database_bytes{file=\"journal\"}"_s),
             double(QFileInfo(daemon.databaseFile() + u"-wal"_s).size()));
    QVERIFY(!reply.body.contains("certificate"));
    client.socket.disconnectFromHost();
    QTRY_COMPARE(metrics(port).samples.value(u"tideloftd_connections"_s, -1), 0.0);
}

void TestMetricsServer::certificateIsTold()
{
    Daemon daemon;
    QVERIFY(daemon.startTls({u"--metrics-port"_s, u"0"_s}));
    const QDateTime end = QSslCertificate::fromPath(daemon.certificateFile()).constFirst().expiryDate();
    const ParsedMetrics parsed = metrics(metricsPort(daemon));
    QCOMPARE(parsed.problem, QString());
    QCOMPARE(parsed.samples.value(u"tideloftd_certificate_expiry_timestamp_seconds"_s),
             double(end.toSecsSinceEpoch()));
}

void TestMetricsServer::figuresComeWhileTheDatabaseIsHeld()
{
    Daemon daemon;
    QVERIFY(daemon.startPlain({u"--metrics-port"_s, u"0"_s}));
    const quint16 port = metricsPort(daemon);
    Store other(daemon.databaseFile());
    const Transaction held(other);
    QCOMPARE(get(daemon.port(), "/healthz").status, 503);
    const ParsedMetrics parsed = metrics(port);
    QCOMPARE(parsed.problem, QString());
    const QString ill = u"tideloftd_requests_total{method=\"GET\",route=\"/healthz\",status=\"503\"}"_s;
    QCOMPARE(parsed.samples.value(ill), 1.0);
}

void TestMetricsServer::neitherNamesNorContentsAreTold()
{
    Daemon daemon;
    QVERIFY(daemon.startPlain({u"--metrics-port"_s, u"0"_s}));
    const quint16 port = metricsPort(daemon);
    HttpClient client(daemon.port());
    useService(client);
    get(daemon.port(), "/api/chat/history/alice");
    get(daemon.port(), "/some/alice");
    const QByteArray page = get(port, "/metrics").body;
    QVERIFY(page.contains("/api/chat/history/{peer}"));
    for (const char *secret : {"alice", "password", "the text", "some"})
        QVERIFY2(!page.contains(secret), secret);
}

void TestMetricsServer::onlyThePageIsThere()
{
    Daemon daemon;
    QVERIFY(daemon.startPlain({u"--metrics-port"_s, u"0"_s}));
    const quint16 port = metricsPort(daemon);
    QCOMPARE(get(port, "/healthz").status, 404);
    QCOMPARE(parsedReply(HttpClient(port).exchange("POST /metrics HTTP/1.1\r\nHost: h\r\n\r\n")).status, 405);
    QCOMPARE(get(daemon.port(), "/metrics").status, 404);
    QCOMPARE(daemon.stop(SIGTERM), 0);
}

void TestMetricsServer::offWithoutThePort()
{
    Daemon daemon;
    QVERIFY(daemon.startPlain());
    QCOMPARE(get(daemon.port(), "/metrics").status, 404);
    QCOMPARE(daemon.output().count('\n'), 1);
}

TIDELOFT_TEST_MAIN(TestMetricsServer)
#include "tst_metrics_server.moc"
