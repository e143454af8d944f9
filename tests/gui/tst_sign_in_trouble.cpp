// A service that is down, slow, or answers something else than was asked, at every step of a sign-in.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestSignInTrouble : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void serviceIsDown_data();
    void serviceIsDown();
    void serviceComesBack();
    void refusedWithHtml_data();
    void refusedWithHtml();
    void bodyOfASuccessDoesNotMatter_data();
    void bodyOfASuccessDoesNotMatter();
    void listsOfAWrongShapeAreEmpty_data();
    void listsOfAWrongShapeAreEmpty();
    void slowListsDoNotHoldTheMainPageBack();
    void serviceGoesDownAfterTheSignIn();
    void secondReplyOfTheProfileInAnyOrder();
};

void TestSignInTrouble::serviceIsDown_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("sign in") << u"primaryButton"_s;
    QTest::newRow("create account") << u"ghostButton"_s;
}

void TestSignInTrouble::serviceIsDown()
{
    QFETCH(QString, button);
    GuiProbe probe;
    probe.service.stop();
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(button);
    QTRY_VERIFY(probe.username()->isEnabled());
    QVERIFY(probe.the<QLabel>(u"authError"_s)->isVisible());
    QCOMPARE(probe.errorText(), u"Connection refused"_s);
    QCOMPARE(probe.the<QAbstractButton>(u"primaryButton"_s)->text(), u"Logga in"_s);
    QCOMPARE(probe.the<QAbstractButton>(u"ghostButton"_s)->text(), u"Skapa konto"_s);
    QVERIFY(!probe.window->findChild<QMessageBox *>());
}

void TestSignInTrouble::serviceComesBack()
{
    GuiProbe probe;
    probe.service.answerOnce("POST /api/auth/login", 503, "");
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    QTRY_VERIFY(probe.the<QLabel>(u"authError"_s)->isVisible());
    probe.click(u"primaryButton"_s);
    QTRY_VERIFY(probe.onMainPage());
}

void TestSignInTrouble::refusedWithHtml_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QString>("button");
    QTest::newRow("sign in") << QByteArray("POST /api/auth/login") << u"primaryButton"_s;
    QTest::newRow("create account") << QByteArray("POST /api/auth/register") << u"ghostButton"_s;
    QTest::newRow("profile") << QByteArray("GET /api/me") << u"primaryButton"_s;
}

// There is no message of the service then: the toolkit's own words are shown, and not the page.
void TestSignInTrouble::refusedWithHtml()
{
    QFETCH(QByteArray, request);
    QFETCH(QString, button);
    GuiProbe probe;
    probe.service.answer(request, 500, "<html><body>Oops</body></html>", {{"Content-Type", "text/html"}});
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(button);
    QTRY_VERIFY(probe.the<QLabel>(u"authError"_s)->isVisible());
    QVERIFY2(probe.errorText().contains(u"Internal Server Error"_s), qPrintable(probe.errorText()));
    QVERIFY(!probe.errorText().contains(u"Oops"_s));
    QVERIFY(probe.username()->isEnabled());
}

void TestSignInTrouble::bodyOfASuccessDoesNotMatter_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("body");
    for (const char *request :
         {"POST /api/auth/login", "POST /api/auth/register", "POST /api/chat/device-key"}) {
        QTest::addRow("%s, empty", request) << QByteArray(request) << QByteArray();
        QTest::addRow("%s, HTML", request) << QByteArray(request) << QByteArray("<html></html>");
        QTest::addRow("%s, array", request) << QByteArray(request) << QByteArray("[1]");
    }
}

void TestSignInTrouble::bodyOfASuccessDoesNotMatter()
{
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, body);
    GuiProbe probe;
    probe.service.answer(request, 200, body);
    QTest::failOnWarning(QRegularExpression(u"."_s));
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(request.endsWith("register") ? u"ghostButton"_s : u"primaryButton"_s);
    QTRY_VERIFY(probe.onMainPage());
    QVERIFY(probe.service.waitForRequests(request, 1));
    QVERIFY(probe.settle());
    QCOMPARE(probe.errorText(), u"(hidden)"_s);
}

void TestSignInTrouble::listsOfAWrongShapeAreEmpty_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("body");
    for (const char *request :
         {"GET /api/chat/conversations", "GET /api/groups", "GET /api/chat/device-keys/me"}) {
        QTest::addRow("%s, empty", request) << QByteArray(request) << QByteArray();
        QTest::addRow("%s, HTML", request) << QByteArray(request) << QByteArray("<html></html>");
        QTest::addRow("%s, object", request)
            << QByteArray(request) << QByteArray(R"({"peer":"bob","keys":7})");
        QTest::addRow("%s, odd items", request)
            << QByteArray(request) << QByteArray(R"([7,null,[],"bob",{}])");
    }
}

void TestSignInTrouble::listsOfAWrongShapeAreEmpty()
{
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, body);
    GuiProbe probe;
    probe.service.answer(request, 200, body);
    // An entry of an earlier list shows that an empty one has come.
    probe.the<QListWidget>(u"dmList"_s)->addItem(u"earlier"_s);
    QVERIFY(probe.signIn());
    QVERIFY(probe.waitForPeers({}));
    QVERIFY(probe.settle());
    QVERIFY(probe.onMainPage());
    QVERIFY(probe.refreshTimer()->isActive());
    QVERIFY(!probe.window->findChild<QMessageBox *>());
}

void TestSignInTrouble::slowListsDoNotHoldTheMainPageBack()
{
    GuiProbe probe;
    for (const char *request : {"POST /api/chat/device-key", "GET /api/chat/device-keys/me",
                                "GET /api/chat/conversations", "GET /api/groups"})
        probe.service.hold(request);
    QVERIFY(probe.signIn());
    QVERIFY(probe.onMainPage());
    QVERIFY(probe.refreshTimer()->isActive());
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
}

void TestSignInTrouble::serviceGoesDownAfterTheSignIn()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.listPeers({u"bob"_s}));
    probe.refreshTimer()->stop();
    probe.service.stop();
    QTest::failOnWarning(QRegularExpression(u"."_s));
    QVERIFY(callSlot(*probe.window, "refreshData"));
    // A sign-in page that reports the same trouble shows that the refresh has met it too.
    QVERIFY(callSlot(*probe.window, "onLoginSucceeded", Q_ARG(QString, u"alice"_s)));
    QTRY_COMPARE(probe.errorText(), u"Connection refused"_s);
    QVERIFY(probe.waitForPeers({u"bob"_s}));
    QVERIFY(probe.onMainPage());
    QVERIFY(!probe.window->findChild<QMessageBox *>());
}

// Two sign-ins at once: each profile that arrives is taken, the last one stays.
void TestSignInTrouble::secondReplyOfTheProfileInAnyOrder()
{
    GuiProbe probe;
    probe.service.hold("GET /api/me");
    probe.service.answerOnce("GET /api/me", 200, R"({"username":"second"})");
    probe.service.answerOnce("GET /api/me", 200, R"({"username":"first"})");
    for (int i = 0; i < 2; ++i)
        QVERIFY(callSlot(*probe.window, "onLoginSucceeded", Q_ARG(QString, u"alice"_s)));
    QVERIFY(probe.service.waitForRequests("GET /api/me", 2));
    probe.service.releaseAt("GET /api/me", 1);
    QTRY_COMPARE(probe.the<QLabel>(u"myName"_s)->text(), u"second"_s);
    probe.service.releaseAt("GET /api/me", 0);
    QTRY_COMPARE(probe.the<QLabel>(u"myName"_s)->text(), u"first"_s);
}

TIDELOFT_GUI_TEST_MAIN(TestSignInTrouble)
#include "tst_sign_in_trouble.moc"
