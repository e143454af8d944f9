// Times of messages: what the service may write, and what a reader sees of it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/local_zone.h"
#include "tests/support/test_main.h"
#include "ui/texts/message_time.h"

#include <QJsonArray>
#include <QLocale>
#include <QTimeZone>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

namespace
{

const QLocale swedish(QLocale::Swedish, QLocale::Sweden);
const QLocale english(QLocale::English, QLocale::UnitedKingdom);

QDateTime noon()
{
    return {QDate(2024, 5, 17), QTime(12, 0)};
}

QJsonObject writtenAt(const QJsonValue &createdAt)
{
    return {{u"createdAt"_s, createdAt}};
}

} // namespace

class TestMessageTime : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tideloft::tests::setLocalZone(tideloft::tests::stockholm); }
    void cleanup() { QLocale::setDefault(QLocale::c()); }
    void readsCreatedAt_data();
    void readsCreatedAt();
    void hasTheLocalOffset();
    void momentsSideBySideAreConvertedAlike_data();
    void momentsSideBySideAreConvertedAlike();
    void clock_data();
    void clock();
    void conversationTime_data();
    void conversationTime();
    void conversationMonthFollowsTheLocale();
    void labelOfTheDay_data();
    void labelOfTheDay();
};

void TestMessageTime::readsCreatedAt_data()
{
    QTest::addColumn<QJsonObject>("item");
    QTest::addColumn<QString>("expected"); // empty: invalid
    const auto row = [](const char *name, const QJsonValue &createdAt, const QString &expected = {}) {
        QTest::newRow(name) << writtenAt(createdAt) << expected;
    };
    row("Z in summer", u"2024-07-01T22:30:00Z"_s, u"2024-07-02 00:30:00.000"_s);
    row("Z in winter", u"2024-01-01T23:30:00Z"_s, u"2024-01-02 00:30:00.000"_s);
    row("offset east", u"2024-07-01T12:00:00+05:30"_s, u"2024-07-01 08:30:00.000"_s);
    row("offset west", u"2024-07-01T20:00:00-08:00"_s, u"2024-07-02 06:00:00.000"_s);
    row("milliseconds", u"2024-07-01T10:00:01.234Z"_s, u"2024-07-01 12:00:01.234"_s);
    row("milliseconds and offset", u"2024-07-01T10:00:01.005+02:00"_s, u"2024-07-01 10:00:01.005"_s);
    row("without zone it is local already", u"2024-07-01T10:00:00"_s, u"2024-07-01 10:00:00.000"_s);
    row("the hour that summer time leaves out", u"2024-03-31T02:30:00"_s, u""_s);
    row("the hour that summer time repeats", u"2024-10-27T00:30:00Z"_s, u"2024-10-27 02:30:00.000"_s);
    row("the repeated hour again", u"2024-10-27T01:30:00Z"_s, u"2024-10-27 02:30:00.000"_s);
    row("without seconds", u"2024-07-01T10:00Z"_s, u"2024-07-01 12:00:00.000"_s);
    QTest::newRow("missing is now") << QJsonObject{} << u"2024-05-17 12:00:00.000"_s;
    row("words are unreadable", u"yesterday"_s);
    row("an empty text is unreadable", u""_s);
    row("a month that does not exist", u"2024-13-01T10:00:00Z"_s);
    row("null is present, and unreadable", QJsonValue::Null);
    row("a number is unreadable", 1719828000);
    row("an array is unreadable", QJsonArray{u"2024-07-01T10:00:00Z"_s});
}

void TestMessageTime::readsCreatedAt()
{
    QFETCH(const QJsonObject, item);
    QFETCH(const QString, expected);
    LocalTimes times;
    const QDateTime time = messageTime(item, noon(), times);
    QCOMPARE(time.isValid(), !expected.isEmpty());
    QCOMPARE(time.toString(u"yyyy-MM-dd HH:mm:ss.zzz"_s), expected);
}

void TestMessageTime::hasTheLocalOffset()
{
    LocalTimes times;
    QCOMPARE(messageTime(writtenAt(u"2024-07-01T22:30:00Z"_s), noon(), times).offsetFromUtc(), 2 * 3600);
}

void TestMessageTime::momentsSideBySideAreConvertedAlike_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::newRow("Stockholm") << tideloft::tests::stockholm;
    QTest::newRow("half an hour of summer time") << QByteArray("LHST-10:30LHDT-11,M10.1.0,M4.1.0");
    QTest::newRow("UTC") << QByteArray("UTC");
    QTest::newRow("west") << QByteArray("PST8PDT,M3.2.0,M11.1.0");
}

// Every quarter of an hour of two years, forwards and then back and forth, over all changes of the clocks.
void TestMessageTime::momentsSideBySideAreConvertedAlike()
{
    QFETCH(const QByteArray, zone);
    tideloft::tests::setLocalZone(zone);
    LocalTimes times;
    const qint64 begin = QDateTime(QDate(2023, 1, 1), QTime(0, 0), QTimeZone::utc()).toSecsSinceEpoch();
    for (qint64 i = 0; i < 2LL * 366 * 96; ++i) {
        const qint64 second = begin + (i % 7 == 6 ? i * 31 % (2LL * 366 * 96) : i) * 900;
        const QDateTime moment = QDateTime::fromSecsSinceEpoch(second).toUTC();
        const QDateTime expected = moment.toLocalTime();
        const QDateTime local = times.local(moment);
        if (local.date() != expected.date() || local.time() != expected.time() || local != expected)
            QCOMPARE(local, expected);
    }
    tideloft::tests::setLocalZone(tideloft::tests::stockholm);
}

void TestMessageTime::clock_data()
{
    QTest::addColumn<QDateTime>("time");
    QTest::addColumn<QString>("expected");
    const QDate day(2024, 5, 17);
    QTest::newRow("midnight") << QDateTime(day, QTime(0, 0)) << u"00:00"_s;
    QTest::newRow("two digits each") << QDateTime(day, QTime(7, 5)) << u"07:05"_s;
    QTest::newRow("24 hours, seconds dropped") << QDateTime(day, QTime(23, 59, 59)) << u"23:59"_s;
    QTest::newRow("an invalid time is empty") << QDateTime() << QString();
}

void TestMessageTime::clock()
{
    QFETCH(const QDateTime, time);
    QFETCH(const QString, expected);
    QCOMPARE(clockText(time), expected);
}

void TestMessageTime::conversationTime_data()
{
    QTest::addColumn<QJsonObject>("item");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const QString &createdAt, const QString &expected) {
        QTest::newRow(name) << writtenAt(createdAt) << expected;
    };
    row("today shows hours and minutes", u"2024-05-17T06:05:59Z"_s, u"08:05"_s);
    row("today begins at local midnight", u"2024-05-16T22:00:00Z"_s, u"00:00"_s);
    row("a second before is yesterday", u"2024-05-16T21:59:59Z"_s, u"16 May"_s);
    row("yesterday shows day and month", u"2024-05-16T10:00:00Z"_s, u"16 May"_s);
    row("the day has no leading zero", u"2024-05-02T10:00:00Z"_s, u"2 May"_s);
    row("the same day of another year", u"2023-05-17T10:00:00Z"_s, u"17 May"_s);
    row("tomorrow, by a clock that is ahead", u"2024-05-17T22:00:00Z"_s, u"18 May"_s);
    row("unreadable is empty", u"soon"_s, {});
    QTest::newRow("missing is empty") << QJsonObject{} << QString();
    QTest::newRow("a number is empty") << writtenAt(5) << QString();
}

void TestMessageTime::conversationTime()
{
    QFETCH(const QJsonObject, item);
    QFETCH(const QString, expected);
    QLocale::setDefault(english);
    QCOMPARE(conversationTimeText(item, noon()), expected);
}

void TestMessageTime::conversationMonthFollowsTheLocale()
{
    QLocale::setDefault(swedish);
    QCOMPARE(conversationTimeText(writtenAt(u"2024-05-16T10:00:00Z"_s), noon()), u"16 maj"_s);
}

void TestMessageTime::labelOfTheDay_data()
{
    QTest::addColumn<QDate>("day");
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("inEnglish");
    QTest::addColumn<QString>("inSwedish");
    const auto row = [](const char *name, QDate day, const QString &inEnglish, const QString &inSwedish,
                        const QLocale &locale = english) {
        QTest::newRow(name) << day << locale << inEnglish << inSwedish;
    };
    row("today", {2024, 1, 1}, u"Today"_s, u"Idag"_s);
    row("yesterday, a year back", {2023, 12, 31}, u"Yesterday"_s, u"Igår"_s);
    row("two days back", {2023, 12, 30}, u"30 December 2023"_s, u"30 December 2023"_s);
    row("tomorrow has a date", {2024, 1, 2}, u"2 January 2024"_s, u"2 January 2024"_s);
    row("today of another year", {2023, 1, 1}, u"1 January 2023"_s, u"1 January 2023"_s);
    row("the month follows the locale, not the language", {2023, 1, 5}, u"5 januari 2023"_s,
        u"5 januari 2023"_s, swedish);
    row("today follows the language, not the locale", {2024, 1, 1}, u"Today"_s, u"Idag"_s, swedish);
    row("no date, no label", {}, {}, {});
}

void TestMessageTime::labelOfTheDay()
{
    QFETCH(const QDate, day);
    QFETCH(const QLocale, locale);
    QFETCH(const QString, inEnglish);
    QFETCH(const QString, inSwedish);
    QLocale::setDefault(locale);
    const QDate today(2024, 1, 1);
    QCOMPARE(dayLabel(day, today, Language::English), inEnglish);
    QCOMPARE(dayLabel(day, today, Language::Swedish), inSwedish);
}

TIDELOFT_TEST_MAIN(TestMessageTime)
#include "tst_message_time.moc"
