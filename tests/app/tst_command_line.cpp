// Which command lines the client answers by itself.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/command_line.h"
#include "tests/support/test_main.h"
#include "tests/support/test_service_endpoint.h"

using namespace Qt::StringLiterals;
using tideloft::app::answerTo;

namespace
{

const QString version = QStringLiteral("TideLoft " TIDELOFT_VERSION "\n");
const QString help = u"Usage: tideloft [OPTION]..."_s; // its first line
const QString none = QString();

} // namespace

class TestCommandLine : public QObject
{
    Q_OBJECT

private slots:
    void answers_data();
    void answers();
    void helpNamesBothOptions();
    void versionNamesTheService_data();
    void versionNamesTheService();
};

void TestCommandLine::answers_data()
{
    QTest::addColumn<QByteArrayList>("arguments");
    QTest::addColumn<QString>("firstLine");
    const auto row = [](const char *name, const QByteArrayList &arguments, const QString &firstLine) {
        QTest::newRow(name) << arguments << firstLine;
    };
    row("no argument vector at all", {}, none);
    row("the program alone", {"tideloft"}, none);
    row("help", {"tideloft", "--help"}, help);
    row("version", {"tideloft", "--version"}, version);
    row("both: the first one answers", {"tideloft", "--help", "--version"}, help);
    row("both, the other way round", {"tideloft", "--version", "--help"}, version);
    row("after options of the toolkit", {"tideloft", "-platform", "offscreen", "--version"}, version);
    row("after the program's own path, as a restart passes it", {"tideloft", "tideloft", "--help"}, help);
    row("the program's own path again is ignored", {"tideloft", "tideloft"}, none);
    row("an unknown option is ignored", {"tideloft", "--frobnicate", "-x", "file.txt"}, none);
    row("a program by the name of an option", {"--help"}, none);
    row("one dash is the toolkit's", {"tideloft", "-help", "-version"}, none);
    row("short forms are not ours", {"tideloft", "-h", "-v"}, none);
    row("letter case counts", {"tideloft", "--Help", "--VERSION"}, none);
    row("longer words are not ours", {"tideloft", "--helpful", "--version=1"}, none);
    row("an empty argument is ignored", {"tideloft", ""}, none);
}

void TestCommandLine::answers()
{
    QFETCH(QByteArrayList, arguments);
    QFETCH(const QString, firstLine);
    QList<char *> argv;
    for (QByteArray &argument : arguments)
        argv.append(argument.data());
    const auto answer = answerTo({argv.data(), static_cast<size_t>(argv.size())});
    QCOMPARE(answer.has_value(), !firstLine.isEmpty());
    if (answer)
        QCOMPARE(answer->section(u'\n', 0, 0), firstLine.section(u'\n', 0, 0));
}

void TestCommandLine::helpNamesBothOptions()
{
    char program[] = "tideloft";
    char option[] = "--help";
    char *const argv[] = {program, option};
    const QString text = answerTo(argv).value_or(QString());
    QVERIFY(text.contains(u"\n  --help "_s));
    QVERIFY(text.contains(u"\n  --version "_s));
    QVERIFY(text.endsWith(u'\n'));
}

void TestCommandLine::versionNamesTheService_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("told");
    QTest::newRow("host") << u"https://chat.example.org"_s << u"chat.example.org"_s;
    QTest::newRow("host and port") << u"https://localhost:8443"_s << u"localhost:8443"_s;
    QTest::newRow("address") << u"http://[::1]:8080"_s << u"[::1]:8080"_s;
}

void TestCommandLine::versionNamesTheService()
{
    QFETCH(const QString, url);
    QFETCH(const QString, told);
    tideloft::tests::setServiceBaseUrl(url);
    char program[] = "tideloft";
    char option[] = "--version";
    char *const argv[] = {program, option};
    QCOMPARE(answerTo(argv).value_or(QString()), version + u"Service: "_s + told + u'\n');
}

TIDELOFT_TEST_MAIN(TestCommandLine)
#include "tst_command_line.moc"
