// Scrolling the history from the keyboard, while the field has it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/sealed_messages.h"
#include "tests/support/test_main.h"

#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestScrollKeys : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { makeKeyPair(); } // not while a sign-in is waited for
    void init() { failOnToolkitWarnings(); }
    void pageKeysScrollTheHistoryAndLeaveTheTextAlone();
};

void TestScrollKeys::pageKeysScrollTheHistoryAndLeaveTheTextAlone()
{
    ChatWindow chat;
    QVERIFY(chat.signIn());
    QJsonArray messages;
    for (int i = 0; i < 60; ++i)
        messages.append(plainMessage(u"bob"_s, u"Message %1"_s.arg(i), u"2026-03-02T12:00:00Z"_s));
    QVERIFY(chat.open(u"bob"_s, messages));
    const QScrollBar *bar = chat.messageList()->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 2 * bar->pageStep());
    QTRY_COMPARE(bar->value(), bar->maximum());
    QTest::keyClicks(chat.msgInput(), u"half a word"_s);

    QTest::keyClick(chat.msgInput(), Qt::Key_PageUp);
    QCOMPARE(bar->value(), bar->maximum() - bar->pageStep());
    QTest::keyClick(chat.msgInput(), Qt::Key_PageUp);
    QCOMPARE(bar->value(), bar->maximum() - 2 * bar->pageStep());
    QTest::keyClick(chat.msgInput(), Qt::Key_PageDown);
    QCOMPARE(bar->value(), bar->maximum() - bar->pageStep());
    QCOMPARE(chat.msgInput()->text(), u"half a word"_s);
    QCOMPARE(chat.msgInput()->cursorPosition(), 11);
}

TIDELOFT_GUI_TEST_MAIN(TestScrollKeys)
#include "tst_scroll_keys.moc"
