// The built client answers --help and --version where there is no display, and touches nothing.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"

#include <QProcess>

using namespace Qt::StringLiterals;

class TestProgramAnswers : public QObject
{
    Q_OBJECT

private slots:
    void withoutDisplay_data();
    void withoutDisplay();
    void withoutFonts();
};

void TestProgramAnswers::withoutDisplay_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("firstLine");
    QTest::newRow("version") << QStringList{u"--version"_s} << QByteArray("TideLoft " TIDELOFT_VERSION);
    QTest::newRow("help") << QStringList{u"--help"_s} << QByteArray("Usage: tideloft [OPTION]...");
    QTest::newRow("version after an unknown option")
        << QStringList{u"--frobnicate"_s, u"--version"_s} << QByteArray("TideLoft " TIDELOFT_VERSION);
}

void TestProgramAnswers::withoutDisplay()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QByteArray, firstLine);
    const QTemporaryDir home;
    QProcessEnvironment clean;
    clean.insert(u"HOME"_s, home.path());
    QProcess client;
    client.setProcessEnvironment(clean);
    client.start(QString::fromUtf8(TIDELOFT_PROGRAM), arguments);
    QVERIFY(client.waitForFinished());
    QCOMPARE(client.exitStatus(), QProcess::NormalExit);
    QCOMPARE(client.exitCode(), 0);
    const QByteArray printed = client.readAllStandardOutput();
    QCOMPARE(printed.left(printed.indexOf('\n')), firstLine);
    QCOMPARE(client.readAllStandardError(), QByteArray());
    const auto everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    QCOMPARE(QDir(home.path()).entryList(everything), QStringList());
}

void TestProgramAnswers::withoutFonts()
{
    const QTemporaryDir home;
    QFile settings(home.filePath(u"fonts.conf"_s));
    QVERIFY(settings.open(QIODevice::WriteOnly));
    settings.write("<?xml version=\"1.0\"?><fontconfig></fontconfig>");
    settings.close();
    QProcessEnvironment environment;
    environment.insert(u"HOME"_s, home.path());
    environment.insert(u"XDG_RUNTIME_DIR"_s, home.path());
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    environment.insert(u"FONTCONFIG_FILE"_s, settings.fileName());
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s); // without one newer versions of the toolkit complain
    QProcess client;
    client.setProcessEnvironment(environment);
    client.start(QString::fromUtf8(TIDELOFT_PROGRAM), QStringList());
    QVERIFY(client.waitForFinished());
    QCOMPARE(client.exitStatus(), QProcess::NormalExit);
    QCOMPARE(client.exitCode(), 1);
    QCOMPARE(client.readAllStandardOutput(), QByteArray());
    QCOMPARE(
        client.readAllStandardError(),
        QByteArray("tideloft: no font is installed; install one, such as the package fonts-open-sans\n"));
}

TIDELOFT_TEST_MAIN(TestProgramAnswers)
#include "tst_program_answers.moc"
