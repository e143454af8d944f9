// Which messages stand together: senders, seconds and dates.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/local_zone.h"
#include "tests/support/test_main.h"
#include "ui/messages/history_groups.h"

using namespace Qt::StringLiterals;
using namespace tideloft::ui;
using enum GroupPosition;

namespace
{

using Moments = QList<QPair<QString, int>>; // the sender, and the second of the day
using Positions = QList<GroupPosition>;

constexpr int unreadable = -1'000'000;

QDateTime moment(int second)
{
    if (second == unreadable)
        return {};
    return QDateTime(QDate(2024, 5, 17), QTime(0, 0)).addSecs(second);
}

QList<DisplayRecord> records(const Moments &moments)
{
    QList<DisplayRecord> all;
    for (const auto &[from, second] : moments)
        all.append({.from = from, .text = u"text"_s, .time = moment(second), .isMine = false});
    return all;
}

Moments bobAt(const QList<int> &seconds)
{
    Moments moments;
    for (const int second : seconds)
        moments.append({u"bob"_s, second});
    return moments;
}

} // namespace

class TestHistoryGroups : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tideloft::tests::setLocalZone(tideloft::tests::stockholm); }
    void times_data();
    void times();
    void senders_data();
    void senders();
    void localDateDecidesNotTheZoneOfWriting();
    void textAndSideDoNotMatter();
};

void TestHistoryGroups::times_data()
{
    QTest::addColumn<QList<int>>("seconds");
    QTest::addColumn<Positions>("expected");
    constexpr int noon = 43200;
    constexpr int midnight = 86400;
    const auto row = [](const char *name, const QList<int> &seconds, const Positions &expected) {
        QTest::newRow(name) << seconds << expected;
    };
    row("none", {}, {});
    row("alone", {noon}, {Single});
    row("299 s apart are grouped", {noon, noon + 299}, {First, Last});
    row("300 s apart are not grouped", {noon, noon + 300}, {Single, Single});
    row("at the same second", {noon, noon}, {First, Last});
    row("three a minute apart", {noon, noon + 60, noon + 120}, {First, Middle, Last});
    row("each is measured from the one before", {noon, noon + 299, noon + 598}, {First, Middle, Last});
    row("two groups", {noon, noon + 1, noon + 400, noon + 401}, {First, Last, First, Last});
    row("23:59 and 00:01: single, then last", {midnight - 60, midnight + 60}, {Single, Last});
    row("a group over midnight loses its end mark", {midnight - 120, midnight - 60, midnight + 60},
        {First, Last, Last});
    row("a group after midnight starts as middle", {midnight - 60, midnight + 60, midnight + 90},
        {Single, Middle, Last});
    row("300 s over midnight", {midnight - 150, midnight + 150}, {Single, Single});
    row("a time that goes back still joins", {noon, noon - 3600}, {First, Last});
    row("back over midnight joins the one before only", {midnight + 60, midnight - 60}, {Single, Last});
    row("an unreadable time first", {unreadable, noon}, {Single, Last});
    row("an unreadable time joins the one before", {noon, unreadable}, {Single, Last});
    row("an unreadable time between two", {noon, unreadable, noon + 1}, {Single, Last, Last});
    row("hours apart, with an unreadable time between", {0, unreadable, noon}, {Single, Last, Last});
    row("two unreadable times", {unreadable, unreadable}, {First, Last});
}

void TestHistoryGroups::times()
{
    QFETCH(const QList<int>, seconds);
    QFETCH(const Positions, expected);
    QCOMPARE(groupPositions(records(bobAt(seconds))), expected);
}

void TestHistoryGroups::senders_data()
{
    QTest::addColumn<Moments>("moments");
    QTest::addColumn<Positions>("expected");
    const auto row = [](const char *name, const Moments &moments, const Positions &expected) {
        QTest::newRow(name) << moments << expected;
    };
    row("another sender parts", {{u"bob"_s, 0}, {u"alice"_s, 1}}, {Single, Single});
    row("back to the first sender", {{u"bob"_s, 0}, {u"alice"_s, 1}, {u"bob"_s, 2}},
        {Single, Single, Single});
    row("letter case does not part", {{u"Bob"_s, 0}, {u"bob"_s, 1}, {u"BOB"_s, 2}}, {First, Middle, Last});
    row("Swedish letter case does not part", {{u"Åke"_s, 0}, {u"åke"_s, 1}}, {First, Last});
    row("an empty sender first joins the empty record before", {{QString(), 0}}, {Last});
    row("two empty senders first", {{QString(), 0}, {QString(), 1}}, {Middle, Last});
    row("an empty sender later starts its own group", {{u"bob"_s, 0}, {QString(), 1}, {QString(), 2}},
        {Single, First, Last});
}

void TestHistoryGroups::senders()
{
    QFETCH(const Moments, moments);
    QFETCH(const Positions, expected);
    QCOMPARE(groupPositions(records(moments)), expected);
}

void TestHistoryGroups::localDateDecidesNotTheZoneOfWriting()
{
    QList<DisplayRecord> two = records(bobAt({0, 0}));
    // One day here, two days in UTC.
    two[0].time = QDateTime::fromString(u"2024-05-16T23:59:00Z"_s, Qt::ISODate).toLocalTime();
    two[1].time = QDateTime::fromString(u"2024-05-17T00:01:00Z"_s, Qt::ISODate).toLocalTime();
    QCOMPARE(groupPositions(two), (Positions{First, Last}));
}

void TestHistoryGroups::textAndSideDoNotMatter()
{
    QList<DisplayRecord> two = records(bobAt({0, 1}));
    two[0].text = u"another"_s;
    two[1].isMine = true;
    QCOMPARE(groupPositions(two), (Positions{First, Last}));
}

TIDELOFT_TEST_MAIN(TestHistoryGroups)
#include "tst_history_groups.moc"
