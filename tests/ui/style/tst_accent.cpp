// The substitution of the accent colour and the accents that can be chosen.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/style/accent.h"

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestAccent : public QObject
{
    Q_OBJECT

private slots:
    void substitution_data();
    void substitution();
    void swatchesStandInTheirOrder();
};

void TestAccent::substitution_data()
{
    QTest::addColumn<QString>("sheet");
    QTest::addColumn<QString>("accent");
    QTest::addColumn<QString>("expected");
    const QString gradient = u"stop:0 #3b8beb,stop:1 #2563eb; a: #3b8beb"_s;
    QTest::newRow("default leaves the gradient") << gradient << u"#3b8beb"_s << gradient;
    QTest::newRow("gradient becomes flat")
        << gradient << u"#e05454"_s << u"stop:0 #e05454,stop:1 #e05454; a: #e05454"_s;
    QTest::newRow("the comparison with the default is case-sensitive")
        << gradient << u"#3B8BEB"_s << u"stop:0 #3B8BEB,stop:1 #3B8BEB; a: #3B8BEB"_s;
    QTest::newRow("literals are matched case-sensitively")
        << u"#3B8BEB #2563EB"_s << u"#e05454"_s << u"#3B8BEB #2563EB"_s;
    QTest::newRow("the dark end as accent")
        << gradient << u"#2563eb"_s << u"stop:0 #2563eb,stop:1 #2563eb; a: #2563eb"_s;
    QTest::newRow("shades and brand are kept")
        << u"#5aa0f5 #1a6acc #5b5bd6"_s << u"#ec4899"_s << u"#5aa0f5 #1a6acc #5b5bd6"_s;
}

void TestAccent::substitution()
{
    QFETCH(QString, sheet);
    QFETCH(QString, accent);
    QTEST(withAccent(sheet, accent), "expected");
}

void TestAccent::swatchesStandInTheirOrder()
{
    QStringList colours;
    for (const QStringView colour : swatchColours)
        colours << colour.toString();
    const QStringList expected{u"#3b8beb"_s, u"#5b5bd6"_s, u"#25a868"_s,
                               u"#e05454"_s, u"#f59e0b"_s, u"#ec4899"_s};
    QCOMPARE(colours, expected);
}

TIDELOFT_TEST_MAIN(TestAccent)
#include "tst_accent.moc"
