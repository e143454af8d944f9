// What a text from outside may do to the debug log: nothing.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/texts/log_line.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestLogLine : public QObject
{
    Q_OBJECT

private slots:
    void staysOneHarmlessLine_data();
    void staysOneHarmlessLine();
    void endlessTextIsCut();
};

void TestLogLine::staysOneHarmlessLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("line");
    QTest::newRow("plain") << u"Device \"1\" is not known: åäö 🔒"_s << u"Device \"1\" is not known: åäö 🔒"_s;
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("line breaks") << u"a\nb\r\nc\u2028d\u2029e"_s << u"a b  c d e"_s;
    QTest::newRow("colours of a terminal") << u"\u001b[31mred"_s << u" [31mred"_s;
    QTest::newRow("title of a terminal") << u"\u009d0;x\u009c\u0007"_s << u" 0;x  "_s;
    QTest::newRow("backspace and delete") << u"a\b\u007fb"_s << u"a  b"_s;
    QTest::newRow("zero") << QString(u"a\0b"_s) << u"a b"_s;
    QTest::newRow("other direction") << u"a\u202eb"_s << u"a b"_s;
    QTest::newRow("placeholder") << u"%1 %n %s"_s << u"%1 %n %s"_s;
}

void TestLogLine::staysOneHarmlessLine()
{
    QFETCH(const QString, text);
    QTEST(logLine(text), "line");
}

void TestLogLine::endlessTextIsCut()
{
    QCOMPARE(logLine(QString(4'000, u'x')), QString(4'000, u'x'));
    QCOMPARE(logLine(QString(1'000'000, u'x')), QString(4'000, u'x') + u'…');
}

TIDELOFT_TEST_MAIN(TestLogLine)
#include "tst_log_line.moc"
