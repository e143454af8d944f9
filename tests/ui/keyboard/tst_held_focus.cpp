// The keyboard waits while its widget is disabled, and comes back unless it was moved meanwhile.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/keyboard/held_focus.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestHeldFocus : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void theKeyboardComesBack();
    void keysDoNothingMeanwhile();
    void whoMovedTheKeyboardKeepsItThere();
    void theKeyboardOfAnotherWidgetIsLeftAlone();
    void aWidgetThatIsGoneGetsNothing();

private:
    std::unique_ptr<QWidget> window;
    QPointer<QWidget> place;
    QPointer<QLineEdit> line;
    QPointer<QLineEdit> other;
    HeldFocus held;
};

void TestHeldFocus::init()
{
    held = HeldFocus();
    window = std::make_unique<QWidget>();
    place = new QWidget(window.get());
    line = new QLineEdit(place);
    other = new QLineEdit(window.get());
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    line->setFocus();
}

void TestHeldFocus::theKeyboardComesBack()
{
    held.take({line}, place);
    line->setEnabled(false);
    QVERIFY(held.isWaiting());
    QCOMPARE(window->focusWidget(), place.data());
    line->setEnabled(true);
    held.giveBack();
    QVERIFY(line->hasFocus());
    QVERIFY(!held.isWaiting());
}

void TestHeldFocus::keysDoNothingMeanwhile()
{
    held.take({line}, place);
    line->setEnabled(false);
    QTest::keyClicks(QApplication::focusWidget(), u"typed"_s);
    QCOMPARE(line->text(), QString());
    QCOMPARE(other->text(), QString());
}

void TestHeldFocus::whoMovedTheKeyboardKeepsItThere()
{
    held.take({line}, place);
    line->setEnabled(false);
    other->setFocus();
    QVERIFY(!held.isWaiting());
    line->setEnabled(true);
    held.giveBack();
    QVERIFY(other->hasFocus());
}

void TestHeldFocus::theKeyboardOfAnotherWidgetIsLeftAlone()
{
    other->setFocus();
    held.take({line}, place);
    QVERIFY(other->hasFocus());
    QVERIFY(!held.isWaiting());
    held.giveBack();
    QVERIFY(other->hasFocus());
}

void TestHeldFocus::aWidgetThatIsGoneGetsNothing()
{
    held.take({line}, place);
    delete line;
    held.giveBack();
    QCOMPARE(window->focusWidget(), place.data());
    held.take({other}, place);
    delete place;
    QVERIFY(!held.isWaiting());
    held.giveBack();
}

TIDELOFT_GUI_TEST_MAIN(TestHeldFocus)
#include "tst_held_focus.moc"
