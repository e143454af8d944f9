// The message field: the key that sends, and what stays when a message has arrived.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/chat/message_field.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft;

class TestMessageField : public QObject
{
    Q_OBJECT

private slots:
    void keyThatSends_data();
    void keyThatSends();
    void rest_data();
    void rest();
};

void TestMessageField::keyThatSends_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<bool>("sends");
    const auto row = [](const char *name, int key, Qt::KeyboardModifiers modifiers, bool sends) {
        QTest::newRow(name) << key << modifiers << sends;
    };
    row("Return", Qt::Key_Return, Qt::NoModifier, true);
    row("Return with Control", Qt::Key_Return, Qt::ControlModifier, true);
    row("Return with Shift", Qt::Key_Return, Qt::ShiftModifier, false);
    row("Enter on the keypad", Qt::Key_Enter, Qt::KeypadModifier, false);
    row("a letter", Qt::Key_A, Qt::NoModifier, false);
}

void TestMessageField::keyThatSends()
{
    QFETCH(const int, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    QTEST(ui::isSendKey(QKeyEvent(QEvent::KeyPress, key, modifiers)), "sends");
}

void TestMessageField::rest_data()
{
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("sent");
    QTest::addColumn<QString>("rest");
    QTest::newRow("nothing more") << u"first"_s << u"first"_s << QString();
    QTest::newRow("a second thought") << u"first second thought"_s << u"first"_s << u" second thought"_s;
    QTest::newRow("joined to it") << u"firstly"_s << u"first"_s << u"ly"_s;
    QTest::newRow("blanks before what was sent") << u"  first and more"_s << u"first"_s << u" and more"_s;
    QTest::newRow("only blanks follow") << u"first  "_s << u"first"_s << QString();
    QTest::newRow("the same twice") << u"abab"_s << u"ab"_s << u"ab"_s;
    QTest::newRow("changed") << u"fist of all"_s << u"first"_s << QString();
    QTest::newRow("in another place") << u"the first one"_s << u"first"_s << QString();
    QTest::newRow("in capitals") << u"First one"_s << u"first"_s << QString();
    QTest::newRow("shortened") << u"fir"_s << u"first"_s << QString();
    QTest::newRow("an empty field") << QString() << u"first"_s << QString();
    QTest::newRow("nothing known to be sent") << u"first"_s << QString() << QString();
}

void TestMessageField::rest()
{
    QFETCH(QString, written);
    QFETCH(QString, sent);
    QTEST(ui::textBehindSent(written, sent), "rest");
}

TIDELOFT_GUI_TEST_MAIN(TestMessageField)
#include "tst_message_field.moc"
