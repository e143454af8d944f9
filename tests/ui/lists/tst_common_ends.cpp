// What two sequences share at their beginning and at their end.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/lists/common_ends.h"

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestCommonEnds : public QObject
{
    Q_OBJECT

private slots:
    void letters_data();
    void letters();
};

void TestCommonEnds::letters_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("now");
    QTest::addColumn<int>("front");
    QTest::addColumn<int>("back");
    QTest::newRow("both empty") << QString() << QString() << 0 << 0;
    QTest::newRow("nothing before") << QString() << u"abc"_s << 0 << 0;
    QTest::newRow("nothing now") << u"abc"_s << QString() << 0 << 0;
    QTest::newRow("the same") << u"abc"_s << u"abc"_s << 3 << 0;
    QTest::newRow("nothing in common") << u"abc"_s << u"xyz"_s << 0 << 0;
    QTest::newRow("one more behind") << u"abc"_s << u"abcd"_s << 3 << 0;
    QTest::newRow("one more in front") << u"abc"_s << u"zabc"_s << 0 << 3;
    QTest::newRow("one less behind") << u"abc"_s << u"ab"_s << 2 << 0;
    QTest::newRow("one less in front") << u"abc"_s << u"bc"_s << 0 << 2;
    QTest::newRow("another in the middle") << u"abc"_s << u"axc"_s << 1 << 1;
    QTest::newRow("one more in the middle") << u"ac"_s << u"abc"_s << 1 << 1;
    QTest::newRow("one of two equal ones less") << u"aab"_s << u"ab"_s << 1 << 1;
    QTest::newRow("all equal, one more") << u"aaa"_s << u"aaaa"_s << 3 << 0;
    QTest::newRow("ends exchanged") << u"abc"_s << u"cba"_s << 0 << 0;
}

void TestCommonEnds::letters()
{
    QFETCH(QString, before);
    QFETCH(QString, now);
    QFETCH(int, front);
    QFETCH(int, back);
    const CommonEnds ends = commonEnds(before.size(), now.size(), [&](qsizetype old, qsizetype current) {
        return before.at(old) == now.at(current);
    });
    QCOMPARE(ends.front, front);
    QCOMPARE(ends.back, back);
}

TIDELOFT_TEST_MAIN(TestCommonEnds)
#include "tst_common_ends.moc"
