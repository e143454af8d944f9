// What tideloftctl writes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/control/output.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;

class TestOutput : public QObject
{
    Q_OBJECT

private slots:
    void columnsAreAligned();
    void terminalIsToldNothing();
    void timesAreInUtc();
};

void TestOutput::columnsAreAligned()
{
    QCOMPARE(tableLines(
                 {{u"NAME"_s, u"COUNT"_s, u"X"_s}, {u"alexandra"_s, u"7"_s, u"y"_s}, {u"bo"_s, u"12"_s, {}}}),
             (QStringList{u"NAME       COUNT  X"_s, u"alexandra      7  y"_s, u"bo            12"_s}));
    QCOMPARE(tableLines({}), QStringList());
}

void TestOutput::terminalIsToldNothing()
{
    FILE *stream = std::tmpfile();
    QVERIFY(stream);
    say(u"a\x1b[2Jb\r\n\x9b"
        u"c\u202Ed ö"_s,
        stream);
    std::rewind(stream);
    char line[100] = {};
    QVERIFY(std::fgets(line, sizeof line, stream));
    std::fclose(stream);
    QCOMPARE(QString::fromUtf8(line), u"a?[2Jb???c?d ö\n"_s);
}

void TestOutput::timesAreInUtc()
{
    QCOMPARE(timeText(1'795'351'257'248), u"2026-11-22 12:40"_s);
}

TIDELOFT_TEST_MAIN(TestOutput)
#include "tst_output.moc"
