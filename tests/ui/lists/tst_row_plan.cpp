// Which rows of a list stay, move or are made anew when it is to show others.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/lists/row_plan.h"

#include "tests/support/test_main.h"

#include <QRandomGenerator>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

namespace
{

QList<RowPlace> planned(const QString &shown, const QString &wanted)
{
    QList<const QChar *> models;
    for (const QChar &letter : shown)
        models.append(letter == u'#' ? nullptr : &letter); // what is no row
    return planRows(shown.size(), equalRows(models, QList<QChar>(wanted.cbegin(), wanted.cend())));
}

/// One word for each place: "0" an entry that stays, "0m" one that moves, "0!" one that gets another row,
/// "new".
QString described(const QList<RowPlace> &places)
{
    QStringList words;
    for (const RowPlace &place : places) {
        const QString entry = QString::number(place.entry);
        if (place.entry < 0)
            words.append(u"new"_s);
        else if (!place.isKept)
            words.append(entry + u'!');
        else
            words.append(place.isFixed ? entry : entry + u'm');
    }
    return words.join(u' ');
}

/// Why the plan does not lead from SHOWN to WANTED; empty if it does.
QString fault(const QString &shown, const QString &wanted)
{
    const QList<RowPlace> places = planned(shown, wanted);
    if (places.size() != wanted.size())
        return u"%1 places"_s.arg(places.size());
    QList<int> used;
    int lastFixed = -1;
    for (qsizetype i = 0; i < places.size(); ++i) {
        const RowPlace &place = places.at(i);
        if (place.entry < 0 ? place.isKept || place.isFixed : used.contains(place.entry))
            return u"place %1"_s.arg(i);
        if (place.entry >= 0)
            used.append(place.entry);
        if (place.isKept && shown.at(place.entry) != wanted.at(i))
            return u"place %1 keeps another row"_s.arg(i);
        if (place.isFixed && std::exchange(lastFixed, place.entry) >= place.entry)
            return u"place %1 is out of order"_s.arg(i);
    }
    return {};
}

} // namespace

class TestRowPlan : public QObject
{
    Q_OBJECT

private slots:
    void places_data();
    void places();
    void everyPlanLeadsToTheWantedRows();
    void equalRowsAreKeptAsOftenAsTheyAreShown();
};

void TestRowPlan::places_data()
{
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const QString &shown, const QString &wanted, const QString &plan) {
        QTest::newRow(name) << shown << wanted << plan;
    };
    row("nothing into nothing", {}, {}, {});
    row("an empty list is filled", {}, u"ab"_s, u"new new"_s);
    row("a list is emptied", u"ab"_s, {}, {});
    row("nothing changes", u"abc"_s, u"abc"_s, u"0 1 2"_s);
    row("one more at the end", u"abc"_s, u"abcd"_s, u"0 1 2 new"_s);
    row("one more in front", u"abc"_s, u"xabc"_s, u"new 0 1 2"_s);
    row("one more between", u"abc"_s, u"abxc"_s, u"0 1 new 2"_s);
    row("one goes from the front", u"abc"_s, u"bc"_s, u"1 2"_s);
    row("one goes from between", u"abc"_s, u"ac"_s, u"0 2"_s);
    row("one changes in its place", u"abc"_s, u"axc"_s, u"0 1! 2"_s);
    row("the last changes, and one comes after it", u"abc"_s, u"abxy"_s, u"0 1 2! new"_s);
    row("one changes into two", u"abc"_s, u"axyc"_s, u"0 1! new 2"_s);
    row("two change into one", u"abcd"_s, u"axd"_s, u"0 1! 3"_s);
    row("all change", u"ab"_s, u"xyz"_s, u"0! 1! new"_s);
    row("the last comes to the front", u"abcd"_s, u"dabc"_s, u"3m 0 1 2"_s);
    row("the first goes to the end", u"abcd"_s, u"bcda"_s, u"1 2 3 0m"_s);
    row("one more among equal ones", u"aaa"_s, u"aaaa"_s, u"0 1 2 new"_s);
    row("one less among equal ones", u"aaa"_s, u"aa"_s, u"0 1"_s);
    row("what is no row gives its entry to one", u"#"_s, u"ab"_s, u"0! new"_s);
}

void TestRowPlan::places()
{
    QFETCH(const QString, shown);
    QFETCH(const QString, wanted);
    QTEST(described(planned(shown, wanted)), "expected");
    QCOMPARE(fault(shown, wanted), QString());
}

void TestRowPlan::everyPlanLeadsToTheWantedRows()
{
    QRandomGenerator random(20240517);
    const auto word = [&random](int letters) {
        QString text;
        for (int length = random.bounded(14); length > 0; --length)
            text.append(QChar(u'a' + random.bounded(letters)));
        return text;
    };
    for (int i = 0; i < 20'000; ++i) {
        const int letters = 1 + i % 26;
        const QString shown = word(letters);
        const QString wanted = word(letters);
        QVERIFY2(fault(shown, wanted).isEmpty(),
                 qPrintable(shown + u" -> "_s + wanted + fault(shown, wanted)));
    }
}

void TestRowPlan::equalRowsAreKeptAsOftenAsTheyAreShown()
{
    QRandomGenerator random(7);
    for (int i = 0; i < 2'000; ++i) {
        QString shown = u"aabbccddee"_s.left(random.bounded(11));
        QString wanted = shown;
        std::shuffle(wanted.begin(), wanted.end(), random);
        for (const RowPlace &place : planned(shown, wanted))
            QVERIFY(place.isKept);
    }
}

TIDELOFT_TEST_MAIN(TestRowPlan)
#include "tst_row_plan.moc"
