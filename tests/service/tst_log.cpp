// Lines of the log, and what becomes of them when nobody reads.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/log.h"
#include "tests/support/test_main.h"

#include <QTimeZone>

#include <optional>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace tideloft::service;

class TestLog : public QObject
{
    Q_OBJECT

private slots:
    void init() // a full pipe keeps whoever writes to it, as that of a terminal or another program does
    {
        QCOMPARE(pipe2(ends, 0), 0);
        QCOMPARE(fcntl(ends[0], F_SETFL, O_NONBLOCK), 0);
    }
    void cleanup()
    {
        ::close(ends[0]);
        ::close(ends[1]);
    }
    void entryHasTimeLevelAndRequest();
    void quietKeepsProblems();
    void gapsAreTold();
    void messagesOfTheToolkitAreLines();

private:
    QByteArray taken() const
    {
        QByteArray all;
        char part[4096];
        for (ssize_t size = 0; (size = read(ends[0], part, sizeof part)) > 0;)
            all.append(part, size);
        return all;
    }

    int ends[2] = {};
};

void TestLog::entryHasTimeLevelAndRequest()
{
    const QDateTime time(QDate(2026, 5, 4), QTime(12, 0, 0, 7), QTimeZone(2 * 60 * 60));
    QCOMPARE(logEntry(time, LogLevel::Info, 7, "GET / 200"),
             QByteArray("2026-05-04T10:00:00.007Z info 7 GET / 200\n"));
    QCOMPARE(logEntry(time, LogLevel::Problem, 0, "x"), QByteArray("2026-05-04T10:00:00.007Z problem - x\n"));
    QVERIFY(logEntry(time, LogLevel::Warning, 0, QByteArray(100'000, 'x')).size()
            < 4096); // a pipe takes it whole
}

void TestLog::quietKeepsProblems()
{
    LogOutput output(ends[1], true);
    output.write(LogLevel::Info, 1, "one");
    output.write(LogLevel::Warning, 2, "two");
    output.write(LogLevel::Problem, 3, "three");
    const QByteArray lines = taken();
    QCOMPARE(lines.count('\n'), 2);
    QVERIFY(lines.contains(" warning 2 two\n") && lines.contains(" problem 3 three\n"));
}

void TestLog::gapsAreTold()
{
    LogOutput output(ends[1], false);
    const QByteArray line(900, 'x');
    for (int i = 0; i < 200; ++i) // more than the pipe takes
        output.write(LogLevel::Info, 1, line);
    const qsizetype taken1 = taken().count('\n');
    QVERIFY(taken1 < 200);
    output.write(LogLevel::Info, 2, "again");
    const QByteArray rest = taken();
    QVERIFY2(rest.contains(" warning - " + QByteArray::number(200 - taken1) + " lines were not taken\n"),
             rest);
    QVERIFY(rest.endsWith(" info 2 again\n"));
}

void TestLog::messagesOfTheToolkitAreLines()
{
    std::optional<ToolkitMessages> messages(std::make_shared<LogOutput>(ends[1], true));
    qInfo("not with --quiet");
    qWarning("a driver says %s\n  and more", "something");
    qWarning("Unable to free statement: no connection to the server"); // which loses nothing
    qCritical("x");
    messages.reset();
    const QByteArrayList lines = taken().split('\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY2(lines[0].endsWith("Z warning - a driver says something and more"), lines[0]);
    QVERIFY2(lines[1].endsWith("Z problem - x"), lines[1]);
    QCOMPARE(lines[2], QByteArray());
}

TIDELOFT_TEST_MAIN(TestLog)
#include "tst_log.moc"
