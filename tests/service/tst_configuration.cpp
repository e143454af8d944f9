// The program with a configuration file.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/daemon.h"
#include "tests/service/http_reply.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestConfiguration : public QObject
{
    Q_OBJECT

private slots:
    void configurationIsRead();
    void configurationIsChecked();

private:
    static QString written(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("Could not write a file");
        return path;
    }
};

void TestConfiguration::configurationIsRead()
{
    Daemon daemon;
    const QString file = written(daemon.path(u"tideloftd.conf"_s), "quiet = yes\nsign-ins-per-minute = 1\n");
    QVERIFY(daemon.startPlain({u"--config"_s, file}));
    HttpClient client(daemon.port());
    const auto signIn = [&] {
        return parsedReply(client.exchange("POST /api/auth/login HTTP/1.1\r\nHost: h\r\n"
                                           "Content-Type: application/json\r\nContent-Length: 41\r\n\r\n"
                                           R"({"username":"nobody","password":"a word"})"));
    };
    QCOMPARE(signIn().status, 401);
    QCOMPARE(signIn().status, 429);
    QCOMPARE(daemon.stop(SIGTERM), 0);
    QCOMPARE(daemon.errors(), QByteArray());
}

void TestConfiguration::configurationIsChecked()
{
    Daemon daemon;
    QVERIFY(daemon.startTls()); // the port is taken, which a check does not see
    Daemon other;
    const QByteArray database = "database = " + other.databaseFile().toUtf8() + "\n";
    const QByteArray good = database + "port = " + QByteArray::number(daemon.port()) + "\ntls-cert = "
                            + daemon.certificateFile().toUtf8() + "\ntls-key = " + daemon.keyFile().toUtf8();
    const auto check = [&](const QByteArray &content) {
        const QString file = written(other.path(u"tideloftd.conf"_s), content);
        return other.runToEnd({u"--config"_s, file, u"--check-config"_s});
    };
    QCOMPARE(check(good), 0);
    QCOMPARE(other.output(), QByteArray("The service could start like this.\n"));
    QVERIFY(!QFile::exists(other.databaseFile()));
    QVERIFY(other.errors().startsWith("tideloftd: warning: the certificate expires on "));
    QCOMPARE(check(good + ".old"), 1);
    QVERIFY(other.errors().contains("key.pem.old"));
    QVERIFY(other.output().isEmpty());
    QCOMPARE(check(database + "colour = red"), 2);
    QVERIFY(other.errors().contains("tideloftd.conf:2: unknown key 'colour'"));
}

TIDELOFT_TEST_MAIN(TestConfiguration)
#include "tst_configuration.moc"
