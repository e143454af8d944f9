// Signing in: what the page takes, what it sends, and what it shows meanwhile and at a failure.
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

class TestSignInFlow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void emptyFields_data();
    void emptyFields();
    void passwordOfBlanksIsSent();
    void nameIsTrimmedAndPasswordIsNot();
    void rememberIsABoolean_data();
    void rememberIsABoolean();
    void returnInEitherFieldSignsIn_data();
    void returnInEitherFieldSignsIn();
    void busy_data();
    void busy();
    void signInHidesAnEarlierError();
    void failures_data();
    void failures();
    void typingHidesTheError_data();
    void typingHidesTheError();
    void staysBusyUntilTheProfileArrives();
    void profileThatIsNoObjectKeepsThePageBusy_data();
    void profileThatIsNoObjectKeepsThePageBusy();
};

void TestSignInFlow::emptyFields_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("message");
    const QString swedish = u"Fyll i användarnamn och lösenord."_s;
    const QStringList english{u"Please enter your username and password."_s,
                              u"Please enter a username and password."_s};
    const QStringList buttons{u"primaryButton"_s, u"ghostButton"_s};
    for (int i = 0; i < 2; ++i) {
        for (int language = 0; language < 2; ++language) {
            const auto add = [&](const char *what, const QString &name, const QString &password) {
                QTest::addRow("%s, %s, language %d", qPrintable(buttons[i]), what, language)
                    << buttons[i] << language << name << password << (language ? english[i] : swedish);
            };
            add("both empty", {}, {});
            add("no name", {}, u"secret"_s);
            add("no password", u"alice"_s, {});
            add("name of blanks", u"   "_s, u"secret"_s);
        }
    }
}

void TestSignInFlow::emptyFields()
{
    QFETCH(QString, button);
    QFETCH(int, language);
    QFETCH(QString, name);
    QFETCH(QString, password);
    GuiProbe probe;
    probe.window->setLanguageIndex(language);
    probe.fillIn(name, password);
    probe.click(button);
    QTEST(probe.errorText(), "message");
    QVERIFY(probe.the<QLabel>(u"authError"_s)->isVisible());
    QVERIFY(probe.username()->isEnabled());
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.requests().size(), 1);
    QVERIFY(!probe.window->findChild<QMessageBox *>());
}

void TestSignInFlow::passwordOfBlanksIsSent()
{
    GuiProbe probe;
    probe.fillIn(u"alice"_s, u"   "_s);
    probe.click(u"primaryButton"_s);
    QVERIFY(probe.service.waitForRequests("POST /api/auth/login", 1));
    const auto sent = QJsonDocument::fromJson(probe.service.lastRequest("POST /api/auth/login").body);
    QCOMPARE(sent[u"password"], QJsonValue(u"   "_s));
}

void TestSignInFlow::nameIsTrimmedAndPasswordIsNot()
{
    GuiProbe probe;
    probe.fillIn(u"  Alice "_s, u" p w "_s);
    probe.click(u"primaryButton"_s);
    QVERIFY(probe.service.waitForRequests("POST /api/auth/login", 1));
    const auto sent = QJsonDocument::fromJson(probe.service.lastRequest("POST /api/auth/login").body);
    QCOMPARE(sent[u"username"], QJsonValue(u"Alice"_s));
    QCOMPARE(sent[u"password"], QJsonValue(u" p w "_s));
}

void TestSignInFlow::rememberIsABoolean_data()
{
    QTest::addColumn<int>("clicks");
    QTest::addColumn<bool>("remembered");
    QTest::newRow("at first") << 0 << false;
    QTest::newRow("ticked") << 1 << true;
    QTest::newRow("ticked and cleared") << 2 << false;
}

void TestSignInFlow::rememberIsABoolean()
{
    QFETCH(int, clicks);
    QFETCH(bool, remembered);
    GuiProbe probe;
    auto *check = probe.the<QCheckBox>(u"rememberCheck"_s);
    for (int i = 0; i < clicks; ++i)
        QTest::mouseClick(check, Qt::LeftButton, {}, QPoint(8, check->height() / 2));
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    QVERIFY(probe.service.waitForRequests("POST /api/auth/login", 1));
    const auto sent = QJsonDocument::fromJson(probe.service.lastRequest("POST /api/auth/login").body);
    QCOMPARE(sent[u"rememberMe"], QJsonValue(remembered));
}

void TestSignInFlow::returnInEitherFieldSignsIn_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("username, Return") << u"username"_s << Qt::Key_Return;
    QTest::newRow("password, Return") << u"password"_s << Qt::Key_Return;
    QTest::newRow("password, keypad Enter") << u"password"_s << Qt::Key_Enter;
}

void TestSignInFlow::returnInEitherFieldSignsIn()
{
    QFETCH(QString, field);
    QFETCH(Qt::Key, key);
    GuiProbe probe;
    probe.fillIn(u"alice"_s, u"secret"_s);
    QTest::keyClick(named(*probe.window, field), key);
    QTRY_VERIFY(probe.onMainPage());
    QCOMPARE(probe.service.count("POST /api/auth/login"), 1);
}

void TestSignInFlow::busy_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("during");
    QTest::addColumn<QString>("after");
    QTest::newRow("Swedish") << 0 << u"Loggar in..."_s << u"Logga in"_s;
    QTest::newRow("English") << 1 << u"Signing in..."_s << u"Sign in"_s;
}

void TestSignInFlow::busy()
{
    QFETCH(int, language);
    GuiProbe probe;
    probe.window->setLanguageIndex(language);
    probe.service.answer("POST /api/auth/login", 401, R"({"message":"No"})");
    probe.service.hold("POST /api/auth/login");
    const QString createText = probe.the<QAbstractButton>(u"ghostButton"_s)->text();
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    const auto enabled = [&probe](const QString &what) { return named(*probe.window, what)->isEnabled(); };
    for (const QString &what : {u"primaryButton"_s, u"ghostButton"_s, u"username"_s, u"password"_s})
        QVERIFY2(!enabled(what), qPrintable(what));
    QVERIFY(enabled(u"rememberCheck"_s));
    QVERIFY(enabled(u"langCombo"_s));
    QTEST(probe.the<QAbstractButton>(u"primaryButton"_s)->text(), "during");
    QCOMPARE(probe.the<QAbstractButton>(u"ghostButton"_s)->text(), createText);
    QVERIFY(probe.service.waitForRequests("POST /api/auth/login", 1));
    probe.service.release("POST /api/auth/login");
    QTRY_VERIFY(enabled(u"primaryButton"_s));
    for (const QString &what : {u"ghostButton"_s, u"username"_s, u"password"_s})
        QVERIFY2(enabled(what), qPrintable(what));
    QTEST(probe.the<QAbstractButton>(u"primaryButton"_s)->text(), "after");
}

void TestSignInFlow::signInHidesAnEarlierError()
{
    GuiProbe probe;
    probe.service.answerOnce("POST /api/auth/login", 401, R"({"message":"Wrong password"})");
    probe.fillIn(u"alice"_s, u"wrong"_s);
    probe.click(u"primaryButton"_s);
    QTRY_COMPARE(probe.errorText(), u"Wrong password"_s);
    probe.service.hold("POST /api/auth/login");
    probe.click(u"primaryButton"_s);
    QCOMPARE(probe.errorText(), u"(hidden)"_s);
}

void TestSignInFlow::failures_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("message");
    for (const auto &request : {QByteArray("POST /api/auth/login"), QByteArray("GET /api/me")}) {
        const auto add = [&](const char *what, const QByteArray &body, const QString &message) {
            QTest::addRow("%s: %s", request.constData(), what) << request << body << message;
        };
        add("message", R"({"message":"Wrong password"})", u"Wrong password"_s);
        add("error", R"({"error":"Locked"})", u"Locked"_s);
        add("neither", "{}", u"Unknown error"_s);
        add("markup", R"({"message":"<b>No</b> <img src='/dev/zero'>"})",
            u"<b>No</b> <img src='/dev/zero'>"_s);
        add("blanks are kept", R"({"message":"  No\n"})", u"  No\n"_s);
    }
}

void TestSignInFlow::failures()
{
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, body);
    QFETCH(QString, message);
    GuiProbe probe;
    probe.service.answer(request, 401, body);
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    QTRY_COMPARE(probe.errorText(), message);
    QCOMPARE(probe.the<QLabel>(u"authError"_s)->textFormat(), Qt::PlainText);
    QVERIFY(probe.username()->isEnabled());
    QCOMPARE(probe.the<QAbstractButton>(u"primaryButton"_s)->text(), u"Logga in"_s);
    QCOMPARE(probe.username()->text(), u"alice"_s);
    QVERIFY(!probe.onMainPage());
    QVERIFY(!probe.window->findChild<QMessageBox *>());
}

void TestSignInFlow::typingHidesTheError_data()
{
    QTest::addColumn<QString>("field");
    QTest::newRow("name") << u"username"_s;
    QTest::newRow("password") << u"password"_s;
}

void TestSignInFlow::typingHidesTheError()
{
    QFETCH(QString, field);
    GuiProbe probe;
    probe.click(u"primaryButton"_s);
    QCOMPARE(probe.errorText(), u"Fyll i användarnamn och lösenord."_s);
    QTest::keyClick(named(*probe.window, field), Qt::Key_A);
    QCOMPARE(probe.errorText(), u"(hidden)"_s);
}

void TestSignInFlow::staysBusyUntilTheProfileArrives()
{
    GuiProbe probe;
    probe.service.hold("GET /api/me");
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    QVERIFY(probe.service.waitForRequests("GET /api/me", 1));
    QVERIFY(!probe.username()->isEnabled());
    QVERIFY(!probe.onMainPage());
    probe.service.release("GET /api/me");
    QTRY_VERIFY(probe.onMainPage());
    QVERIFY(probe.username()->isEnabled());
    QCOMPARE(probe.the<QAbstractButton>(u"primaryButton"_s)->text(), u"Logga in"_s);
}

void TestSignInFlow::profileThatIsNoObjectKeepsThePageBusy_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("array") << QByteArray(R"([{"username":"alice"}])");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("HTML") << QByteArray("<html><body>Please sign in</body></html>");
}

void TestSignInFlow::profileThatIsNoObjectKeepsThePageBusy()
{
    QFETCH(QByteArray, body);
    GuiProbe probe;
    probe.service.answer("GET /api/me", 200, body);
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    QVERIFY(probe.service.waitForRequests("GET /api/me", 1));
    QVERIFY(probe.settle());
    QVERIFY(!probe.username()->isEnabled());
    QCOMPARE(probe.the<QAbstractButton>(u"primaryButton"_s)->text(), u"Loggar in..."_s);
    QVERIFY(!probe.onMainPage());
    QCOMPARE(probe.errorText(), u"(hidden)"_s);
    QVERIFY(!probe.refreshTimer()->isActive());
}

TIDELOFT_GUI_TEST_MAIN(TestSignInFlow)
#include "tst_sign_in_flow.moc"
