// Where the keyboard is while a sign-in or a registration is under way, and after it was refused.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/gui_probe.h"
#include "tests/support/popups.h"
#include "tests/support/test_main.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestSignInFocus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void firstFocusIsTheUsername();
    void aRefusedSignInAsksForThePassword_data();
    void aRefusedSignInAsksForThePassword();
    void keysDoNothingMeanwhile_data();
    void keysDoNothingMeanwhile();
    void whoMovedTheKeyboardKeepsItThere_data();
    void whoMovedTheKeyboardKeepsItThere();
    void theWindowMayLoseTheKeyboardMeanwhile();
    void aRefusedRegistrationGivesTheKeyboardBack();
    void theSignInAfterARegistrationAsksForThePassword();
    void whoTypesDuringThatSignInIsNotDisturbed();
};

namespace
{

const QByteArray logIn = QByteArrayLiteral("POST /api/auth/login");
const QByteArray join = QByteArrayLiteral("POST /api/auth/register");
const QByteArray refusal = QByteArrayLiteral(R"({"message":"No"})");

/// With both fields filled, and a service that refuses what it is asked for at PATH.
class RefusedProbe : public GuiProbe
{
public:
    explicit RefusedProbe(const QByteArray &path)
    {
        service.answer(path, 401, refusal);
        service.hold(path);
        fillIn(u"alice"_s, u"secret"_s);
        if (!QTest::qWaitForWindowActive(window.get()))
            qFatal("The window does not come up");
    }

    [[nodiscard]] QAbstractButton *create() const { return the<QAbstractButton>(u"ghostButton"_s); }
    [[nodiscard]] bool waitForRefusal(const QByteArray &path)
    {
        service.release(path);
        return waitFor([this] { return errorText() == u"No"; });
    }
};

void pressKey(Qt::Key key)
{
    QTest::keyClick(QApplication::focusWindow(), key);
}

} // namespace

void TestSignInFocus::aRefusedSignInAsksForThePassword_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QString>("from");
    QTest::addColumn<Qt::Key>("key");
    for (const auto &request : {logIn, QByteArray("GET /api/me")}) {
        const auto add = [&request](const char *what, const QString &from, Qt::Key key) {
            QTest::addRow("%s: %s", request.constData(), what) << request << from << key;
        };
        add("Return in the name", u"username"_s, Qt::Key_Return);
        add("Return in the password", u"password"_s, Qt::Key_Return);
        add("Space on the button", u"primaryButton"_s, Qt::Key_Space);
        add("a click", u"primaryButton"_s, Qt::Key_unknown);
    }
}

void TestSignInFocus::aRefusedSignInAsksForThePassword()
{
    QFETCH(QByteArray, request);
    QFETCH(QString, from);
    QFETCH(Qt::Key, key);
    RefusedProbe probe(request);
    QWidget *start = named(*probe.window, from);
    if (key == Qt::Key_unknown) {
        clickOnScreen(*start);
    } else {
        start->setFocus();
        pressKey(key);
    }
    QVERIFY(!probe.password()->isEnabled());
    QVERIFY(probe.waitForRefusal(request));
    QCOMPARE(QApplication::focusWidget(), probe.password());
    QCOMPARE(probe.password()->selectedText(), u"secret"_s);
    typeText(u"new"_s);
    QCOMPARE(probe.password()->text(), u"new"_s);
}

void TestSignInFocus::keysDoNothingMeanwhile_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<Qt::Key>("key");
    for (const QString &from : {u"password"_s, u"primaryButton"_s, u"ghostButton"_s}) {
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_E, Qt::Key_Down, Qt::Key_Return})
            QTest::addRow("%s, %#x", qPrintable(from), key) << from << key;
    }
}

void TestSignInFocus::keysDoNothingMeanwhile()
{
    QFETCH(QString, from);
    QFETCH(Qt::Key, key);
    const QByteArray request = from == u"ghostButton" ? join : logIn;
    RefusedProbe probe(request);
    named(*probe.window, from)->setFocus();
    pressKey(from == u"password" ? Qt::Key_Return : Qt::Key_Space);
    QVERIFY(!probe.password()->isEnabled());
    pressKey(key);
    QCOMPARE(probe.the<QComboBox>(u"langCombo"_s)->currentIndex(), 0);
    QVERIFY(!QApplication::activePopupWidget());
    QVERIFY(!probe.the<QCheckBox>(u"rememberCheck"_s)->isChecked());
    QVERIFY(probe.waitForRefusal(request));
    QCOMPARE(probe.service.count(request), 1);
}

void TestSignInFocus::whoMovedTheKeyboardKeepsItThere_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("byKey");
    QTest::newRow("a click on the language") << u"langCombo"_s << false;
    QTest::newRow("Tab") << u"rememberCheck"_s << true;
}

void TestSignInFocus::whoMovedTheKeyboardKeepsItThere()
{
    QFETCH(QString, target);
    QFETCH(bool, byKey);
    RefusedProbe probe(logIn);
    probe.password()->setFocus();
    pressKey(Qt::Key_Return);
    const auto *there = probe.the<QWidget>(target);
    if (byKey) {
        for (int i = 0; i < 5 && QApplication::focusWidget() != there; ++i)
            pressKey(Qt::Key_Tab);
    } else {
        clickOnScreen(*there);
        QTRY_VERIFY(QApplication::activePopupWidget());
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
        QTRY_VERIFY(!QApplication::activePopupWidget());
    }
    QCOMPARE(QApplication::focusWidget(), there);
    QVERIFY(probe.waitForRefusal(logIn));
    QCOMPARE(QApplication::focusWidget(), there);
}

void TestSignInFocus::theWindowMayLoseTheKeyboardMeanwhile()
{
    RefusedProbe probe(logIn);
    probe.password()->setFocus();
    pressKey(Qt::Key_Return);
    QWidget another;
    another.show();
    another.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&another));
    probe.window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(probe.window.get()));
    QVERIFY(probe.waitForRefusal(logIn));
    QCOMPARE(QApplication::focusWidget(), probe.password());
}

void TestSignInFocus::aRefusedRegistrationGivesTheKeyboardBack()
{
    RefusedProbe probe(join);
    clickOnScreen(*probe.create());
    QVERIFY(!probe.create()->isEnabled());
    QVERIFY(QApplication::focusWidget() != probe.create());
    QVERIFY(probe.waitForRefusal(join));
    QCOMPARE(QApplication::focusWidget(), probe.create());
}

void TestSignInFocus::theSignInAfterARegistrationAsksForThePassword()
{
    RefusedProbe probe(logIn);
    clickOnScreen(*probe.create());
    QVERIFY(probe.service.waitForRequests(logIn, 1));
    QCOMPARE(QApplication::focusWidget(), probe.create()); // this sign-in disables nothing
    QVERIFY(probe.waitForRefusal(logIn));
    QCOMPARE(QApplication::focusWidget(), probe.password());
    QCOMPARE(probe.password()->selectedText(), u"secret"_s);
}

void TestSignInFocus::whoTypesDuringThatSignInIsNotDisturbed()
{
    RefusedProbe probe(logIn);
    clickOnScreen(*probe.create());
    QVERIFY(probe.service.waitForRequests(logIn, 1));
    clickOnScreen(*probe.username());
    typeText(u"2"_s);
    QVERIFY(probe.waitForRefusal(logIn));
    QCOMPARE(QApplication::focusWidget(), probe.username());
}

void TestSignInFocus::firstFocusIsTheUsername()
{
    const GuiProbe probe;
    QVERIFY(probe.username()->hasFocus());
}

TIDELOFT_GUI_TEST_MAIN(TestSignInFocus)
#include "tst_sign_in_focus.moc"
