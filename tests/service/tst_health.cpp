// A service in trouble says so, loses nothing that it acknowledged, and recovers by itself.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/schema.h"
#include "tests/service/daemon.h"
#include "tests/service/http_reply.h"
#include "tests/service/message_bodies.h"
#include "tests/service/variable.h"
#include "tests/support/test_main.h"

#include <QSslSocket>

#include <sys/resource.h>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestHealth : public QObject
{
    Q_OBJECT

private slots:
    void fullDiskIsToldAndLosesNothing();
    void readOnlyFilesAreToldAndLoseNothing();
    void lockedDatabaseIsTold();
    void unusableCertificates_data();
    void unusableCertificates();
    void certificateIsReadAgain();
    void unreadLogStopsNothing();

private:
    HttpReply call(const QByteArray &method, const QByteArray &target, const QByteArray &body = {}) const
    {
        HttpClient client(daemon->port());
        const QByteArray length = QByteArray::number(body.size());
        return parsedReply(client.exchange(method + ' ' + target + " HTTP/1.1\r\nHost: h\r\nCookie: " + cookie
                                           + "\r\nContent-Type: application/json\r\nContent-Length: " + length
                                           + "\r\n\r\n" + body));
    }
    HttpReply post(const QByteArray &target, const QJsonObject &body) const
    {
        return call("POST", target, QJsonDocument(body).toJson());
    }
    void startWithAlice()
    {
        daemon.reset(new Daemon);
        QVERIFY(daemon->startPlain());
        const QJsonObject user{{u"username"_s, u"alice"_s}, {u"password"_s, u"a good password"_s}};
        QCOMPARE(post("/api/auth/register", user).status, 201);
        cookie = post("/api/auth/login", user).headers.value("set-cookie").split(';').constFirst();
    }
    void allowFileSize(rlim_t bytes) const
    {
        const rlimit limit{bytes, RLIM_INFINITY};
        QCOMPARE(prlimit(static_cast<pid_t>(daemon->processId()), RLIMIT_FSIZE, &limit, nullptr), 0);
    }
    static void makeCertificate(const QStringList &keyOptions, const QString &certificate, const QString &key)
    {
        const QStringList rest{u"-nodes"_s,  u"-days"_s, u"2"_s,    u"-subj"_s, u"/CN=localhost"_s,
                               u"-keyout"_s, key,        u"-out"_s, certificate};
        QCOMPARE(QProcess::execute(u"openssl"_s, QStringList{u"req"_s, u"-x509"_s} + keyOptions + rest), 0);
    }
    static QByteArray servedCertificate(quint16 port)
    {
        QSslSocket socket;
        socket.setPeerVerifyMode(QSslSocket::VerifyNone);
        socket.connectToHostEncrypted(u"127.0.0.1"_s, port);
        return socket.waitForEncrypted() ? socket.peerCertificate().toDer() : QByteArray();
    }

    QScopedPointer<Daemon> daemon;
    QByteArray cookie;
};

void TestHealth::fullDiskIsToldAndLosesNothing()
{
    startWithAlice();
    int acknowledged = 0;
    const auto send = [&] {
        const HttpReply reply = post("/api/chat/send", plainMessage(u"alice"_s, QString(5000, u'x')));
        acknowledged += reply.status == 201 ? 1 : 0;
        return reply;
    };
    QCOMPARE(send().status, 201);
    allowFileSize(1);
    QTRY_COMPARE(call("GET", "/healthz").status, 503); // a good answer holds for a second
    QVERIFY(!call("GET", "/healthz").message().isEmpty());
    const HttpReply refused = send();
    QCOMPARE(refused.status, 503);
    QCOMPARE(refused.message(),
             u"The service cannot store anything at the moment. Please try again later."_s);
    QCOMPARE(refused.headers.value("retry-after"), QByteArray("1"));
    QCOMPARE(call("GET", "/api/chat/history/alice").array().size(), acknowledged);
    allowFileSize(RLIM_INFINITY);
    QCOMPARE(send().status, 201);
    QCOMPARE(call("GET", "/healthz").status, 200);
    QCOMPARE(call("GET", "/api/chat/history/alice").array().size(), 2);
    QCOMPARE(daemon->stop(SIGTERM), 0);
    QVERIFY(daemon->errors().contains(" problem "));
    Store database(daemon->databaseFile());
    QCOMPARE(database.pragma(u"integrity_check"_s).toString(), u"ok"_s);
}

void TestHealth::readOnlyFilesAreToldAndLoseNothing()
{
    const QTemporaryDir folder;
    QFile mark(folder.filePath(u"read-only"_s));
    {
        const Variable place("TIDELOFT_READ_ONLY", mark.fileName().toUtf8());
        const Preloaded library(READ_ONLY_FILES_NAME, READ_ONLY_FILES_FOLDER);
        startWithAlice();
    }
    const auto send = [&] { return post("/api/chat/send", plainMessage(u"alice"_s, u"x"_s)); };
    QCOMPARE(send().status, 201);
    QVERIFY(mark.open(QIODevice::WriteOnly));
    QTRY_COMPARE(call("GET", "/healthz").status, 503);
    const HttpReply refused = send();
    QCOMPARE(refused.status, 503);
    QVERIFY(!refused.message().isEmpty());
    QCOMPARE(call("GET", "/api/chat/history/alice").array().size(), 1);
    QVERIFY(mark.remove());
    QCOMPARE(send().status, 201);
    QCOMPARE(call("GET", "/healthz").status, 200);
    QCOMPARE(call("GET", "/api/chat/history/alice").array().size(), 2);
    QCOMPARE(daemon->stop(SIGTERM), 0);
    Store database(daemon->databaseFile());
    QCOMPARE(database.pragma(u"integrity_check"_s).toString(), u"ok"_s);
}

void TestHealth::lockedDatabaseIsTold()
{
    startWithAlice();
    QCOMPARE(call("GET", "/healthz").text(u"status"_s), u"ok"_s);
    Store other(daemon->databaseFile());
    {
        const Transaction held(other);
        QTRY_COMPARE(call("GET", "/healthz").status, 503);
        QCOMPARE(call("GET", "/healthz").text(u"status"_s), u"failing"_s);
        // A write that has not failed within a second is late, and says nothing yet.
        QTRY_VERIFY(call("GET", "/healthz").message().contains(u"locked"_s));
        QCOMPARE(post("/api/chat/send", plainMessage(u"alice"_s, u"x"_s)).status, 503);
        QCOMPARE(call("GET", "/api/chat/history/alice").status, 200);
    }
    QCOMPARE(call("GET", "/healthz").status, 200);
    QCOMPARE(post("/api/chat/send", plainMessage(u"alice"_s, u"x"_s)).status, 201);
}

void TestHealth::unusableCertificates_data()
{
    QTest::addColumn<QString>("certificate");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("reason");
    QTest::newRow("good") << u"rsa.pem"_s << u"rsa-key.pem"_s << QString();
    QTest::newRow("missing certificate") << u"none.pem"_s << u"rsa-key.pem"_s << u"none.pem"_s;
    QTest::newRow("missing key") << u"rsa.pem"_s << u"none.pem"_s << u"none.pem"_s;
    QTest::newRow("swapped") << u"rsa-key.pem"_s << u"rsa.pem"_s << u"rsa-key.pem holds no certificate"_s;
    QTest::newRow("certificate as key") << u"rsa.pem"_s << u"rsa.pem"_s << u"rsa.pem holds no private key"_s;
    QTest::newRow("key of another") << u"rsa.pem"_s << u"rsa2-key.pem"_s << u"does not belong"_s;
    QTest::newRow("EC with the key of RSA") << u"ec.pem"_s << u"rsa-key.pem"_s << u"does not belong"_s;
    QTest::newRow("RSA with the key of EC") << u"rsa.pem"_s << u"ec-key.pem"_s << u"does not belong"_s;
}

void TestHealth::unusableCertificates()
{
    QFETCH(QString, certificate);
    QFETCH(QString, key);
    QFETCH(QString, reason);
    static const QTemporaryDir folder;
    static const bool made = [] {
        const QStringList rsa{u"-newkey"_s, u"rsa:2048"_s};
        makeCertificate(rsa, folder.filePath(u"rsa.pem"_s), folder.filePath(u"rsa-key.pem"_s));
        makeCertificate(rsa, folder.filePath(u"rsa2.pem"_s), folder.filePath(u"rsa2-key.pem"_s));
        makeCertificate({u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s, u"ec_paramgen_curve:P-256"_s},
                        folder.filePath(u"ec.pem"_s), folder.filePath(u"ec-key.pem"_s));
        return true;
    }();
    QVERIFY(made);
    Daemon started;
    const QStringList options{u"--tls-cert"_s, folder.filePath(certificate), u"--tls-key"_s,
                              folder.filePath(key)};
    if (reason.isEmpty()) {
        QVERIFY(started.startPlain(options));
        return;
    }
    QCOMPARE(
        started.runToEnd(QStringList{u"--port"_s, u"0"_s, u"--database"_s, started.databaseFile()} + options),
        1);
    QVERIFY2(started.errors().contains(reason.toUtf8()), started.errors().constData());
}

void TestHealth::certificateIsReadAgain()
{
    Daemon started;
    QVERIFY(started.startTls());
    QSslSocket kept;
    kept.setPeerVerifyMode(QSslSocket::VerifyNone);
    kept.connectToHostEncrypted(u"127.0.0.1"_s, started.port());
    QVERIFY(kept.waitForEncrypted());
    const QByteArray before = servedCertificate(started.port());
    makeCertificate({u"-newkey"_s, u"rsa:2048"_s}, started.certificateFile(), started.keyFile());
    QCOMPARE(::kill(static_cast<pid_t>(started.processId()), SIGHUP), 0);
    QTRY_VERIFY(servedCertificate(started.port()) != before);
    kept.write("GET /healthz HTTP/1.1\r\nHost: h\r\n\r\n");
    QVERIFY(kept.waitForReadyRead());
    QVERIFY(kept.readAll().startsWith("HTTP/1.1 200 "));
    const QByteArray renewed = servedCertificate(started.port());
    QVERIFY(QFile::resize(started.keyFile(), 0)); // half of a renewal
    QCOMPARE(::kill(static_cast<pid_t>(started.processId()), SIGHUP), 0);
    QCOMPARE(servedCertificate(started.port()), renewed);
    kept.abort();
    QCOMPARE(started.stop(SIGTERM), 0);
    QVERIFY(started.errors().contains("problem - kept the certificate: "));
    QVERIFY(started.errors().contains("warning - the certificate expires on ")); // it is good for two days
}

// More lines than the pipe takes; the process is not asked for any of them.
void TestHealth::unreadLogStopsNothing()
{
    int ends[2];
    QCOMPARE(pipe(ends), 0);
    const QTemporaryDir folder;
    const QString error = u"/proc/%1/fd/%2"_s.arg(QCoreApplication::applicationPid()).arg(ends[1]);
    QProcess process;
    process.setStandardErrorFile(error);
    process.start(QStringLiteral(TIDELOFTD),
                  {u"--port"_s, u"0"_s, u"--database"_s, folder.filePath(u"test.sqlite"_s)});
    QVERIFY(process.waitForReadyRead());
    const QString said = QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    HttpClient client(said.section(u':', -1).toUShort());
    const QByteArray request = "GET /nothing HTTP/1.1\r\nHost: h\r\n\r\n";
    for (int i = 0; i < 2500; ++i)
        QCOMPARE(statusOf(client.exchange(request)), 404);
    ::close(ends[0]); // now nobody is there at all
    QCOMPARE(statusOf(client.exchange(request)), 404);
    client.socket.abort();
    process.terminate();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
    ::close(ends[1]);
}

TIDELOFT_TEST_MAIN(TestHealth)
#include "tst_health.moc"
