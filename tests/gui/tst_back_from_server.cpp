// A conversation while a server is on screen: it stays open, is refreshed unseen, and comes back at once.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/request_names.h"
#include "tests/support/sealed_messages.h"
#include "tests/support/test_main.h"

#include <QAbstractButton>
#include <QJsonDocument>
#include <QPushButton>
#include <QStackedWidget>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

const QJsonArray ones{QJsonObject{{u"groupId"_s, u"g1"_s}, {u"name"_s, u"One"_s}}};

QAbstractButton *buttonWith(const ChatWindow &chat, const QString &text)
{
    for (auto *button : chat.window.findChildren<QAbstractButton *>()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

/// Opens the only server, by a click or as it opens half a second after it was made.
bool openServer(ChatWindow &chat, const QString &way = u"click"_s)
{
    chat.service.answer("GET /api/groups", 200, json(ones));
    if (!QMetaObject::invokeMethod(&chat.window, "onServersLoaded", Q_ARG(QJsonArray, ones)))
        return false;
    if (way == u"click")
        QTest::mouseClick(buttonWith(chat, u"O"_s), Qt::LeftButton);
    else
        QMetaObject::invokeMethod(&chat.window, "onServerCreated", Q_ARG(QJsonObject, ones[0].toObject()));
    return waitFor([&chat] { return chat.child<QLabel>("centerTitle")->text() == u"One"; });
}

bool isNotice(const QListWidget *list)
{
    const auto *label = list->count() == 1 ? list->itemWidget(list->item(0))->findChild<QLabel *>() : nullptr;
    return label && label->text().startsWith(u"Server chat coming soon.");
}

/// The ways back that a person has: "Messages" in the rail, "Back to chat" in the settings, the conversation.
void goBack(ChatWindow &chat, const QString &way)
{
    if (way == u"settings") {
        QTest::mouseClick(buttonWith(chat, u"⚙"_s), Qt::LeftButton);
        QTest::mouseClick(buttonWith(chat, u"←  Back to chat"_s), Qt::LeftButton);
    } else if (way == u"messages") {
        QTest::mouseClick(buttonWith(chat, u"💬"_s), Qt::LeftButton);
    } else {
        chat.click(chat.dmList(), 0);
    }
}

} // namespace

class TestBackFromServer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { makeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void theConversationIsBackAtOnce_data();
    void theConversationIsBackAtOnce();
    void everyTickAsksForItsHistory();
    void noHistoryIsDrawnOverTheNotice();
    void whatCameMeanwhileIsShown();
    void beforeItsFirstHistoryTheListIsEmpty();
    void anotherConversationShowsNoNotice();
    void nothingCanBeWrittenToAServer();
    void theServerGetsTheKeyboardOfTheLine();
    void aMessageUnderWayIsSent();
    void withoutAConversationMessagesShowTheEmptyState();
    void afterTheLogOutNothingIsLeft();
};

void TestBackFromServer::theConversationIsBackAtOnce_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<QString>("back");
    for (const QString &way : {u"click"_s, u"creation"_s}) {
        for (const QString &back : {u"messages"_s, u"settings"_s, u"conversation"_s})
            QTest::addRow("%s, back by %s", qPrintable(way), qPrintable(back)) << way << back;
    }
}

void TestBackFromServer::theConversationIsBackAtOnce()
{
    QFETCH(QString, way);
    QFETCH(QString, back);
    ChatWindow chat;
    QVERIFY(chat.signIn());
    // With times of their own: what has none shows the time of its latest reading.
    QVERIFY(chat.open(u"bob"_s, {plainMessage(u"bob"_s, u"Ahoy"_s, u"2026-03-07T12:00:00Z"_s),
                                 plainMessage(u"alice"_s, u"Hi"_s, u"2026-03-07T12:01:00Z"_s)}));
    const QStringList before = shownHistory(chat.messageList());
    QCOMPARE(before.size(), 3);
    QVERIFY(openServer(chat, way));
    QVERIFY(isNotice(chat.messageList()));
    chat.service.hold(requests::historyWithBob); // no reply helps
    goBack(chat, back);
    QCOMPARE(shownHistory(chat.messageList()), before);
    QCOMPARE(chat.child<QLabel>("centerTitle")->text(), u"bob"_s);
    QCOMPARE(chat.child<QLabel>("centerSubtitle")->text(), u"🔒 End-to-end encrypted"_s);
    QCOMPARE(chat.child<QLabel>("peerAvatar")->text(), u"BO"_s);
    QVERIFY(chat.msgInput()->isVisible());
    QVERIFY(chat.msgInput()->hasFocus());
    chat.service.release(requests::historyWithBob);
    QVERIFY(chat.settle());
}

void TestBackFromServer::everyTickAsksForItsHistory()
{
    ChatWindow chat;
    QVERIFY(chat.signIn());
    QVERIFY(chat.open(u"bob"_s));
    QVERIFY(openServer(chat));
    const qsizetype before = chat.service.count(requests::historyWithBob);
    chat.refresh();
    chat.refresh();
    QVERIFY(chat.service.waitForRequests(requests::historyWithBob, before + 2));
}

void TestBackFromServer::noHistoryIsDrawnOverTheNotice()
{
    ChatWindow chat;
    QVERIFY(chat.signIn());
    QVERIFY(chat.open(u"bob"_s, {plainMessage(u"bob"_s, u"Ahoy"_s)}));
    QVERIFY(openServer(chat));
    QVERIFY(chat.showHistory(u"bob"_s, {plainMessage(u"bob"_s, u"Are you there?"_s)}));
    QVERIFY(isNotice(chat.messageList()));
    QVERIFY(chat.showHistory(u"bob"_s, {}));
    QVERIFY(isNotice(chat.messageList()));
    QTest::mouseClick(buttonWith(chat, u"⚙"_s), Qt::LeftButton);
    QVERIFY(chat.showHistory(u"bob"_s, {plainMessage(u"bob"_s, u"Hello?"_s)}));
    QVERIFY(isNotice(chat.messageList()));
    QCOMPARE(chat.child<QLabel>("centerTitle")->text(), u"One"_s);
}

void TestBackFromServer::whatCameMeanwhileIsShown()
{
    ChatWindow chat;
    QVERIFY(chat.signIn());
    QVERIFY(chat.open(u"bob"_s, {plainMessage(u"bob"_s, u"Ahoy"_s)}));
    QVERIFY(openServer(chat));
    QVERIFY(chat.showHistory(
        u"bob"_s, {plainMessage(u"bob"_s, u"Ahoy"_s), plainMessage(u"alice"_s, u"From my phone"_s)}));
    goBack(chat, u"messages"_s);
    const QStringList shown = shownHistory(chat.messageList());
    QCOMPARE(shown.size(), 3);
    QVERIFY(shown.last().startsWith(u"(me) From my phone"));
}

void TestBackFromServer::beforeItsFirstHistoryTheListIsEmpty()
{
    ChatWindow chat;
    QVERIFY(chat.signIn());
    QVERIFY(chat.open(u"bob"_s, {plainMessage(u"bob"_s, u"Ahoy"_s)}));
    QVERIFY(chat.showConversations({QJsonObject{{u"peer"_s, u"eve"_s}}}));
    chat.service.hold("GET /api/chat/history/eve");
    chat.click(chat.dmList(), 0);
    QVERIFY(openServer(chat));
    goBack(chat, u"messages"_s);
    QCOMPARE(chat.child<QLabel>("centerTitle")->text(), u"eve"_s);
    QCOMPARE(shownHistory(chat.messageList()), QStringList()); // and nothing of bob's
    chat.service.release("GET /api/chat/history/eve");
}

void TestBackFromServer::anotherConversationShowsNoNotice()
{
    ChatWindow chat;
    QVERIFY(chat.signIn());
    QVERIFY(chat.open(u"bob"_s, {plainMessage(u"bob"_s, u"Ahoy"_s)}));
    QVERIFY(openServer(chat));
    QVERIFY(chat.showConversations({QJsonObject{{u"peer"_s, u"eve"_s}}}));
    chat.service.hold("GET /api/chat/history/eve");
    chat.click(chat.dmList(), 0);
    QCOMPARE(shownHistory(chat.messageList()), QStringList());
    QVERIFY(chat.msgInput()->isEnabled());
    chat.service.release("GET /api/chat/history/eve");
}

void TestBackFromServer::nothingCanBeWrittenToAServer()
{
    ChatWindow chat;
    QVERIFY(chat.signIn());
    QVERIFY(chat.open(u"bob"_s));
    QTest::keyClicks(chat.msgInput(), u"half a thought"_s);
    QVERIFY(openServer(chat));
    QVERIFY(!chat.msgInput()->isEnabled());
    QVERIFY(!chat.sendButton()->isEnabled());
    QCOMPARE(chat.msgInput()->text(), u"half a thought"_s);
    QMetaObject::invokeMethod(&chat.window, "onSendClicked");
    QTest::mouseClick(chat.sendButton(), Qt::LeftButton);
    QVERIFY(chat.settle());
    QCOMPARE(chat.service.count(requests::keysOfBob), 0);
    goBack(chat, u"messages"_s);
    QVERIFY(chat.msgInput()->isEnabled());
    QVERIFY(chat.sendButton()->isEnabled());
    QCOMPARE(chat.msgInput()->text(), u"half a thought"_s);
}

// A line that can no longer be written in would hand the keyboard to whatever comes next.
void TestBackFromServer::theServerGetsTheKeyboardOfTheLine()
{
    ChatWindow chat;
    QVERIFY(chat.signIn());
    QVERIFY(chat.open(u"bob"_s));
    QVERIFY(chat.msgInput()->hasFocus());
    QVERIFY(openServer(chat, u"creation"_s));
    QTRY_COMPARE(chat.window.focusWidget(), buttonWith(chat, u"O"_s)); // once it is shown
}

void TestBackFromServer::aMessageUnderWayIsSent()
{
    const KeyPair bobs = makeKeyPair();
    ChatWindow chat;
    QVERIFY(chat.signIn());
    QVERIFY(chat.open(u"bob"_s));
    chat.service.answer(requests::keysOfBob, 200,
                        objectJson({{u"keys"_s, QJsonArray{bobs.device(u"laptop"_s)}}}));
    chat.service.answer(requests::sendMessage, 200, "{}");
    chat.service.hold(requests::keysOfBob);
    QTest::keyClicks(chat.msgInput(), u"under way"_s);
    QTest::keyClick(chat.msgInput(), Qt::Key_Return);
    QTRY_COMPARE(chat.service.heldCount(requests::keysOfBob), 1);
    QVERIFY(openServer(chat));
    const qsizetype before = chat.service.count(requests::historyWithBob);
    chat.service.release(requests::keysOfBob);
    QVERIFY(chat.service.waitForRequests(requests::sendMessage, 1));
    const QJsonObject body =
        QJsonDocument::fromJson(chat.service.lastRequest(requests::sendMessage).body).object();
    QCOMPARE(body[u"to"], QJsonValue(u"bob"_s));
    QCOMPARE(openedBody(body, u"recipientKeys"_s, bobs, u"laptop"_s), u"under way"_s);
    QTRY_COMPARE(chat.msgInput()->text(), QString());
    QVERIFY(chat.service.waitForRequests(requests::historyWithBob, before + 1));
    QVERIFY(isNotice(chat.messageList()));
}

void TestBackFromServer::withoutAConversationMessagesShowTheEmptyState()
{
    ChatWindow chat;
    QVERIFY(chat.signIn());
    QVERIFY(openServer(chat));
    goBack(chat, u"messages"_s);
    QCOMPARE(chat.child<QWidget>("emptyState")->isVisible(), true);
    QVERIFY(chat.showConversations({QJsonObject{{u"peer"_s, u"bob"_s}}}));
    chat.click(chat.dmList(), 0);
    QVERIFY(chat.msgInput()->isEnabled());
    QVERIFY(!isNotice(chat.messageList()));
}

void TestBackFromServer::afterTheLogOutNothingIsLeft()
{
    ChatWindow chat;
    QVERIFY(chat.signIn());
    QVERIFY(chat.open(u"bob"_s, {plainMessage(u"bob"_s, u"Ahoy"_s)}));
    QVERIFY(openServer(chat));
    chat.window.logOut();
    chat.service.hold(requests::historyWithBob);
    chat.signIn();
    QTRY_VERIFY(chat.dmList()->isVisible());
    QVERIFY(chat.showConversations({QJsonObject{{u"peer"_s, u"bob"_s}}}));
    chat.click(chat.dmList(), 0);
    QCOMPARE(shownHistory(chat.messageList()), QStringList());
    chat.service.release(requests::historyWithBob);
}

TIDELOFT_GUI_TEST_MAIN(TestBackFromServer)
#include "tst_back_from_server.moc"
