// Days in the chat history: the separators between them, and groups that reach over midnight.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/local_zone.h"
#include "tests/support/midnight.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QDateTime>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

/// Hours and minutes of DAY in Stockholm, as the service writes them.
QString at(QDate day, int hours, int minutes = 0)
{
    return QDateTime(day, QTime(hours, minutes)).toUTC().toString(Qt::ISODateWithMs);
}

QJsonObject bob(const QString &createdAt)
{
    return plainMessage(u"bob"_s, u"x"_s, createdAt);
}

} // namespace

class TestChatDays : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { failOnToolkitWarnings(); }
    void daysAreParted_data();
    void daysAreParted();
    void timesThatCannotBeRead_data();
    void timesThatCannotBeRead();

private:
    ChatWindow chat;
};

void TestChatDays::initTestCase()
{
    failOnToolkitWarnings();
    setLocalZone(stockholm);
    QCOMPARE(at({2021, 7, 1}, 0), u"2021-06-30T22:00:00.000Z"_s);
    stayAwayFromMidnight();
    QVERIFY(chat.signIn());
    QVERIFY(chat.open(u"bob"_s));
}

void TestChatDays::daysAreParted_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QJsonArray>("items");
    QTest::addColumn<QStringList>("lines");
    const QDate today = QDate::currentDate();
    const QDate yesterday = today.addDays(-1);
    const QString line = u"[BO] bob: x @12:00"_s;
    QTest::newRow("today, English") << 1 << QJsonArray{bob(at(today, 12))}
                                    << QStringList{u"== Today"_s, line};
    QTest::newRow("today, Swedish") << 0 << QJsonArray{bob(at(today, 12))} << QStringList{u"== Idag"_s, line};
    QTest::newRow("yesterday, English")
        << 1 << QJsonArray{bob(at(yesterday, 12))} << QStringList{u"== Yesterday"_s, line};
    QTest::newRow("yesterday, Swedish")
        << 0 << QJsonArray{bob(at(yesterday, 12))} << QStringList{u"== Igår"_s, line};
    QTest::newRow("long ago: day, month and year, in the locale's words whatever the language")
        << 0 << QJsonArray{bob(at({2021, 7, 1}, 12))} << QStringList{u"== 1 July 2021"_s, line};
    QTest::newRow("the local date counts, not that of UTC")
        << 1 << QJsonArray{bob(u"2021-06-30T22:30:00Z"_s)}
        << QStringList{u"== 1 July 2021"_s, u"[BO] bob: x @00:30"_s};
    QTest::newRow("one separator a day")
        << 1 << QJsonArray{bob(at(yesterday, 12)), bob(at(yesterday, 14)), bob(at(today, 12))}
        << QStringList{u"== Yesterday"_s, line, u"[BO] bob: x @14:00"_s, u"== Today"_s, line};
    QTest::newRow("23:59 and 00:01: single above the separator, last below it")
        << 1 << QJsonArray{bob(at(yesterday, 23, 59)), bob(at(today, 0, 1))}
        << QStringList{u"== Yesterday"_s, u"[BO] bob: x @23:59"_s, u"== Today"_s, u"[] x @00:01"_s};
    QTest::newRow("a group that goes on after midnight")
        << 1 << QJsonArray{bob(at(yesterday, 23, 59)), bob(at(today, 0, 1)), bob(at(today, 0, 2))}
        << QStringList{u"== Yesterday"_s, u"[BO] bob: x @23:59"_s, u"== Today"_s, u"[] x"_s,
                       u"[] x @00:02"_s};
}

void TestChatDays::daysAreParted()
{
    QFETCH(const int, language);
    QFETCH(const QJsonArray, items);
    chat.window.setLanguageIndex(language);
    QVERIFY(chat.showHistory(u"bob"_s, items));
    chat.window.setLanguageIndex(1);
    QTEST(shownHistory(chat.messageList()), "lines");
}

void TestChatDays::timesThatCannotBeRead_data()
{
    QTest::addColumn<QJsonArray>("items");
    QTest::addColumn<QStringList>("lines");
    const QJsonObject unreadable = bob(u"soon"_s);
    const QJsonObject dated = bob(at({2021, 7, 1}, 12));
    const QString day = u"== 1 July 2021"_s;
    QTest::newRow("the first: no separator, no time")
        << QJsonArray{unreadable} << QStringList{u"[BO] bob: x"_s};
    QTest::newRow("after a dated one: a separator without a label, joined to the one before")
        << QJsonArray{dated, unreadable} << QStringList{day, u"[BO] bob: x @12:00"_s, u"== "_s, u"[] x"_s};
    QTest::newRow("before a dated one: not joined to it, which joins all the same")
        << QJsonArray{unreadable, dated} << QStringList{u"[BO] bob: x"_s, day, u"[] x @12:00"_s};
    QTest::newRow("two: one group") << QJsonArray{unreadable, unreadable}
                                    << QStringList{u"[BO] bob: x"_s, u"[] x"_s};
    QTest::newRow("of another sender: not joined")
        << QJsonArray{plainMessage(u"alice"_s, u"x"_s, at({2021, 7, 1}, 12)), unreadable}
        << QStringList{day, u"(me) x @12:00"_s, u"== "_s, u"[BO] bob: x"_s};
    QTest::newRow("a number for a time")
        << QJsonArray{QJsonObject{{u"from"_s, u"bob"_s}, {u"text"_s, u"x"_s}, {u"createdAt"_s, 1.0}}}
        << QStringList{u"[BO] bob: x"_s};
}

void TestChatDays::timesThatCannotBeRead()
{
    QFETCH(const QJsonArray, items);
    QVERIFY(chat.showHistory(u"bob"_s, items));
    QTEST(shownHistory(chat.messageList()), "lines");
}

TIDELOFT_GUI_TEST_MAIN(TestChatDays)
#include "tst_chat_days.moc"
