// Typing on while a message is on its way: what stands behind it stays.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/sealed_messages.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

const QByteArray keysOfBob = QByteArrayLiteral("GET /api/chat/public-key/bob");
const QByteArray send = QByteArrayLiteral("POST /api/chat/send");
const QByteArray historyWithBob = QByteArrayLiteral("GET /api/chat/history/bob");

} // namespace

class TestTypingAhead : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { makeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void theLineAfterTheReply_data();
    void theLineAfterTheReply();
    void twoInARow();

private:
    /// Types WORDS with their keys, and Return.
    static void enter(ChatWindow &chat, const QString &words)
    {
        QTest::keyClicks(chat.msgInput(), words);
        QTest::keyClick(chat.msgInput(), Qt::Key_Return);
    }
    static bool openBob(ChatWindow &chat)
    {
        chat.service.answer(keysOfBob, 200,
                            objectJson({{u"keys"_s, QJsonArray{makeKeyPair().device(u"laptop"_s)}}}));
        chat.service.answer(send, 200, "{}");
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
    chat.service.hold(send);
    enter(chat, u"first"_s);
    QTRY_COMPARE(chat.service.heldCount(send), 1);
    QTest::keyClicks(chat.msgInput(), typed);
    const qsizetype before = chat.service.count(historyWithBob);
    chat.service.release(send);
    QVERIFY(chat.service.waitForRequests(historyWithBob, before + 1));
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
    QCOMPARE(chat.service.count(send), 2);
}

TIDELOFT_GUI_TEST_MAIN(TestTypingAhead)
#include "tst_typing_ahead.moc"
