// Input methods: the Return that ends a composition does nothing else, the next one does.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_create_dialog_probe.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestCompositionKeys : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void messageField_data() { addKeys(); }
    void messageField();
    void theNextReturnSendsTheWholeText();
    void aSyllableThatFollowsAnother();
    void anAbandonedCompositionHoldsNothingBack();
    void aTextSetByTheProgramEndsTheComposition();
    void anInputMethodThatAnswersNothing();
    void leavingTheFieldEndsTheComposition();
    void aHeldReturnThatEndedACompositionSendsNothing();
    void searchField_data() { addKeys(); }
    void searchField();
    void signInFields_data();
    void signInFields();
    void createDialogFields_data() { addKeys(); }
    void createDialogFields();

private:
    static void addKeys();
};

namespace
{

const QByteArray search = QByteArrayLiteral("GET /api/users/search");
const QByteArray login = QByteArrayLiteral("POST /api/auth/login");

/// What an input method sends to the field that has the keyboard.
void compose(QLineEdit *field, const QString &preedit, const QString &commit = {})
{
    QInputMethodEvent event(preedit, {});
    event.setCommitString(commit);
    QApplication::sendEvent(field, &event);
}

void press(QLineEdit *field, Qt::Key key)
{
    QTest::keyClick(field, key, key == Qt::Key_Enter ? Qt::KeypadModifier : Qt::NoModifier);
}

/// A conversation with bob, the keyboard in the message field, and every request from now on in sight.
class ChatProbe : public SettingsProbe
{
public:
    ChatProbe()
    {
        service.answer(requests::keysOfBob, 200, R"({"keys":[]})");
        if (!open(u"bob"_s))
            qFatal("The conversation does not open");
        field = the<QLineEdit>(u"msgInput"_s);
    }

    QLineEdit *field = nullptr;
};

} // namespace

void TestCompositionKeys::addKeys()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("keypad Enter") << Qt::Key_Enter;
}

void TestCompositionKeys::messageField()
{
    QFETCH(Qt::Key, key);
    ChatProbe probe;
    QTest::keyClicks(probe.field, u"god "_s);
    compose(probe.field, u"dag"_s);
    QCOMPARE(probe.field->text(), u"god "_s); // what is composed does not belong to the text yet
    press(probe.field, key);
    compose(probe.field, {}, u"dag"_s);
    QCOMPARE(probe.field->text(), u"god dag"_s);
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(requests::keysOfBob), 0);
}

void TestCompositionKeys::theNextReturnSendsTheWholeText()
{
    ChatProbe probe;
    compose(probe.field, u"にほん"_s);
    compose(probe.field, u"日本"_s);
    press(probe.field, Qt::Key_Return);
    compose(probe.field, {}, u"日本"_s);
    QCOMPARE(probe.service.count(requests::keysOfBob), 0);
    press(probe.field, Qt::Key_Return);
    QVERIFY(probe.service.waitForRequests(requests::keysOfBob, 1));
    QCOMPARE(probe.field->text(), u"日本"_s);
}

// One event ends a syllable and begins the next: there is a composition behind it.
void TestCompositionKeys::aSyllableThatFollowsAnother()
{
    ChatProbe probe;
    compose(probe.field, u"안"_s);
    compose(probe.field, u"녕"_s, u"안"_s);
    QCOMPARE(probe.field->text(), u"안"_s);
    press(probe.field, Qt::Key_Return);
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(requests::keysOfBob), 0);
    compose(probe.field, {}, u"녕"_s);
    press(probe.field, Qt::Key_Return);
    QVERIFY(probe.service.waitForRequests(requests::keysOfBob, 1));
    QCOMPARE(probe.field->text(), u"안녕"_s);
}

void TestCompositionKeys::anAbandonedCompositionHoldsNothingBack()
{
    ChatProbe probe;
    QTest::keyClicks(probe.field, u"hej"_s);
    compose(probe.field, u"då"_s);
    compose(probe.field, {});
    press(probe.field, Qt::Key_Return);
    QVERIFY(probe.service.waitForRequests(requests::keysOfBob, 1));
    QCOMPARE(probe.field->text(), u"hej"_s);
}

void TestCompositionKeys::aTextSetByTheProgramEndsTheComposition()
{
    ChatProbe probe;
    QTest::keyClicks(probe.field, u"hej"_s);
    compose(probe.field, u"då"_s);
    QVERIFY(callSlot(*probe.window, "onMessageSent")); // the message before this one has arrived
    QCOMPARE(probe.field->text(), QString());
    QTest::keyClicks(probe.field, u"igen"_s);
    press(probe.field, Qt::Key_Return);
    QVERIFY(probe.service.waitForRequests(requests::keysOfBob, 1));
}

// It may have been switched off or have died: the second Return is the field's own again.
void TestCompositionKeys::anInputMethodThatAnswersNothing()
{
    ChatProbe probe;
    QTest::keyClicks(probe.field, u"hej"_s);
    compose(probe.field, u"då"_s);
    press(probe.field, Qt::Key_Return);
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(requests::keysOfBob), 0);
    press(probe.field, Qt::Key_Return);
    QVERIFY(probe.service.waitForRequests(requests::keysOfBob, 1));
}

void TestCompositionKeys::leavingTheFieldEndsTheComposition()
{
    ChatProbe probe;
    QTest::keyClicks(probe.field, u"hej"_s);
    compose(probe.field, u"då"_s);
    probe.the<QLineEdit>(u"sideSearch"_s)->setFocus();
    probe.field->setFocus();
    press(probe.field, Qt::Key_Return);
    QVERIFY(probe.service.waitForRequests(requests::keysOfBob, 1));
}

void TestCompositionKeys::aHeldReturnThatEndedACompositionSendsNothing()
{
    ChatProbe probe;
    compose(probe.field, u"dag"_s);
    press(probe.field, Qt::Key_Return);
    compose(probe.field, {}, u"dag"_s);
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s, true);
    QApplication::sendEvent(probe.field, &repeated);
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(requests::keysOfBob), 0);
}

void TestCompositionKeys::searchField()
{
    QFETCH(Qt::Key, key);
    SettingsProbe probe;
    probe.service.answer(search, 200, "[]");
    auto *field = probe.the<QLineEdit>(u"sideSearch"_s);
    field->setFocus();
    QTest::keyClicks(field, u"b"_s); // one letter alone is searched for by Return only
    compose(field, u"o"_s);
    press(field, key);
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(search), 0);
    compose(field, {});
    press(field, key);
    QVERIFY(probe.service.waitForRequests(search, 1));
}

void TestCompositionKeys::signInFields_data()
{
    QTest::addColumn<bool>("isPassword");
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("username, Return") << false << Qt::Key_Return;
    QTest::newRow("username, keypad Enter") << false << Qt::Key_Enter;
    QTest::newRow("password, Return") << true << Qt::Key_Return;
    QTest::newRow("password, keypad Enter") << true << Qt::Key_Enter;
}

void TestCompositionKeys::signInFields()
{
    QFETCH(bool, isPassword);
    QFETCH(Qt::Key, key);
    GuiProbe probe;
    probe.fillIn(u"ali"_s, u"correct"_s);
    QLineEdit *field = isPassword ? probe.password() : probe.username();
    field->setFocus();
    compose(field, u"ce"_s);
    press(field, key);
    QVERIFY(probe.username()->isEnabled()); // no sign-in is under way
    compose(field, {}, u"ce"_s);
    QCOMPARE(field->text(), isPassword ? u"correctce"_s : u"alice"_s);
    QCOMPARE(probe.service.count(login), 0);
    press(field, key);
    QVERIFY(probe.service.waitForRequests(login, 1));
}

void TestCompositionKeys::createDialogFields()
{
    QFETCH(Qt::Key, key);
    const SettingsProbe probe;
    QVERIFY(withCreateDialog(probe, [key](QDialog &dialog) {
        for (QLineEdit *field : {nameOf(dialog), descriptionOf(dialog)}) {
            field->setFocus();
            QTest::keyClicks(field, u"Ham"_s);
            compose(field, u"nen"_s);
            press(field, key);
            QVERIFY(dialog.isVisible());
            compose(field, {}, u"nen"_s);
            QCOMPARE(field->text(), u"Hamnen"_s);
        }
        press(nameOf(dialog), key);
        QVERIFY(!dialog.isVisible());
    }));
}

TIDELOFT_GUI_TEST_MAIN(TestCompositionKeys)
#include "tst_composition_keys.moc"
