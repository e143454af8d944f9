// The chat history: which replies are taken, and how messages are grouped.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QDateTime>
#include <QScrollBar>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

/// SECONDS after the noon of a day long ago, as the service writes it.
QString atNoon(int seconds)
{
    return QDate(2021, 3, 7).startOfDay().addSecs(12 * 3600 + seconds).toUTC().toString(Qt::ISODateWithMs);
}

const QString thatDay = u"== 7 March 2021"_s;

} // namespace

class TestChatHistory : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { failOnToolkitWarnings(); }
    void replyForAnotherPeerIsDropped();
    void replyForAnotherLetterCaseIsDropped();
    void emptyHistoryClearsTheView_data();
    void emptyHistoryClearsTheView();
    void failedHistoryLeavesTheView_data();
    void failedHistoryLeavesTheView();
    void itemsAreShown_data();
    void itemsAreShown();
    void messageWithoutTimeIsOfNow();
    void everyReplyScrollsToTheBottom();

private:
    ChatWindow chat;
};

void TestChatHistory::initTestCase()
{
    failOnToolkitWarnings();
    QVERIFY(chat.signIn());
    QVERIFY(chat.open(u"bob"_s));
}

void TestChatHistory::replyForAnotherPeerIsDropped()
{
    chat.service.answer("GET /api/chat/history/eve", 200, json({plainMessage(u"eve"_s, u"late"_s)}));
    chat.service.hold("GET /api/chat/history/eve");
    QVERIFY(chat.showConversations({QJsonObject{{u"peer"_s, u"eve"_s}}, QJsonObject{{u"peer"_s, u"bob"_s}}}));
    chat.click(chat.dmList(), 0);
    QTRY_COMPARE(chat.service.heldCount("GET /api/chat/history/eve"), 1);
    chat.service.answer(requests::historyWithBob, 200, json({plainMessage(u"bob"_s, u"hi"_s, atNoon(0))}));
    chat.click(chat.dmList(), 1);
    const QStringList shown{thatDay, u"[BO] bob: hi @12:00"_s};
    QTRY_COMPARE(shownHistory(chat.messageList()), shown);
    QSignalSpy cleared(chat.messageList()->model(), &QAbstractItemModel::modelReset);
    QSignalSpy added(chat.messageList()->model(), &QAbstractItemModel::rowsInserted);
    chat.service.release("GET /api/chat/history/eve");
    QVERIFY(chat.settle());
    QCOMPARE(cleared.count() + added.count(), 0);
    QCOMPARE(shownHistory(chat.messageList()), shown);
}

void TestChatHistory::replyForAnotherLetterCaseIsDropped()
{
    chat.service.answer("GET /api/chat/history/Bob", 200, json({plainMessage(u"Bob"_s, u"late"_s)}));
    chat.service.hold("GET /api/chat/history/Bob");
    QVERIFY(chat.showConversations({QJsonObject{{u"peer"_s, u"Bob"_s}}, QJsonObject{{u"peer"_s, u"bob"_s}}}));
    chat.click(chat.dmList(), 0);
    QTRY_COMPARE(chat.service.heldCount("GET /api/chat/history/Bob"), 1);
    QVERIFY(chat.open(u"bob"_s));
    QSignalSpy cleared(chat.messageList()->model(), &QAbstractItemModel::modelReset);
    QSignalSpy added(chat.messageList()->model(), &QAbstractItemModel::rowsInserted);
    chat.service.release("GET /api/chat/history/Bob");
    QVERIFY(chat.settle());
    QCOMPARE(cleared.count() + added.count(), 0);
    QCOMPARE(chat.messageList()->count(), 0);
}

void TestChatHistory::emptyHistoryClearsTheView_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("no messages") << QByteArray("[]");
    QTest::newRow("an object instead of a list") << QByteArray(R"({"items":[{"from":"bob","text":"x"}]})");
    QTest::newRow("no JSON") << QByteArray("<html>hello</html>");
    QTest::newRow("empty body") << QByteArray();
    QTest::newRow("nothing but other things") << QByteArray(R"([1, "x", null, ["y"]])");
}

void TestChatHistory::emptyHistoryClearsTheView()
{
    QFETCH(const QByteArray, body);
    QVERIFY(chat.showHistory(u"bob"_s, {plainMessage(u"bob"_s, u"hi"_s)}));
    QCOMPARE(chat.messageList()->count(), 2);
    chat.service.answer(requests::historyWithBob, 200, body);
    chat.refresh();
    QTRY_COMPARE(chat.messageList()->count(), 0);
}

void TestChatHistory::failedHistoryLeavesTheView_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("with a message") << 500 << QByteArray(R"({"message":"broken"})");
    QTest::newRow("signed out, with a page") << 401 << QByteArray("<html>sign in</html>");
    QTest::newRow("down, without a body") << 503 << QByteArray();
}

void TestChatHistory::failedHistoryLeavesTheView()
{
    QFETCH(const int, status);
    QFETCH(const QByteArray, body);
    QVERIFY(chat.showHistory(u"bob"_s, {plainMessage(u"bob"_s, u"hi"_s, atNoon(0))}));
    QSignalSpy cleared(chat.messageList()->model(), &QAbstractItemModel::modelReset);
    QSignalSpy added(chat.messageList()->model(), &QAbstractItemModel::rowsInserted);
    chat.service.answer(requests::historyWithBob, status, body);
    chat.refresh();
    QVERIFY(chat.settle());
    QCOMPARE(cleared.count() + added.count(), 0);
    QCOMPARE(shownHistory(chat.messageList()), QStringList({thatDay, u"[BO] bob: hi @12:00"_s}));
    QVERIFY(!QApplication::activeModalWidget());
}

void TestChatHistory::itemsAreShown_data()
{
    QTest::addColumn<QJsonArray>("items");
    QTest::addColumn<QStringList>("lines");
    const auto bob = [](const QString &text, int seconds) {
        return plainMessage(u"bob"_s, text, atNoon(seconds));
    };
    const auto by = [](const QString &from, int seconds) {
        return plainMessage(from, u"x"_s, atNoon(seconds));
    };
    QTest::newRow("three messages a minute apart: first, middle, last")
        << QJsonArray{bob(u"1"_s, 0), bob(u"2"_s, 60), bob(u"3"_s, 120)}
        << QStringList{u"[BO] bob: 1"_s, u"[] 2"_s, u"[] 3 @12:02"_s};
    QTest::newRow("299 s apart: grouped")
        << QJsonArray{bob(u"1"_s, 0), bob(u"2"_s, 299)} << QStringList{u"[BO] bob: 1"_s, u"[] 2 @12:04"_s};
    QTest::newRow("300 s apart: not grouped")
        << QJsonArray{bob(u"1"_s, 0), bob(u"2"_s, 300)}
        << QStringList{u"[BO] bob: 1 @12:00"_s, u"[BO] bob: 2 @12:05"_s};
    QTest::newRow("capital first letter: grouped")
        << QJsonArray{by(u"Bob"_s, 0), by(u"bob"_s, 1)} << QStringList{u"[BO] Bob: x"_s, u"[] x @12:00"_s};
    QTest::newRow("own name in other letter case: both own")
        << QJsonArray{by(u"Alice"_s, 0), by(u" aLICE "_s, 1)} << QStringList{u"(me) x"_s, u"(me) x @12:00"_s};
    QTest::newRow("senders in turn: all single")
        << QJsonArray{by(u"bob"_s, 0), by(u"alice"_s, 1), by(u"bob"_s, 2)}
        << QStringList{u"[BO] bob: x @12:00"_s, u"(me) x @12:00"_s, u"[BO] bob: x @12:00"_s};
    QTest::newRow("sender of one letter") << QJsonArray{by(u"b"_s, 0)} << QStringList{u"[B] b: x @12:00"_s};
    QTest::newRow("other things between: skipped") << QJsonArray{1, bob(u"1"_s, 0), u"x"_s, bob(u"2"_s, 1)}
                                                   << QStringList{u"[BO] bob: 1"_s, u"[] 2 @12:00"_s};
    QTest::newRow("blank text") << QJsonArray{bob({}, 0)} << QStringList{u"[BO] bob:  @12:00"_s};
    QTest::newRow("the first without a sender continues nobody's group")
        << QJsonArray{by({}, 0)} << QStringList{u"[] x @12:00"_s};
}

void TestChatHistory::itemsAreShown()
{
    QFETCH(const QJsonArray, items);
    QFETCH(const QStringList, lines);
    QVERIFY(chat.showHistory(u"bob"_s, items));
    QCOMPARE(shownHistory(chat.messageList()), QStringList{thatDay} + lines);
}

void TestChatHistory::messageWithoutTimeIsOfNow()
{
    const QDateTime before = QDateTime::currentDateTime();
    QVERIFY(chat.showHistory(u"bob"_s, {plainMessage(u"bob"_s, u"hi"_s)}));
    const auto lines = [](const QDateTime &time) {
        return QStringList{u"== Today"_s, u"[BO] bob: hi @"_s + time.toString(u"HH:mm"_s)};
    };
    const QStringList shown = shownHistory(chat.messageList());
    if (shown != lines(before)) // a minute may have ended meanwhile
        QCOMPARE(shown, lines(QDateTime::currentDateTime()));
}

void TestChatHistory::everyReplyScrollsToTheBottom()
{
    QJsonArray items;
    for (int i = 0; i < 60; ++i)
        items.append(plainMessage(u"bob"_s, u"message %1"_s.arg(i), atNoon(i)));
    QVERIFY(chat.showHistory(u"bob"_s, items));
    const QScrollBar *bar = chat.messageList()->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 500);
    QTRY_COMPARE(bar->value(), bar->maximum());
    chat.messageList()->verticalScrollBar()->setValue(0);
    QCOMPARE(bar->value(), 0);
    QVERIFY(chat.showHistory(u"bob"_s, items));
    QTRY_COMPARE(bar->value(), bar->maximum());
    QVERIFY(bar->maximum() > 500);
}

TIDELOFT_GUI_TEST_MAIN(TestChatHistory)
#include "tst_chat_history.moc"
