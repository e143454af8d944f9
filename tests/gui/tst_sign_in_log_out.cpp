// Logging out, and replies that come after it or after the window has gone.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"

#include <QAbstractButton>
#include <QApplication>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestSignInLogOut : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void returnsToAnEmptyIdlePage();
    void focusesTheUsername();
    void hidesAnError();
    void endsTheBusyState();
    void sendsNothing();
    void leavesTheMainPageAsItWas();
    void nextSignInLoadsAfresh();
    void lateProfileStillOpensTheMainPage();
    void lateFailureShowsOnThePage();
    void lateListsOnlyFillTheirLists();
    void waitingMessageEndsWithTheNextSignIn();
    void repliesAfterTheWindow_data();
    void repliesAfterTheWindow();
};

void TestSignInLogOut::returnsToAnEmptyIdlePage()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QCOMPARE(probe.username()->text(), u"alice"_s);
    probe.window->logOut();
    QCOMPARE(probe.root()->currentIndex(), 0);
    QCOMPARE(probe.username()->text(), QString());
    QCOMPARE(probe.password()->text(), QString());
    QCOMPARE(probe.errorText(), u"(hidden)"_s);
    QVERIFY(probe.the<QAbstractButton>(u"primaryButton"_s)->isEnabled());
    QVERIFY(!probe.refreshTimer()->isActive());
}

void TestSignInLogOut::focusesTheUsername()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(!probe.username()->hasFocus());
    probe.window->logOut();
    QVERIFY(probe.username()->hasFocus());
}

void TestSignInLogOut::hidesAnError()
{
    const GuiProbe probe;
    probe.click(u"primaryButton"_s);
    QVERIFY(probe.the<QLabel>(u"authError"_s)->isVisible());
    probe.window->logOut();
    QCOMPARE(probe.errorText(), u"(hidden)"_s);
}

void TestSignInLogOut::endsTheBusyState()
{
    GuiProbe probe;
    probe.service.hold("POST /api/auth/login");
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    QVERIFY(!probe.username()->isEnabled());
    probe.window->logOut();
    for (const QString &what : {u"primaryButton"_s, u"ghostButton"_s, u"username"_s, u"password"_s})
        QVERIFY2(named(*probe.window, what)->isEnabled(), qPrintable(what));
    QCOMPARE(probe.the<QAbstractButton>(u"primaryButton"_s)->text(), u"Logga in"_s);
}

void TestSignInLogOut::sendsNothing()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    probe.refreshTimer()->stop();
    QVERIFY(probe.service.waitForRequests("POST /api/chat/device-key", 1));
    QVERIFY(probe.settle());
    probe.service.clear();
    probe.window->logOut();
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.requests().size(), 1); // the one that was waited for
}

void TestSignInLogOut::leavesTheMainPageAsItWas()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    probe.service.answer("GET /api/chat/history/bob", 200, R"([{"from":"bob","text":"Hi"}])");
    QVERIFY(probe.listPeers({u"bob"_s}));
    probe.clickPeer(u"bob"_s);
    QTRY_COMPARE(probe.the<QListWidget>(u"messageList"_s)->count(), 2); // a day and a message
    probe.window->logOut();
    QCOMPARE(probe.centerPage(), u"chatPage"_s);
    QCOMPARE(probe.the<QLabel>(u"centerTitle"_s)->text(), u"bob"_s);
    QCOMPARE(probe.the<QListWidget>(u"dmList"_s)->count(), 1);
    QCOMPARE(probe.the<QListWidget>(u"messageList"_s)->count(), 2);
    QCOMPARE(probe.the<QLabel>(u"myName"_s)->text(), u"alice"_s);
    // The conversation counts as open: a refresh still asks for it.
    probe.service.clear();
    QVERIFY(callSlot(*probe.window, "refreshData"));
    QVERIFY(probe.service.waitForRequests("GET /api/chat/history/bob", 1));
}

void TestSignInLogOut::nextSignInLoadsAfresh()
{
    GuiProbe probe;
    // A registration that is confirmed before the list of devices comes asks for that list once more.
    probe.service.hold("POST /api/chat/device-key");
    QVERIFY(probe.signIn());
    QVERIFY(probe.open(u"bob"_s));
    probe.window->logOut();
    probe.service.clear();
    probe.service.answer("GET /api/me", 200, R"({"username":"carol"})");
    probe.service.answer("GET /api/chat/conversations", 200, R"([{"peer":"dave"}])");
    QVERIFY(probe.signIn(u"carol"_s));
    QVERIFY(probe.waitForPeers({u"dave"_s}));
    QCOMPARE(probe.the<QLabel>(u"myName"_s)->text(), u"carol"_s);
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
    QCOMPARE(probe.service.count("GET /api/chat/device-keys/me"), 1);
}

// No request is cancelled by a log-out, so a reply still has the effect that it always has.
void TestSignInLogOut::lateProfileStillOpensTheMainPage()
{
    GuiProbe probe;
    probe.service.hold("GET /api/me");
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    QVERIFY(probe.service.waitForRequests("GET /api/me", 1));
    probe.window->logOut();
    probe.service.release("GET /api/me");
    QTRY_VERIFY(probe.onMainPage());
    QVERIFY(probe.refreshTimer()->isActive());
}

void TestSignInLogOut::lateFailureShowsOnThePage()
{
    GuiProbe probe;
    probe.service.answer("POST /api/auth/login", 401, R"({"message":"Too late"})");
    probe.service.hold("POST /api/auth/login");
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    QVERIFY(probe.service.waitForRequests("POST /api/auth/login", 1));
    probe.window->logOut();
    probe.service.release("POST /api/auth/login");
    QTRY_COMPARE(probe.errorText(), u"Too late"_s);
    QVERIFY(probe.username()->isEnabled());
}

void TestSignInLogOut::lateListsOnlyFillTheirLists()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.open(u"bob"_s));
    QVERIFY(probe.settle());
    probe.service.answer("GET /api/chat/conversations", 200, R"([{"peer":"erin"}])");
    probe.service.answer("GET /api/chat/history/bob", 200, R"([{"from":"bob","text":"Hi"}])");
    probe.service.hold("GET /api/chat/conversations");
    probe.service.hold("GET /api/chat/history/bob");
    const qsizetype before = probe.service.count("GET /api/chat/history/bob");
    QVERIFY(callSlot(*probe.window, "refreshData"));
    QVERIFY(probe.service.waitForRequests("GET /api/chat/history/bob", before + 1));
    probe.window->logOut();
    probe.service.release("GET /api/chat/conversations");
    probe.service.release("GET /api/chat/history/bob");
    QVERIFY(probe.waitForPeers({u"erin"_s}));
    QTRY_COMPARE(probe.the<QListWidget>(u"messageList"_s)->count(), 2);
    QVERIFY(!probe.onMainPage());
    QVERIFY(!probe.refreshTimer()->isActive());
    QVERIFY(probe.username()->hasFocus());
    QVERIFY(!probe.window->findChild<QMessageBox *>());
}

// What one person wanted to write is never sent in the name of the next.
void TestSignInLogOut::waitingMessageEndsWithTheNextSignIn()
{
    GuiProbe probe;
    QVERIFY(probe.signIn() && probe.open(u"bob"_s));
    const QByteArray keys = "GET /api/chat/public-key/bob";
    probe.service.answer(keys, 200, R"({"devices":[],"publicKey":"AAAA"})");
    probe.service.hold(keys);
    QTest::keyClicks(probe.the<QLineEdit>(u"msgInput"_s), u"Only from alice"_s);
    probe.click(u"sendButton"_s);
    QVERIFY(probe.service.waitForRequests(keys, 1));
    probe.window->logOut();
    probe.service.answer("GET /api/me", 200, R"({"username":"carol"})");
    QVERIFY(probe.signIn(u"carol"_s) && probe.open(u"bob"_s));
    probe.service.release(keys);
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count("POST /api/chat/send"), 0);
    QVERIFY(!probe.window->findChild<QMessageBox *>()); // nor was sealing even tried
}

void TestSignInLogOut::repliesAfterTheWindow_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<int>("status");
    for (const char *request :
         {"POST /api/auth/login", "GET /api/me", "POST /api/chat/device-key", "GET /api/chat/device-keys/me",
          "GET /api/chat/conversations", "GET /api/groups"}) {
        QTest::addRow("%s, granted", request) << QByteArray(request) << 200;
        QTest::addRow("%s, refused", request) << QByteArray(request) << 500;
    }
}

void TestSignInLogOut::repliesAfterTheWindow()
{
    QFETCH(QByteArray, request);
    QFETCH(int, status);
    GuiProbe probe;
    probe.service.answer(request, status, R"({"message":"Nobody is there"})");
    probe.service.hold(request);
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    QVERIFY(probe.service.waitForRequests(request, 1));
    probe.window.reset();
    probe.service.release(request);
    // A whole later conversation with the service passes by before this is over.
    QTest::failOnWarning(QRegularExpression(u"."_s));
    GuiProbe other;
    QVERIFY(other.settle());
    QCOMPARE(probe.service.count(request), 1);
    // What a living window would have asked for next.
    const QByteArray next = request == "POST /api/auth/login" ? "GET /api/me" : "POST /api/chat/device-key";
    if (request == "POST /api/auth/login" || request == "GET /api/me")
        QCOMPARE(probe.service.count(next), 0);
}

TIDELOFT_GUI_TEST_MAIN(TestSignInLogOut)
#include "tst_sign_in_log_out.moc"
