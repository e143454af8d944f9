// The periodic refresh, and the keys that the window catches in the message field.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QLineEdit>
#include <QListWidget>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestWindowRefresh : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void everyThreeSeconds();
    void restsBeforeTheSignIn();
    void runsFromTheProfileOn();
    void stopsAtLogOut();
    void runsAgainAfterTheNextSignIn();
    void isNotRestartedWhileItRuns();
    void timeOutRefreshes();
    void withoutConversationOnlyTheList();
    void withConversationItsHistoryToo();
    void oneMessageIsSentByReturnOnly_data();
    void oneMessageIsSentByReturnOnly();
    void sendButtonSends();
};

void TestWindowRefresh::everyThreeSeconds()
{
    const GuiProbe probe;
    QCOMPARE(probe.refreshTimer()->interval(), 3000);
    QVERIFY(!probe.refreshTimer()->isSingleShot());
}

void TestWindowRefresh::restsBeforeTheSignIn()
{
    GuiProbe probe;
    QVERIFY(!probe.refreshTimer()->isActive());
    probe.service.hold("GET /api/me");
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    QVERIFY(probe.service.waitForRequests("GET /api/me", 1));
    QVERIFY(!probe.refreshTimer()->isActive());
}

void TestWindowRefresh::runsFromTheProfileOn()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.refreshTimer()->isActive());
    QCOMPARE(probe.refreshTimer()->interval(), 3000);
}

void TestWindowRefresh::stopsAtLogOut()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    probe.window->logOut();
    QVERIFY(!probe.refreshTimer()->isActive());
}

void TestWindowRefresh::runsAgainAfterTheNextSignIn()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    probe.window->logOut();
    QVERIFY(probe.signIn());
    QVERIFY(probe.refreshTimer()->isActive());
}

// A running timer keeps the type that it was started with, whatever is set meanwhile.
void TestWindowRefresh::isNotRestartedWhileItRuns()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QTimer *timer = probe.refreshTimer();
    const auto runningAs = [timer] {
        return QAbstractEventDispatcher::instance()->registeredTimers(timer).value(
            0, {0, 0, Qt::VeryCoarseTimer});
    };
    QCOMPARE(runningAs().timerType, Qt::CoarseTimer);
    timer->setTimerType(Qt::PreciseTimer);
    QVERIFY(callSlot(*probe.window, "onLoginSucceeded", Q_ARG(QString, u"alice"_s)));
    QVERIFY(probe.service.waitForRequests("GET /api/groups", 2));
    QVERIFY(timer->isActive());
    QCOMPARE(runningAs().timerType, Qt::CoarseTimer);
}

void TestWindowRefresh::timeOutRefreshes()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    probe.service.clear();
    probe.refreshTimer()->setInterval(1);
    QVERIFY(probe.service.waitForRequests("GET /api/chat/conversations", 3));
}

void TestWindowRefresh::withoutConversationOnlyTheList()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    probe.refreshTimer()->stop();
    QVERIFY(probe.service.waitForRequests("POST /api/chat/device-key", 1));
    QVERIFY(probe.settle());
    probe.service.clear();
    QVERIFY(callSlot(*probe.window, "refreshData"));
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count("GET /api/chat/conversations"),
             2); // the second is the one that was waited for
    QCOMPARE(probe.service.requests().size(), 2);
}

void TestWindowRefresh::withConversationItsHistoryToo()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.service.waitForRequests("POST /api/chat/device-key", 1));
    QVERIFY(probe.open(u"bob"_s));
    probe.refreshTimer()->stop();
    QVERIFY(probe.settle());
    QVERIFY(probe.service.waitForRequests("GET /api/chat/history/bob", 2));
    probe.service.clear();
    QVERIFY(callSlot(*probe.window, "refreshData"));
    QVERIFY(probe.service.waitForRequests("GET /api/chat/history/bob", 1));
    QVERIFY(probe.service.waitForRequests("GET /api/chat/conversations", 1));
    QCOMPARE(probe.service.requests().size(), 2);
}

void TestWindowRefresh::oneMessageIsSentByReturnOnly_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<qsizetype>("sent");
    using Qt::KeyboardModifiers;
    const KeyboardModifiers none;
    QTest::newRow("Return sends") << Qt::Key_Return << none << qsizetype(1);
    QTest::newRow("Ctrl+Return sends")
        << Qt::Key_Return << KeyboardModifiers(Qt::ControlModifier) << qsizetype(1);
    QTest::newRow("Shift+Return does not")
        << Qt::Key_Return << KeyboardModifiers(Qt::ShiftModifier) << qsizetype(0);
    QTest::newRow("keypad Enter does not")
        << Qt::Key_Enter << KeyboardModifiers(Qt::KeypadModifier) << qsizetype(0);
    QTest::newRow("a letter does not") << Qt::Key_X << none << qsizetype(0);
}

void TestWindowRefresh::oneMessageIsSentByReturnOnly()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.open(u"bob"_s));
    probe.service.hold("GET /api/chat/public-key/bob");
    auto *input = probe.the<QLineEdit>(u"msgInput"_s);
    QTest::keyClicks(input, u"Hello"_s);
    QTest::keyClick(input, key, modifiers);
    QVERIFY(probe.settle());
    QTEST(probe.service.count("GET /api/chat/public-key/bob"), "sent");
}

void TestWindowRefresh::sendButtonSends()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.open(u"bob"_s));
    probe.service.hold("GET /api/chat/public-key/bob");
    QTest::keyClicks(probe.the<QLineEdit>(u"msgInput"_s), u"Hello"_s);
    probe.click(u"sendButton"_s);
    QVERIFY(probe.service.waitForRequests("GET /api/chat/public-key/bob", 1));
}

TIDELOFT_GUI_TEST_MAIN(TestWindowRefresh)
#include "tst_window_refresh.moc"
