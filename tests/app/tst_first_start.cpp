// Whole runs of the client, from the first question to the closed window.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"

#include <QProcess>
#include <QSettings>

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{

/// A person's machine: the client keeps what it stores here from one start to the next.
class Machine
{
public:
    /// Runs the client, answering the question by CHOICE, and returns the lines that it printed.
    QStringList start(const QStringList &choice)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        environment.insert(u"HOME"_s, home.path());
        environment.insert(u"XDG_RUNTIME_DIR"_s, home.path());
        environment.insert(u"XDG_CONFIG_HOME"_s, home.filePath(u"config"_s));
        environment.insert(u"XDG_DATA_HOME"_s, home.filePath(u"data"_s));
        QProcess client;
        client.setProcessEnvironment(environment);
        client.start(QString::fromUtf8(FIRST_START_PROGRAM), choice);
        if (!client.waitForFinished() || client.exitStatus() != QProcess::NormalExit)
            return {u"did not end: "_s + client.errorString()};
        exitCode = client.exitCode();
        complaints = client.readAllStandardError();
        return QString::fromUtf8(client.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    }

    QString settingsFile() const { return home.filePath(u"config/TideLoft/TideLoft.conf"_s); }
    QStringList keys() const { return QSettings(settingsFile(), QSettings::IniFormat).allKeys(); }
    QString language() const
    {
        return QSettings(settingsFile(), QSettings::IniFormat).value(u"language"_s).toString();
    }

    QTemporaryDir home;
    int exitCode = -1;
    QByteArray complaints;
};

// Of the name itself, whatever it leads to.
struct stat statusOf(const QString &path)
{
    struct stat status {
    };
    if (lstat(QFile::encodeName(path).constData(), &status) != 0)
        qWarning("There is no %s", qPrintable(path));
    return status;
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

class TestFirstStart : public QObject
{
    Q_OBJECT

private slots:
    void escapeEndsQuietlyAndIsAskedAgain();
    void choiceOpensTheWindowAndIsKept_data();
    void choiceOpensTheWindowAndIsKept();
    void storeThatWouldHangCountsAsAbsent_data();
    void storeThatWouldHangCountsAsAbsent();
    void largestStoreIsRead();
    void languageSwitchedInTheWindowIsNotStored();
    void identity();
    void helpAnswersInsteadOfStarting();
};

void TestFirstStart::escapeEndsQuietlyAndIsAskedAgain()
{
    Machine machine;
    for (int start = 0; start < 2; ++start) {
        QCOMPARE(machine.start({u"escape"_s}), QStringList{u"dialog"_s}); // and no window
        QCOMPARE(machine.exitCode, 0);
        QCOMPARE(machine.complaints, QByteArray());
        QVERIFY(!QFile::exists(machine.settingsFile()));
    }
}

void TestFirstStart::choiceOpensTheWindowAndIsKept_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("stored");
    QTest::newRow("Svenska") << u"0"_s << u"sv"_s;
    QTest::newRow("English") << u"1"_s << u"en"_s;
}

void TestFirstStart::choiceOpensTheWindowAndIsKept()
{
    QFETCH(const QString, button);
    QFETCH(const QString, stored);
    Machine machine;
    const QString window = u"window, language "_s + button;
    QCOMPARE(machine.start({button}).mid(0, 3), (QStringList{u"dialog"_s, window, u"plainly shown: 1"_s}));
    QCOMPARE(machine.exitCode, 0);
    QCOMPARE(machine.complaints, QByteArray());
    QCOMPARE(machine.keys(), QStringList{u"language"_s}); // the only setting
    QCOMPARE(machine.language(), stored);
    QCOMPARE(machine.start({u"escape"_s}).value(0), window); // no question this time
    QCOMPARE(machine.language(), stored);
}

void TestFirstStart::storeThatWouldHangCountsAsAbsent_data()
{
    QTest::addColumn<QString>("place");
    QTest::addColumn<QString>("kind"); // or where a link leads to
    const QString own = u"TideLoft/TideLoft.conf"_s;
    QTest::newRow("pipe") << own << u"pipe"_s;
    QTest::newRow("link to a pipe") << own << u"../pipe"_s;
    // Of this test's own making: a start that goes wrong puts a file in its place. Only root may make one.
    if (geteuid() == 0) {
        QTest::newRow("device that never ends") << own << u"device"_s;
        QTest::newRow("link to a device") << own << u"../device"_s;
    }
    QTest::newRow("file of more than 1 MiB") << own << u"large"_s;
    QTest::newRow("link to a file of more than 1 MiB") << own << u"../large"_s;
    QTest::newRow("pipe in the lock's place") << own + u".lock"_s << u"pipe"_s;
    QTest::newRow("pipe in the organisation's place") << u"TideLoft.conf"_s << u"pipe"_s;
}

// Where the start would wait for ever, a hang of the client is this test's failure.
void TestFirstStart::storeThatWouldHangCountsAsAbsent()
{
    QFETCH(const QString, place);
    QFETCH(const QString, kind);
    Machine machine;
    const QString config = machine.home.filePath(u"config"_s);
    const QString path = config + u'/' + place;
    QVERIFY(QDir().mkpath(config + u"/TideLoft"_s));
    const QString made = kind.startsWith(u"../"_s) ? config + kind.mid(2) : path;
    const QByteArray large = "[General]\nlanguage=en\n;" + QByteArray(1024 * 1024, 'x') + '\n';
    if (kind.endsWith(u"pipe"_s))
        QCOMPARE(mkfifo(QFile::encodeName(made).constData(), 0600), 0);
    if (kind.endsWith(u"device"_s))
        QCOMPARE(mknod(QFile::encodeName(made).constData(), S_IFCHR | 0600, makedev(1, 5)), 0);
    if (kind.endsWith(u"large"_s))
        QVERIFY(writeFile(made, large));
    if (made != path)
        QVERIFY(QFile::link(kind, path));
    const struct stat before = statusOf(path);
    const struct stat madeBefore = statusOf(made);
    QCOMPARE(machine.start({u"1"_s}).mid(0, 2), (QStringList{u"dialog"_s, u"window, language 1"_s}));
    QCOMPARE(machine.exitCode, 0);
    QCOMPARE(machine.start({u"0"_s}).value(1), u"window, language 0"_s); // asked again: nothing was stored
    QCOMPARE(statusOf(path).st_ino, before.st_ino);
    QCOMPARE(statusOf(path).st_mode, before.st_mode);
    QCOMPARE(statusOf(path).st_size, before.st_size);
    QCOMPARE(statusOf(made).st_ino, madeBefore.st_ino);
    QCOMPARE(statusOf(made).st_mode, madeBefore.st_mode);
    QCOMPARE(statusOf(made).st_size, madeBefore.st_size);
}

void TestFirstStart::largestStoreIsRead()
{
    Machine machine;
    QVERIFY(QDir().mkpath(QFileInfo(machine.settingsFile()).path()));
    QByteArray bytes = "[General]\nlanguage=en\n;";
    bytes += QByteArray(1024 * 1024 - bytes.size(), 'x');
    QVERIFY(writeFile(machine.settingsFile(), bytes));
    QCOMPARE(machine.start({u"escape"_s}).value(0), u"window, language 1"_s);
}

void TestFirstStart::languageSwitchedInTheWindowIsNotStored()
{
    Machine machine;
    machine.start({u"1"_s, u"switch"_s});
    QCOMPARE(machine.language(), u"en"_s);
    QCOMPARE(machine.start({u"escape"_s}).value(0), u"window, language 1"_s);
}

void TestFirstStart::identity()
{
    Machine machine;
    const QStringList lines = machine.start({u"1"_s});
    QCOMPARE(lines.value(3), QStringLiteral("TideLoft|TideLoft|TideLoft||" TIDELOFT_VERSION));
    QCOMPARE(lines.value(4), machine.home.filePath(u"data/TideLoft/TideLoft"_s));
    QCOMPARE(lines.value(5), u"im.tideloft.TideLoft"_s);
    QCOMPARE(lines.value(6), u"icon of 256 pixels"_s);
}

void TestFirstStart::helpAnswersInsteadOfStarting()
{
    Machine machine;
    QCOMPARE(machine.start({u"--version"_s}),
             QStringList({QStringLiteral("TideLoft " TIDELOFT_VERSION), u"Service: 127.0.0.1:1"_s}));
    QCOMPARE(machine.exitCode, 0);
    QVERIFY(!QFile::exists(machine.settingsFile()));
}

TIDELOFT_TEST_MAIN(TestFirstStart)
#include "tst_first_start.moc"
