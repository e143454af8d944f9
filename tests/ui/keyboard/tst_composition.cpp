// When an input method composes a text in a field, and what ends that.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/keyboard/composition.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestComposition : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void lastsUntilTheTextIsCommitted();
    void lastsWhileSyllablesFollowEachOther();
    void endsWhenItIsAbandoned();
    void endsWhenTheProgramSetsTheText();
    void endsWhenTheKeyboardLeavesTheField();
    void typingIsNone();

private:
    void compose(const QString &preedit, const QString &commit = {});

    std::unique_ptr<QLineEdit> field;
    Composition *composition = nullptr;
};

void TestComposition::init()
{
    field = std::make_unique<QLineEdit>();
    composition = new Composition(field.get());
    QVERIFY(!composition->isActive());
}

void TestComposition::compose(const QString &preedit, const QString &commit)
{
    QInputMethodEvent event(preedit, {});
    event.setCommitString(commit);
    QApplication::sendEvent(field.get(), &event);
}

void TestComposition::lastsUntilTheTextIsCommitted()
{
    compose(u"にほん"_s);
    QVERIFY(composition->isActive());
    compose(u"日本"_s);
    QVERIFY(composition->isActive());
    compose({}, u"日本"_s);
    QVERIFY(!composition->isActive());
    QCOMPARE(field->text(), u"日本"_s);
}

// One event commits a syllable and begins the next.
void TestComposition::lastsWhileSyllablesFollowEachOther()
{
    compose(u"안"_s);
    bool duringChange = false;
    QLineEdit &changed = *field;
    connect(&changed, &QLineEdit::textChanged, &changed, [&] { duringChange = composition->isActive(); });
    compose(u"녕"_s, u"안"_s);
    QVERIFY(duringChange);
    QVERIFY(composition->isActive());
    QCOMPARE(field->text(), u"안"_s);
}

void TestComposition::endsWhenItIsAbandoned()
{
    compose(u"dag"_s);
    compose({});
    QVERIFY(!composition->isActive());
}

void TestComposition::endsWhenTheProgramSetsTheText()
{
    compose(u"dag"_s);
    field->setText(u"another"_s);
    QVERIFY(!composition->isActive());
}

void TestComposition::endsWhenTheKeyboardLeavesTheField()
{
    compose(u"dag"_s);
    QFocusEvent leaving(QEvent::FocusOut);
    QApplication::sendEvent(field.get(), &leaving);
    QVERIFY(!composition->isActive());
}

void TestComposition::typingIsNone()
{
    QTest::keyClicks(field.get(), u"hej"_s);
    QCOMPARE(field->text(), u"hej"_s);
    QVERIFY(!composition->isActive());
}

TIDELOFT_GUI_TEST_MAIN(TestComposition)
#include "tst_composition.moc"
