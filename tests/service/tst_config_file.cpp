// The configuration file: its form, and what is said of mistakes in it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/config_file.h"
#include "tests/support/test_main.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace tideloft::service;

class TestConfigFile : public QObject
{
    Q_OBJECT

private slots:
    void formIsRead();
    void formOfTheFirstVersionIsRead();
    void packagedFileSetsNothing();
    void mistakes_data();
    void mistakes();
    void everyMistakeIsTold();
    void unreadableFilesAreTold();

private:
    QString written(const QByteArray &content) const
    {
        QFile file(folder.filePath(u"tideloftd.conf"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("no file");
        return file.fileName();
    }

    QTemporaryDir folder;
};

void TestConfigFile::formIsRead()
{
    Options options;
    const QByteArray content = "# a comment\n\n  port=1\r\n\thistory-limit\t =  2  # and one behind\n"
                               "database = /srv/a b=c#d.sqlite\nquiet = no\nlisten = ::1";
    QCOMPARE(readConfigFile(written(content), options), QStringList());
    QCOMPARE(options.port, std::uint16_t(1));
    QCOMPARE(options.historyLimit, 2);
    QCOMPARE(options.database, u"/srv/a b=c#d.sqlite"_s);
    QCOMPARE(options.listen, u"::1"_s);
    QVERIFY(!options.quiet);
}

void TestConfigFile::formOfTheFirstVersionIsRead()
{
    Options options;
    QCOMPARE(readConfigFile(written("TIDELOFTD_LISTEN=::\nTIDELOFTD_PORT=443\n"), options), QStringList());
    QCOMPARE(options.listen, u"::"_s);
    QCOMPARE(options.port, std::uint16_t(443));
}

// Who takes a sign of a comment away there gets the default.
void TestConfigFile::packagedFileSetsNothing()
{
    QFile packaged(QStringLiteral(PACKAGED_CONFIG));
    QVERIFY(packaged.open(QIODevice::ReadOnly));
    QByteArray content = packaged.readAll();
    Options options;
    QCOMPARE(readConfigFile(written(content), options), QStringList());
    QVERIFY(options == Options());
    const qsizetype settings = content.count("\n#") - content.count("\n# ");
    QVERIFY(settings > 10);
    QCOMPARE(readConfigFile(written(content.replace("\n#", "\n").replace("\n ", "\n# ")), options),
             QStringList());
    QVERIFY(options == Options());
}

void TestConfigFile::mistakes_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("said");
    QTest::newRow("unknown key") << QByteArray("colour = red") << u"unknown key 'colour'"_s;
    QTest::newRow("option of the command line") << QByteArray("--port = 1") << u"unknown key '--port'"_s;
    QTest::newRow("not for the file") << QByteArray("config = x") << u"unknown key 'config'"_s;
    QTest::newRow("other spelling") << QByteArray("Port = 1") << u"unknown key 'Port'"_s;
    QTest::newRow("no sign") << QByteArray("port 1") << u"this is not of the form 'key = value'"_s;
    QTest::newRow("no key") << QByteArray("= 1") << u"unknown key ''"_s;
    QTest::newRow("no value") << QByteArray("port =") << u"'port' has no value"_s;
    QTest::newRow("comment for a value") << QByteArray("port = # one") << u"'port' has no value"_s;
    QTest::newRow("no number") << QByteArray("port = x") << u"'port' must be a number from 0 to 65535"_s;
    QTest::newRow("too large") << QByteArray("port = 65536") << u"'port' must be a number from 0 to 65535"_s;
    QTest::newRow("neither yes nor no") << QByteArray("quiet = 1") << u"'quiet' must be yes or no"_s;
    QTest::newRow("no address") << QByteArray("listen = example.org")
                                << u"'listen' must be a numeric address, like 127.0.0.1 or ::1"_s;
    QTest::newRow("twice") << QByteArray("history-limit = 2")
                           << u"'history-limit' stands here a second time"_s;
}

void TestConfigFile::mistakes()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, said);
    const QString file = written("history-limit = 1\n\n" + line + "\n");
    Options options;
    QCOMPARE(readConfigFile(file, options), QStringList{file + u":3: "_s + said});
}

void TestConfigFile::everyMistakeIsTold()
{
    const QString file = written("a = 1\nport = 2\nb = 3\nport = 4\n");
    Options options;
    const QStringList problems = readConfigFile(file, options);
    QCOMPARE(problems.size(), 3);
    QVERIFY(problems[2].startsWith(file + u":4: "_s));
}

void TestConfigFile::unreadableFilesAreTold()
{
    Options options;
    const QString missing = folder.filePath(u"missing.conf"_s);
    QVERIFY(readConfigFile(missing, options).value(0).contains(missing));
    QVERIFY(readConfigFile(folder.path(), options).value(0).contains(folder.path()));
    QCOMPARE(readConfigFile(written(QByteArray(1024 * 1024 + 1, '\n')), options).size(), 1);
}

TIDELOFT_TEST_MAIN(TestConfigFile)
#include "tst_config_file.moc"
