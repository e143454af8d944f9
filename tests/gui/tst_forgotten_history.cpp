// What the window keeps of a history to show the next reply faster, and that it is gone after the log-out.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/memory_scan.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"
#include "ui/texts/bounded_text.h"

#include <QApplication>

#include <malloc.h>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

// Known by its turned bytes alone, or the search would find the test's own.
const QByteArray turnedMarker = QByteArray::fromHex("170f081108171b080e1f0811170f0811");

QByteArray marker()
{
    return SoughtSecrets::turned(turnedMarker);
}

// The marker as the toolkit's texts hold it, of which 16 bytes are looked for.
QByteArray turnedWideMarker()
{
    QByteArray wide;
    for (const char turnedCharacter : QByteArrayView(turnedMarker).first(8))
        wide.append(turnedCharacter).append('\x5a'); // turned, too: freed memory may be found
    return wide;
}

// No label shows so much of a text.
QByteArray history()
{
    const QByteArray shown(tideloft::ui::messageLimits.characters + 10, 'x');
    return R"([{"from":"bob","text":")" + shown + marker() + QByteArray(50'000, 'y') + R"("}])";
}

/// When the reply comes, seen from the log-out.
enum class Moment { Before, After, AfterASending };

bool showNow(ChatWindow &chat)
{
    const qsizetype before = chat.service.count(requests::historyWithBob);
    chat.refresh();
    return chat.service.waitForRequests(requests::historyWithBob, before + 1);
}

bool logOutBefore(ChatWindow &chat, Moment moment)
{
    const qsizetype before = chat.service.count(requests::historyWithBob);
    chat.service.hold(requests::historyWithBob);
    if (moment == Moment::After)
        chat.refresh();
    else
        chat.window.logOut();
    // What the reply to a message that was under way calls: it asks for the history again.
    const bool isAsked = moment == Moment::After || QMetaObject::invokeMethod(&chat.window, "onMessageSent");
    const bool isWaiting = isAsked && chat.service.waitForRequests(requests::historyWithBob, before + 1);
    if (moment == Moment::After)
        chat.window.logOut();
    chat.service.release(requests::historyWithBob);
    return isWaiting;
}

} // namespace

class TestForgottenHistory : public QObject
{
    Q_OBJECT

private slots:
    void init() { failOnToolkitWarnings(); }
    void initTestCase();
    void nothingIsKeptAfterTheLogOut_data();
    void nothingIsKeptAfterTheLogOut();
};

// Buffers of some size go back to the system as soon as they are freed: what is found then is still kept.
void TestForgottenHistory::initTestCase()
{
    QCOMPARE(mallopt(M_MMAP_THRESHOLD, 1'024), 1);
}

void TestForgottenHistory::nothingIsKeptAfterTheLogOut_data()
{
    QTest::addColumn<Moment>("moment");
    QTest::newRow("of the last reply") << Moment::Before;
    QTest::newRow("of a reply that comes later") << Moment::After;
    QTest::newRow("of a reply that a message under way asks for later") << Moment::AfterASending;
}

void TestForgottenHistory::nothingIsKeptAfterTheLogOut()
{
    QFETCH(const Moment, moment);
    SoughtSecrets inReplies;
    inReplies.addTurned(turnedMarker);
    SoughtSecrets inTexts;
    inTexts.addTurned(turnedWideMarker());
    ChatWindow chat;
    QVERIFY(chat.signIn());
    QVERIFY(chat.open(u"bob"_s));
    chat.service.answer(requests::historyWithBob, 200, history());
    QVERIFY(moment == Moment::Before ? showNow(chat) : logOutBefore(chat, moment));
    QTRY_COMPARE(chat.messageList()->count(), 2); // what comes late is still shown
    QVERIFY(chat.settle());
    chat.service.answer(requests::historyWithBob, 200, "[]"); // and the service keeps nothing of it
    if (moment == Moment::Before) {
        QVERIFY(inReplies.places().constFirst() > 0);
        chat.window.logOut();
        QVERIFY(chat.settle());
    }
    QCOMPARE(inReplies.found(), 0);
    QCOMPARE(inTexts.found(), 0);
}

TIDELOFT_GUI_TEST_MAIN(TestForgottenHistory)
#include "tst_forgotten_history.moc"
