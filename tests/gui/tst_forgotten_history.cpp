// What the window keeps of a history to show the next reply faster, and that it is gone after the log-out.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/memory_scan.h"
#include "tests/support/test_main.h"
#include "ui/bounded_text.h"

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
QByteArray wideMarker()
{
    QByteArray wide;
    for (const char character : marker().first(8))
        wide.append(character).append('\0');
    return wide;
}

// No label shows so much of a text.
QByteArray history()
{
    const QByteArray shown(tideloft::ui::messageLimits.characters + 10, 'x');
    return R"([{"from":"bob","text":")" + shown + marker() + QByteArray(50'000, 'y') + R"("}])";
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
    QTest::addColumn<bool>("late");
    QTest::newRow("of the last reply") << false;
    QTest::newRow("of a reply that comes later") << true;
}

void TestForgottenHistory::nothingIsKeptAfterTheLogOut()
{
    QFETCH(const bool, late);
    SoughtSecrets inReplies;
    inReplies.addTurned(turnedMarker);
    SoughtSecrets inTexts;
    inTexts.addTurned(SoughtSecrets::turned(wideMarker()));
    ChatWindow chat;
    QVERIFY(chat.signIn());
    QVERIFY(chat.open(u"bob"_s));
    const QByteArray request = "GET /api/chat/history/bob";
    chat.service.answer(request, 200, history());
    const qsizetype before = chat.service.count(request);
    if (late)
        chat.service.hold(request);
    chat.refresh();
    QVERIFY(chat.service.waitForRequests(request, before + 1));
    if (late)
        chat.window.logOut();
    chat.service.release(request);
    QTRY_COMPARE(chat.messageList()->count(), 2); // what comes late is still shown
    QVERIFY(chat.settle());
    chat.service.answer(request, 200, "[]"); // and the service keeps nothing of it
    if (!late) {
        QVERIFY(inReplies.places().first() > 0);
        QVERIFY(inTexts.places().first() > 0);
        chat.window.logOut();
        QVERIFY(chat.settle());
    }
    QCOMPARE(inReplies.found(), 0);
    QCOMPARE(inTexts.found(), 0);
}

TIDELOFT_GUI_TEST_MAIN(TestForgottenHistory)
#include "tst_forgotten_history.moc"
