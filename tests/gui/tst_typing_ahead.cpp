// Typing on while a message is on its way: what stands behind it stays.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/request_names.h"
#include "tests/support/sealed_messages.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestTypingAhead : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { makeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void theLineAfterTheReply_data();
    void theLineAfterTheReply();
    void twoInARow();
    void twoUnderWay();
    void undoBringsItBack();
    void theCursorStaysInTheRest();

private:
    /// Types WORDS with their keys, and Return.
    static void enter(ChatWindow &chat, const QString &words)
    {
        QTest::keyClicks(chat.msgInput(), words);
        QTest::keyClick(chat.msgInput(), Qt::Key_Return);
    }
    static bool openBob(ChatWindow &chat)
    {
        chat.service.answer(requests::keysOfBob, 200,
                            objectJson({{u"keys"_s, QJsonArray{makeKeyPair().device(u"laptop"_s)}}}));
        chat.service.answer(requests::sendMessage, 200, "{}");
        return chat.signIn() && chat.open(u"bob"_s);
    }
};

void TestTypingAhead::theLineAfterTheReply_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("rest");
    QTest::newRow("nothing") << QString() << QString();
    QTest::newRow("a second thought") << u" second thought"_s << u" second thought"_s;
    QTest::newRow("a blank") << u" "_s << QString();
}

void TestTypingAhead::theLineAfterTheReply()
{
    QFETCH(QString, typed);
    ChatWindow chat;
    QVERIFY(openBob(chat));
    chat.service.hold(requests::sendMessage);
    enter(chat, u"first"_s);
    QTRY_COMPARE(chat.service.heldCount(requests::sendMessage), 1);
    QTest::keyClicks(chat.msgInput(), typed);
    const qsizetype before = chat.service.count(requests::historyWithBob);
    chat.service.release(requests::sendMessage);
    QVERIFY(chat.service.waitForRequests(requests::historyWithBob, before + 1));
    QTEST(chat.msgInput()->text(), "rest");
}

void TestTypingAhead::twoInARow()
{
    ChatWindow chat;
    QVERIFY(openBob(chat));
    for (const QString &words : {u"one"_s, u"two"_s}) {
        enter(chat, words);
        QTRY_COMPARE(chat.msgInput()->text(), QString());
    }
    QCOMPARE(chat.service.count(requests::sendMessage), 2);
}

void TestTypingAhead::twoUnderWay()
{
    ChatWindow chat;
    QVERIFY(openBob(chat));
    chat.service.hold(requests::sendMessage);
    enter(chat, u"one"_s);
    QTRY_COMPARE(chat.service.heldCount(requests::sendMessage), 1);
    enter(chat, u" two"_s);
    QTRY_COMPARE(chat.service.heldCount(requests::sendMessage), 2);
    QTest::keyClicks(chat.msgInput(), u" three"_s);
    const qsizetype before = chat.service.count(requests::historyWithBob);
    chat.service.release(requests::sendMessage);
    QVERIFY(chat.service.waitForRequests(requests::historyWithBob, before + 2));
    QVERIFY(chat.settle());
    QCOMPARE(chat.msgInput()->text(), u" three"_s);
}

void TestTypingAhead::undoBringsItBack()
{
    ChatWindow chat;
    QVERIFY(openBob(chat));
    enter(chat, u"first"_s);
    QTRY_COMPARE(chat.msgInput()->text(), QString());
    QVERIFY(chat.msgInput()->isUndoAvailable());
    chat.msgInput()->undo();
    QCOMPARE(chat.msgInput()->text(), u"first"_s);
}

void TestTypingAhead::theCursorStaysInTheRest()
{
    ChatWindow chat;
    QVERIFY(openBob(chat));
    chat.service.hold(requests::sendMessage);
    enter(chat, u"first"_s);
    QTRY_COMPARE(chat.service.heldCount(requests::sendMessage), 1);
    QTest::keyClicks(chat.msgInput(), u" second"_s);
    QTest::keyClick(chat.msgInput(), Qt::Key_Left);
    QTest::keyClick(chat.msgInput(), Qt::Key_Left);
    chat.service.release(requests::sendMessage);
    QTRY_COMPARE(chat.msgInput()->text(), u" second"_s);
    QCOMPARE(chat.msgInput()->cursorPosition(), 5);
    QVERIFY(!chat.msgInput()->hasSelectedText());
}

TIDELOFT_GUI_TEST_MAIN(TestTypingAhead)
#include "tst_typing_ahead.moc"
