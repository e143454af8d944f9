// The page of a conversation: its header, its line, and the notice of a server in the place of a history.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/chat_page_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestChatPage : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void headerNamesThePeer();
    void returnAndTheButtonSend();
    void noOtherKeySends_data();
    void noOtherKeySends();
    void aServersNoticeTakesThePlaceOfTheHistory();
    void nothingCanBeWrittenToAServer();
    void theKeyboardWaitsWhileAMessageIsSealed();
    void sentTextLeavesTheLine();
    void anotherPeersHistoryReplacesTheFirst();
    void clearLeavesNothing();
    void namesFollowTheLanguageAndThePlaceholderDoesNot();
};

namespace
{

QLabel *header(const ChatPageProbe &chat, const QString &name)
{
    return only<QLabel>(*chat.page, name);
}

QPushButton *sendButton(const ChatPageProbe &chat)
{
    return only<QPushButton>(*chat.page, u"sendButton"_s);
}

} // namespace

void TestChatPage::headerNamesThePeer()
{
    const ChatPageProbe chat;
    QCOMPARE(header(chat, u"centerTitle"_s)->text(), u"bob"_s);
    QCOMPARE(header(chat, u"centerSubtitle"_s)->text(), u"🔒 End-to-end encrypted"_s);
    QCOMPARE(header(chat, u"peerAvatar"_s)->text(), u"BO"_s);
    QCOMPARE(header(chat, u"peerAvatar"_s)->accessibleName(), u"bob"_s);
}

void TestChatPage::returnAndTheButtonSend()
{
    const ChatPageProbe chat;
    QTest::keyClicks(chat.msgInput(), u"  Hello "_s);
    QTest::keyClick(chat.msgInput(), Qt::Key_Return);
    QCOMPARE(chat.window.sentSignals(), 1);
    QTest::mouseClick(sendButton(chat), Qt::LeftButton);
    QCOMPARE(chat.window.sentSignals(), 2);
    QCOMPARE(chat.page->writtenText(), u"Hello"_s);
    QCOMPARE(chat.msgInput()->text(), u"  Hello "_s); // it goes when it has arrived
}

void TestChatPage::noOtherKeySends_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("Shift+Return") << Qt::Key_Return << Qt::KeyboardModifiers(Qt::ShiftModifier);
    QTest::newRow("keypad Enter") << Qt::Key_Enter << Qt::KeyboardModifiers(Qt::KeypadModifier);
    QTest::newRow("Tab") << Qt::Key_Tab << Qt::KeyboardModifiers();
}

void TestChatPage::noOtherKeySends()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    const ChatPageProbe chat;
    QTest::keyClicks(chat.msgInput(), u"Hello"_s);
    QTest::keyClick(chat.msgInput(), key, modifiers);
    QCOMPARE(chat.window.sentSignals(), 0);
}

void TestChatPage::aServersNoticeTakesThePlaceOfTheHistory()
{
    const ChatPageProbe chat;
    chat.showHistory({plainMessage(u"bob"_s, u"hi"_s)});
    QCOMPARE(chat.messageList()->count(), 2);
    chat.page->showServer(u"Club"_s, u"C"_s);
    QVERIFY(chat.page->showsServer());
    QCOMPARE(header(chat, u"centerTitle"_s)->text(), u"Club"_s);
    QCOMPARE(header(chat, u"centerSubtitle"_s)->text(), u"Server"_s);
    QCOMPARE(chat.messageList()->count(), 1);
    chat.page->showPeer(u"bob"_s);
    QVERIFY(!chat.page->showsServer());
    QCOMPARE(chat.messageList()->count(), 0); // until the history comes
}

void TestChatPage::nothingCanBeWrittenToAServer()
{
    const ChatPageProbe chat;
    QTest::keyClicks(chat.msgInput(), u"Hello"_s);
    QVERIFY(chat.page->fieldIsReady());
    chat.page->showServer(u"Club"_s, u"C"_s);
    QVERIFY(!chat.page->fieldIsReady());
    QVERIFY(!sendButton(chat)->isEnabled());
    QCOMPARE(chat.page->writtenText(), QString());
    chat.page->showPeer(u"bob"_s);
    QVERIFY(chat.page->fieldIsReady());
    QCOMPARE(chat.page->writtenText(), u"Hello"_s);
}

void TestChatPage::theKeyboardWaitsWhileAMessageIsSealed()
{
    const ChatPageProbe chat;
    chat.page->focusField();
    chat.page->setSealing(true);
    QVERIFY(!chat.page->fieldIsReady());
    QVERIFY(!chat.page->fieldHasFocus());
    chat.page->setSealing(false);
    QVERIFY(chat.msgInput()->hasFocus());
    chat.page->showServer(u"Club"_s, u"C"_s);
    chat.page->setSealing(true);
    chat.page->setSealing(false);
    QVERIFY(!chat.page->fieldIsReady()); // the server still stands there
}

void TestChatPage::sentTextLeavesTheLine()
{
    const ChatPageProbe chat;
    chat.msgInput()->setText(u"Hello and more"_s);
    chat.page->takeSent(u"Hello"_s);
    QCOMPARE(chat.page->writtenText(), u"and more"_s);
}

void TestChatPage::anotherPeersHistoryReplacesTheFirst()
{
    const ChatPageProbe chat;
    const QJsonArray items{plainMessage(u"bob"_s, u"one"_s), plainMessage(u"bob"_s, u"two"_s)};
    chat.showHistory(items);
    const QPointer<QWidget> kept = shownMessage(chat.messageList(), 1).row;
    chat.showHistory(items);
    QCOMPARE(shownMessage(chat.messageList(), 1).row, kept.data()); // a refresh touches nothing
    chat.page->showHistory(u"eve"_s, {});
    QCOMPARE(chat.messageList()->count(), 0);
    chat.showHistory(items);
    const QWidget *again = shownMessage(chat.messageList(), 1).row;
    chat.page->endHistory();
    QCOMPARE(chat.messageList()->count(), 3);
    chat.showHistory(items);
    QVERIFY(shownMessage(chat.messageList(), 1).row != again);
}

void TestChatPage::clearLeavesNothing()
{
    const ChatPageProbe chat;
    chat.showHistory({plainMessage(u"bob"_s, u"hi"_s)});
    chat.msgInput()->setText(u"draft"_s);
    chat.page->clear();
    QCOMPARE(chat.messageList()->count(), 0);
    QCOMPARE(chat.msgInput()->text(), QString());
    for (const QString &name : {u"centerTitle"_s, u"centerSubtitle"_s, u"peerAvatar"_s})
        QCOMPARE(header(chat, name)->text(), QString());
}

void TestChatPage::namesFollowTheLanguageAndThePlaceholderDoesNot()
{
    const ChatPageProbe chat;
    const QString placeholder = chat.msgInput()->placeholderText();
    QCOMPARE(placeholder, u"Write a message..."_s);
    chat.page->retranslate(tideloft::ui::Language::Swedish);
    QCOMPARE(chat.messageList()->accessibleName(), u"Historik"_s);
    QCOMPARE(chat.msgInput()->accessibleName(), u"Meddelande"_s);
    QCOMPARE(sendButton(chat)->accessibleName(), u"Skicka"_s);
    QCOMPARE(chat.msgInput()->placeholderText(), placeholder);
}

TIDELOFT_GUI_TEST_MAIN(TestChatPage)
#include "tst_chat_page.moc"
