// Many sealed conversations in the signed-in window: what nobody has looked at stays sealed.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/sealed_messages.h"
#include "tests/support/test_main.h"

#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestUnseenConversations : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void logOutClosesThem();
    void lateOnesAreClosedAfterTheLogOut();
    void newKeyFileHoldsForAllOfThem();

private:
    static QJsonArray conversations(const ChatWindow &chat);
    static QString spoken(const ChatWindow &chat, int row)
    {
        return chat.dmList()->item(row)->data(Qt::AccessibleTextRole).toString();
    }
};

QJsonArray TestUnseenConversations::conversations(const ChatWindow &chat)
{
    const KeyPair own = ownKeyPair();
    QJsonArray items;
    for (int i = 0; i < 100; ++i) {
        QJsonObject item = sealedMessage(u"bob"_s, u"message %1"_s.arg(i), own, chat.deviceId());
        item.insert(u"peer"_s, u"peer-%1"_s.arg(i));
        item.remove(u"createdAt"_s);
        items.append(item);
    }
    items.append(QJsonObject{{u"peer"_s, u"peer-100"_s}, {u"text"_s, u"never sealed"_s}});
    return items;
}

void TestUnseenConversations::logOutClosesThem()
{
    ChatWindow chat;
    QVERIFY(chat.signIn());
    QVERIFY(chat.showConversations(conversations(chat)));
    QCOMPARE(spoken(chat, 70), u"peer-70, message 70"_s); // a screen reader looked at this one
    chat.window.logOut();
    QCOMPARE(spoken(chat, 0), u"peer-0, message 0"_s);
    QCOMPARE(spoken(chat, 70), u"peer-70, message 70"_s);
    QCOMPARE(spoken(chat, 99), u"peer-99, 🔒 Encrypted message"_s);
    QCOMPARE(spoken(chat, 100), u"peer-100, never sealed"_s);
    chat.dmList()->verticalScrollBar()->setValue(chat.dmList()->verticalScrollBar()->maximum());
    QCOMPARE(shownConversation(chat.dmList(), 99).preview->text(), u"🔒 Encrypted message"_s);
    QCOMPARE(shownConversation(chat.dmList(), 100).preview->text(), u"never sealed"_s);
}

void TestUnseenConversations::lateOnesAreClosedAfterTheLogOut()
{
    const QByteArray request = QByteArrayLiteral("GET /api/chat/conversations");
    ChatWindow chat;
    QVERIFY(chat.signIn());
    const qsizetype before = chat.service.count(request);
    chat.service.answer(request, 200, json(conversations(chat)));
    chat.service.hold(request);
    chat.refresh();
    QVERIFY(chat.service.waitForRequests(request, before + 1));
    chat.window.logOut();
    chat.service.release(request);
    QTRY_COMPARE(chat.dmList()->count(), 101);
    QCOMPARE(spoken(chat, 0), u"peer-0, message 0"_s); // it was on screen at once
    QCOMPARE(spoken(chat, 99), u"peer-99, 🔒 Encrypted message"_s);
    QCOMPARE(spoken(chat, 100), u"peer-100, never sealed"_s);
}

void TestUnseenConversations::newKeyFileHoldsForAllOfThem()
{
    ChatWindow chat;
    QVERIFY(chat.signIn());
    const QJsonArray items = conversations(chat);
    QVERIFY(chat.showConversations(items));
    QCOMPARE(shownConversation(chat.dmList(), 0).preview->text(), u"message 0"_s);
    makeKeyPair();
    QVERIFY(chat.showConversations(items));
    QCOMPARE(shownConversation(chat.dmList(), 0).preview->text(), u"🔒 Encrypted message"_s);
    QCOMPARE(spoken(chat, 99), u"peer-99, 🔒 Encrypted message"_s);
}

TIDELOFT_GUI_TEST_MAIN(TestUnseenConversations)
#include "tst_unseen_conversations.moc"
