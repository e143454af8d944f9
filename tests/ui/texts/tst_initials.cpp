// What stands in an avatar without a picture.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/texts/initials.h"

using namespace Qt::StringLiterals;
using tideloft::ui::initials;

class TestInitials : public QObject
{
    Q_OBJECT

private slots:
    void firstTwo_data();
    void firstTwo();
    void asManyAsAskedFor_data();
    void asManyAsAskedFor();
};

void TestInitials::firstTwo_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("two letters of a name, upper-cased") << u"alice"_s << u"AL"_s;
    QTest::newRow("a name of two letters is taken whole") << u"bo"_s << u"BO"_s;
    QTest::newRow("a name of one letter is taken whole") << u"x"_s << u"X"_s;
    QTest::newRow("an empty name gives nothing") << QString() << QString();
    QTest::newRow("upper case stays") << u"Bob"_s << u"BO"_s;
    QTest::newRow("digits and signs stay") << u"7_up"_s << u"7_"_s;
    QTest::newRow("a blank counts") << u"a b"_s << u"A "_s;
    QTest::newRow("Swedish letters") << u"åsa"_s << u"ÅS"_s;
    QTest::newRow("sharp s becomes two letters") << u"ßen"_s << u"SSE"_s;
    QTest::newRow("emoji first is not cut in two") << u"😀bob"_s << u"😀B"_s;
    QTest::newRow("emoji second is not cut in two") << u"b😀ob"_s << u"B😀"_s;
    QTest::newRow("two emoji") << u"😀🎉🔒"_s << u"😀🎉"_s;
    QTest::newRow("one emoji alone") << u"😀"_s << u"😀"_s;
    QTest::newRow("a flag is two characters") << u"🇸🇪bob"_s << u"🇸🇪"_s;
    QTest::newRow("small letters beyond the first plane") << u"𐐨𐐩x"_s << u"𐐀𐐁"_s;
    QTest::newRow("a combining mark counts as a character") << u"e\u0301va"_s << u"E\u0301"_s;
    QTest::newRow("half a pair at the end") << u"a"_s + QChar(0xd83d) << u"A"_s + QChar(0xd83d);
    QTest::newRow("half a pair before a letter") << QChar(0xd83d) + u"ab"_s << QChar(0xd83d) + u"A"_s;
    QTest::newRow("halves in the wrong order")
        << QChar(0xde00) + (QChar(0xd83d) + u"a"_s) << QChar(0xde00) + QString(QChar(0xd83d));
}

void TestInitials::firstTwo()
{
    QFETCH(const QString, name);
    QFETCH(const QString, expected);
    QCOMPARE(initials(name), expected);
}

void TestInitials::asManyAsAskedFor_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << 0 << QString();
    QTest::newRow("one") << 1 << u"😀"_s;
    QTest::newRow("three") << 3 << u"😀BO"_s;
    QTest::newRow("more than there are") << 9 << u"😀BOB"_s;
}

void TestInitials::asManyAsAskedFor()
{
    QFETCH(const int, count);
    QFETCH(const QString, expected);
    QCOMPARE(initials(u"😀bob"_s, count), expected);
}

TIDELOFT_TEST_MAIN(TestInitials)
#include "tst_initials.moc"
