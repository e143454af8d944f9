// Creating an account, and the sign-in that follows by itself.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestSignInRegister : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void sendsTrimmedNameAndPlainPassword();
    void busy_data();
    void busy();
    void signsInByItself();
    void usesWhatTheFieldsHoldThen();
    void neverAsksToBeRemembered();
    void followingSignInIsNotBusy();
    void hidesAnErrorBeforeTheRequest();
    void errorOfTheMeantimeIsHidden();
    void failures_data();
    void failures();
    void failureOfTheFollowingSignIn();

private:
    static QString primaryText(const GuiProbe &probe) { return buttonText(probe, u"primaryButton"_s); }
    static QString ghostText(const GuiProbe &probe) { return buttonText(probe, u"ghostButton"_s); }
    static QString buttonText(const GuiProbe &probe, const QString &name)
    {
        return probe.the<QAbstractButton>(name)->text();
    }
};

void TestSignInRegister::sendsTrimmedNameAndPlainPassword()
{
    GuiProbe probe;
    probe.fillIn(u"  Alice "_s, u" p w "_s);
    probe.click(u"ghostButton"_s);
    QVERIFY(probe.service.waitForRequests("POST /api/auth/register", 1));
    const auto sent = QJsonDocument::fromJson(probe.service.lastRequest("POST /api/auth/register").body);
    QCOMPARE(sent.object(), (QJsonObject{{u"username"_s, u"Alice"_s}, {u"password"_s, u" p w "_s}}));
}

void TestSignInRegister::busy_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("primaryDuring");
    QTest::addColumn<QString>("ghostDuring");
    QTest::addColumn<QString>("primaryAfter");
    QTest::addColumn<QString>("ghostAfter");
    QTest::newRow("Swedish") << 0 << u"Loggar in..."_s << u"Skapar konto..."_s << u"Logga in"_s
                             << u"Skapa konto"_s;
    QTest::newRow("English") << 1 << u"Signing in..."_s << u"Creating account..."_s << u"Sign in"_s
                             << u"Create account"_s;
}

void TestSignInRegister::busy()
{
    QFETCH(int, language);
    GuiProbe probe;
    probe.window->setLanguageIndex(language);
    probe.service.hold("POST /api/auth/register");
    probe.service.hold("POST /api/auth/login");
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"ghostButton"_s);
    for (const QString &what : {u"primaryButton"_s, u"ghostButton"_s, u"username"_s, u"password"_s})
        QVERIFY2(!named(*probe.window, what)->isEnabled(), qPrintable(what));
    QVERIFY(named(*probe.window, u"rememberCheck"_s)->isEnabled());
    QVERIFY(named(*probe.window, u"langCombo"_s)->isEnabled());
    QTEST(primaryText(probe), "primaryDuring");
    QTEST(ghostText(probe), "ghostDuring");
    QVERIFY(probe.service.waitForRequests("POST /api/auth/register", 1));
    probe.service.release("POST /api/auth/register");
    QVERIFY(probe.service.waitForRequests("POST /api/auth/login", 1));
    QTEST(primaryText(probe), "primaryAfter");
    QTEST(ghostText(probe), "ghostAfter");
}

void TestSignInRegister::signsInByItself()
{
    GuiProbe probe;
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"ghostButton"_s);
    QTRY_VERIFY(probe.onMainPage());
    QCOMPARE(probe.service.count("POST /api/auth/register"), 1);
    QCOMPARE(probe.service.count("POST /api/auth/login"), 1);
    QCOMPARE(probe.service.count("GET /api/me"), 1);
}

void TestSignInRegister::usesWhatTheFieldsHoldThen()
{
    GuiProbe probe;
    probe.service.hold("POST /api/auth/register");
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"ghostButton"_s);
    QVERIFY(probe.service.waitForRequests("POST /api/auth/register", 1));
    probe.username()->setText(u" carol "_s); // nobody can type into it now
    probe.password()->setText(u" other"_s);
    probe.service.release("POST /api/auth/register");
    QVERIFY(probe.service.waitForRequests("POST /api/auth/login", 1));
    const auto sent = QJsonDocument::fromJson(probe.service.lastRequest("POST /api/auth/login").body);
    QCOMPARE(sent[u"username"], QJsonValue(u"carol"_s));
    QCOMPARE(sent[u"password"], QJsonValue(u" other"_s));
}

void TestSignInRegister::neverAsksToBeRemembered()
{
    GuiProbe probe;
    probe.the<QCheckBox>(u"rememberCheck"_s)->setChecked(true);
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"ghostButton"_s);
    QVERIFY(probe.service.waitForRequests("POST /api/auth/login", 1));
    const auto sent = QJsonDocument::fromJson(probe.service.lastRequest("POST /api/auth/login").body);
    QCOMPARE(sent[u"rememberMe"], QJsonValue(false));
}

void TestSignInRegister::followingSignInIsNotBusy()
{
    GuiProbe probe;
    probe.service.hold("POST /api/auth/login");
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"ghostButton"_s);
    QVERIFY(probe.service.waitForRequests("POST /api/auth/login", 1));
    for (const QString &what : {u"primaryButton"_s, u"ghostButton"_s, u"username"_s, u"password"_s})
        QVERIFY2(named(*probe.window, what)->isEnabled(), qPrintable(what));
    QCOMPARE(primaryText(probe), u"Logga in"_s);
    QVERIFY(!probe.onMainPage());
}

void TestSignInRegister::hidesAnErrorBeforeTheRequest()
{
    GuiProbe probe;
    probe.service.answerOnce("POST /api/auth/register", 409, R"({"message":"Name taken"})");
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"ghostButton"_s);
    QTRY_COMPARE(probe.errorText(), u"Name taken"_s);
    probe.service.hold("POST /api/auth/register");
    probe.click(u"ghostButton"_s);
    QCOMPARE(probe.errorText(), u"(hidden)"_s);
}

// An error can only appear meanwhile if another request fails; success takes it away.
void TestSignInRegister::errorOfTheMeantimeIsHidden()
{
    GuiProbe probe;
    probe.service.hold("POST /api/auth/login");
    QVERIFY(callSlot(*probe.window, "onLoginFailed", Q_ARG(QString, u"An earlier one"_s)));
    QCOMPARE(probe.errorText(), u"An earlier one"_s);
    QVERIFY(callSlot(*probe.window, "onRegisterSucceeded", Q_ARG(QString, u"alice"_s)));
    QCOMPARE(probe.errorText(), u"(hidden)"_s);
}

void TestSignInRegister::failures_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("button");
    QTest::newRow("Swedish") << 0 << QByteArray(R"({"message":"Name taken"})") << u"Name taken"_s
                             << u"Skapa konto"_s;
    QTest::newRow("English") << 1 << QByteArray(R"({"error":"Name taken"})") << u"Name taken"_s
                             << u"Create account"_s;
    QTest::newRow("markup stays text") << 0 << QByteArray(R"({"message":"<a href='x'>Take this</a>"})")
                                       << u"<a href='x'>Take this</a>"_s << u"Skapa konto"_s;
}

void TestSignInRegister::failures()
{
    QFETCH(int, language);
    QFETCH(QByteArray, body);
    QFETCH(QString, message);
    GuiProbe probe;
    probe.window->setLanguageIndex(language);
    probe.service.answer("POST /api/auth/register", 409, body);
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"ghostButton"_s);
    QTRY_COMPARE(probe.errorText(), message);
    QCOMPARE(probe.the<QLabel>(u"authError"_s)->textFormat(), Qt::PlainText);
    QTEST(ghostText(probe), "button");
    QVERIFY(probe.username()->isEnabled());
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count("POST /api/auth/login"), 0);
    QVERIFY(!probe.window->findChild<QMessageBox *>());
}

void TestSignInRegister::failureOfTheFollowingSignIn()
{
    GuiProbe probe;
    probe.service.answer("POST /api/auth/login", 403, R"({"message":"Not yet"})");
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"ghostButton"_s);
    QTRY_COMPARE(probe.errorText(), u"Not yet"_s);
    QVERIFY(probe.username()->isEnabled());
    QCOMPARE(ghostText(probe), u"Skapa konto"_s);
    QCOMPARE(probe.service.count("GET /api/me"), 0);
}

TIDELOFT_GUI_TEST_MAIN(TestSignInRegister)
#include "tst_sign_in_register.moc"
