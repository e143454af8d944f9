// The command line.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/options.h"
#include "tests/service/variable.h"
#include "tests/support/test_main.h"

#include <QTemporaryFile>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestOptions : public QObject
{
    Q_OBJECT

private slots:
    void nothingGivenListensOnThisMachineOnly();
    void everythingGiven();
    void limitsAreTheUsualOnes();
    void limitsAreGiven();
    void registrationAndRetentionAreGiven();
    void proxiesAreGiven();
    void helpExplainsEveryOption();
    void helpSaysWhatIsKept();
    void versionIsPrinted();
    void mistakes_data();
    void mistakes();
    void everyOptionIsForCommandLineAndFile();
    void commandLineGoesBeforeFile();
    void mistakesOfTheFileAreTold();
    void whatDoesNotGoTogetherIsToldOfBoth();
    void databaseOfTheSystemsServiceLiesInItsFolder();

private:
    static Command parse(const QString &line)
    {
        return parseCommandLine((u"tideloftd "_s + line).split(u' ', Qt::SkipEmptyParts));
    }
    static Command parseWithFile(const QByteArray &content, const QString &line = {})
    {
        QTemporaryFile file;
        if (!file.open() || file.write(content) != content.size() || !file.flush())
            qFatal("no file");
        return parse(u"--config "_s + file.fileName() + u' ' + line);
    }
    // Something that an option of this kind may be, and that is the default of none.
    static QString sample(const OptionEntry &option)
    {
        static const QHash<QString, QString> samples{
            {u"N"_s, u"77"_s},        {u"FILE"_s, u"a.file"_s},
            {u"ADDRESS"_s, u"::1"_s}, {u"ADDRESSES"_s, u"10.0.0.5,::1"_s},
            {u"WHO"_s, u"invite"_s},  {u"DAYS"_s, u"30"_s},
            {QString(), u"yes"_s}};
        return samples.value(option.valueName);
    }
};

void TestOptions::nothingGivenListensOnThisMachineOnly()
{
    const Command command = parse({});
    QVERIFY(command.serve);
    QCOMPARE(command.serve->listen, u"127.0.0.1"_s);
    QCOMPARE(command.serve->port, std::uint16_t(8443));
    QVERIFY(command.serve->certificateFile.isEmpty() && command.serve->database.isEmpty());
    QVERIFY(!command.serve->quiet);
}

void TestOptions::everythingGiven()
{
    const Command command =
        parse(u"--listen 0.0.0.0 --port=0 --tls-cert c.pem --tls-key k.pem --database d.sqlite --quiet"_s);
    QVERIFY(command.serve);
    QCOMPARE(command.serve->listen, u"0.0.0.0"_s);
    QCOMPARE(command.serve->port, std::uint16_t(0));
    QCOMPARE(command.serve->certificateFile, u"c.pem"_s);
    QCOMPARE(command.serve->keyFile, u"k.pem"_s);
    QCOMPARE(command.serve->database, u"d.sqlite"_s);
    QVERIFY(command.serve->quiet);
}

void TestOptions::limitsAreTheUsualOnes()
{
    const Options usual = *parse({}).serve;
    QCOMPARE(QList<int>({usual.historyLimit, usual.signInsPerMinute, usual.registrationsPerMinute,
                         usual.quotaMessages, usual.quotaMegabytes, usual.quotaConversations,
                         usual.quotaPictureMegabytes}),
             (QList<int>{5000, 10, 10, 1'000'000, 2048, 2000, 100}));
}

void TestOptions::limitsAreGiven()
{
    const Command command =
        parse(u"--history-limit 1 --connections 2 --connections-per-address 3 --sign-ins-per-minute 0 "
              "--registrations-per-minute 5 --quota-messages 6 --quota-megabytes 7 --quota-conversations 8 "
              "--quota-picture-megabytes 9 "
              "--trusted-proxy ::1"_s);
    QVERIFY(command.serve);
    const Options &options = *command.serve;
    QCOMPARE(QList<int>({options.historyLimit, options.connections, options.connectionsPerAddress,
                         options.signInsPerMinute, options.registrationsPerMinute, options.quotaMessages,
                         options.quotaMegabytes, options.quotaConversations, options.quotaPictureMegabytes}),
             (QList<int>{1, 2, 3, 0, 5, 6, 7, 8, 9}));
    QCOMPARE(options.trustedProxies, QStringList(u"::1"_s));
    QVERIFY(!options.proxyProtocol);
}

void TestOptions::registrationAndRetentionAreGiven()
{
    QVERIFY(parse({}).serve->registration == Registration::Open);
    QVERIFY(parse(u"--registration open"_s).serve->registration == Registration::Open);
    QVERIFY(parse(u"--registration invite"_s).serve->registration == Registration::Invite);
    QVERIFY(parse(u"--registration closed"_s).serve->registration == Registration::Closed);
    QCOMPARE(parse({}).serve->keepMessages, 0);
    QCOMPARE(parse(u"--keep-messages 30"_s).serve->keepMessages, 30);
    QCOMPARE(parseWithFile("keep-messages = 30", u"--keep-messages forever"_s).serve->keepMessages, 0);
}

void TestOptions::proxiesAreGiven()
{
    const Command command = parseWithFile("trusted-proxy = 10.0.0.5, ::1\nproxy-protocol = yes\n");
    QVERIFY2(command.serve, qPrintable(command.text));
    QCOMPARE(command.serve->trustedProxies, QStringList({u"10.0.0.5"_s, u"::1"_s}));
    QVERIFY(command.serve->proxyProtocol);
    QVERIFY(!parseWithFile("trusted-proxy = ::1\nproxy-protocol = no\n").serve->proxyProtocol);
    QCOMPARE(parseWithFile("proxy-protocol = yes\n").exitCode, 2);
}

void TestOptions::helpExplainsEveryOption()
{
    const Command command = parse(u"--help"_s);
    QVERIFY(!command.serve);
    QCOMPARE(command.exitCode, 0);
    for (const QString &option : {u"--listen <ADDRESS>"_s,
                                  u"--port <N>"_s,
                                  u"--tls-cert <FILE>"_s,
                                  u"--tls-key <FILE>"_s,
                                  u"--database <FILE>"_s,
                                  u"--quiet"_s,
                                  u"--history-limit <N>"_s,
                                  u"--connections <N>"_s,
                                  u"--connections-per-address <N>"_s,
                                  u"--sign-ins-per-minute <N>"_s,
                                  u"--registrations-per-minute <N>"_s,
                                  u"--quota-messages <N>"_s,
                                  u"--quota-megabytes <N>"_s,
                                  u"--quota-conversations <N>"_s,
                                  u"--quota-picture-megabytes <N>"_s,
                                  u"--metrics-port <N>"_s,
                                  u"--registration <WHO>"_s,
                                  u"--keep-messages <DAYS>"_s,
                                  u"--trusted-proxy <ADDRESSES>"_s,
                                  u"--proxy-protocol"_s,
                                  u"--config <FILE>"_s,
                                  u"--check-config"_s,
                                  u"--help"_s,
                                  u"--version"_s})
        QVERIFY2(command.text.contains(option), qPrintable(option));
}

// Whoever runs the service has to know what lies on the disk.
void TestOptions::helpSaysWhatIsKept()
{
    const QString text = parse(u"--help"_s).text.simplified();
    QVERIFY(text.contains(u"keeps accounts, public keys, servers and pictures, and relays messages"_s));
    QVERIFY(text.contains(u"SQLite file that keeps accounts, keys, messages, servers and pictures;"_s));
}

void TestOptions::versionIsPrinted()
{
    const Command command = parse(u"--version"_s);
    QCOMPARE(command.exitCode, 0);
    QVERIFY(QRegularExpression(u"^tideloftd \\d+\\.\\d+\\.\\d+\n$"_s).match(command.text).hasMatch());
}

void TestOptions::mistakes_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("reason");
    const QString loopback = u"Without --tls-cert and --tls-key only a loopback address is allowed."_s;
    QTest::newRow("unknown option") << u"--verbose"_s << u"verbose"_s;
    QTest::newRow("argument") << u"start"_s << u"Unexpected argument 'start'."_s;
    QTest::newRow("value missing") << u"--port"_s << u"port"_s;
    QTest::newRow("port too large") << u"--port 65536"_s << u"--port must be a number"_s;
    QTest::newRow("port negative") << u"--port=-1"_s << u"--port must be a number"_s;
    QTest::newRow("port is no number") << u"--port x"_s << u"--port must be a number"_s;
    QTest::newRow("number too small")
        << u"--history-limit 0"_s << u"--history-limit must be a number from 1 to"_s;
    QTest::newRow("number is none") << u"--quota-messages many"_s << u"--quota-messages must be a number"_s;
    QTest::newRow("proxy by name") << u"--trusted-proxy proxy"_s << u"--trusted-proxy must be numeric"_s;
    QTest::newRow("one proxy by name")
        << u"--trusted-proxy ::1,proxy"_s << u"--trusted-proxy must be numeric"_s;
    QTest::newRow("comma at the end") << u"--trusted-proxy ::1,"_s << u"--trusted-proxy must be numeric"_s;
    QTest::newRow("a header from nobody")
        << u"--proxy-protocol"_s << u"--proxy-protocol needs --trusted-proxy."_s;
    QTest::newRow("nobody of that kind") << u"--registration some"_s << u"--registration must be open, inv"_s;
    QTest::newRow("no days") << u"--keep-messages 0"_s << u"--keep-messages must be forever or a number"_s;
    QTest::newRow("host name") << u"--listen example.org"_s << u"--listen must be a numeric address"_s;
    QTest::newRow("certificate alone") << u"--tls-cert c.pem"_s << u"belong together"_s;
    QTest::newRow("key alone") << u"--tls-key k.pem"_s << u"belong together"_s;
    QTest::newRow("plain on every address") << u"--listen 0.0.0.0"_s << loopback;
    QTest::newRow("plain on every address, IPv6") << u"--listen ::"_s << loopback;
    QTest::newRow("plain on a network address") << u"--listen 192.168.1.2"_s << loopback;
}

void TestOptions::mistakes()
{
    QFETCH(QString, line);
    QFETCH(QString, reason);
    const Command command = parse(line);
    QVERIFY(!command.serve);
    QCOMPARE(command.exitCode, 2);
    QVERIFY2(command.text.contains(reason), qPrintable(command.text));
}

void TestOptions::everyOptionIsForCommandLineAndFile()
{
    QString line;
    QString content;
    for (const OptionEntry &option : optionTable()) {
        const QString value = sample(option);
        Options changed;
        QCOMPARE(option.set(changed, value), QString());
        QVERIFY2(!(changed == Options()), qPrintable(option.name));
        line +=
            option.valueName.isEmpty() ? u" --%1"_s.arg(option.name) : u" --%1 %2"_s.arg(option.name, value);
        content += u"%1 = %2\n"_s.arg(option.name, value);
    }
    const Command fromLine = parse(line);
    const Command fromFile = parseWithFile(content.toUtf8());
    QVERIFY2(fromLine.serve, qPrintable(fromLine.text));
    QVERIFY2(fromFile.serve, qPrintable(fromFile.text));
    QVERIFY(*fromLine.serve == *fromFile.serve);
    QVERIFY(!fromFile.checkOnly);
}

void TestOptions::commandLineGoesBeforeFile()
{
    const Command command =
        parseWithFile("port = 1\nhistory-limit = 2\nquiet = yes\n", u"--port 3 --check-config"_s);
    QVERIFY(command.serve);
    QCOMPARE(command.serve->port, std::uint16_t(3));
    QCOMPARE(command.serve->historyLimit, 2);
    QVERIFY(command.serve->quiet);
    QVERIFY(command.checkOnly);
    QCOMPARE(parseWithFile("", u"--history-limit 5000"_s).serve->historyLimit, 5000);
    QCOMPARE(parseWithFile("history-limit = 7", u"--history-limit 5000"_s).serve->historyLimit, 5000);
}

void TestOptions::mistakesOfTheFileAreTold()
{
    const Command command = parseWithFile("port = 1\ncolour = red\nport = 2\n", u"--port 3"_s);
    QVERIFY(!command.serve);
    QCOMPARE(command.exitCode, 2);
    QCOMPARE(command.text.count(u"tideloftd: "_s), 2);
    QVERIFY2(command.text.contains(u":2: unknown key 'colour'\n"_s), qPrintable(command.text));
    QCOMPARE(parse(u"--config /nowhere/tideloftd.conf"_s).exitCode, 2);
}

void TestOptions::whatDoesNotGoTogetherIsToldOfBoth()
{
    QCOMPARE(parseWithFile("listen = ::").exitCode, 2);
    QCOMPARE(parseWithFile("tls-cert = c.pem").exitCode, 2);
    QVERIFY(parseWithFile("listen = ::\ntls-cert = c.pem", u"--tls-key k.pem"_s).serve);
}

void TestOptions::databaseOfTheSystemsServiceLiesInItsFolder()
{
    {
        const Variable folder("STATE_DIRECTORY", "/var/lib/some");
        QCOMPARE(databasePlace({}), u"/var/lib/some/tideloftd.sqlite"_s);
        const Command command = parseWithFile("database = postgresql://one,two/chat\n");
        QVERIFY(command.serve);
        QCOMPARE(databasePlace(*command.serve), u"postgresql://one,two/chat"_s);
    }
    QVERIFY(databasePlace({}).endsWith(u"/tideloftd.sqlite"_s));
    QVERIFY(!databasePlace({}).startsWith(u"/var/lib/some"_s));
}

TIDELOFT_TEST_MAIN(TestOptions)
#include "tst_options.moc"
