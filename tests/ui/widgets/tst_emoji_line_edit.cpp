// A field draws pictures and is a field all the same: what is typed, composed, copied and undone in it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/style/emoji_font.h"
#include "ui/widgets/emoji_line_edit.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace tideloft;

class TestEmojiLineEdit : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theTextIsKept();
    void everyWayOfTypingIsFollowed();
    void aCompositionIsLeftAlone();
    void aDroppedCompositionIsForgotten();
    void undoTakesBackWhatWasTyped();
    void nothingIsToldOfPictures();
    void plainTextsAreDrawnOnce();
    void secretsAreLeftAlone();
};

namespace
{

const QString keycap = u"1️⃣"_s;

void compose(QLineEdit &field, const QString &preedit, const QString &committed = {})
{
    QInputMethodEvent event(preedit, {});
    event.setCommitString(committed);
    QApplication::sendEvent(&field, &event);
}

/// Whether the field draws its text as a fresh one does.
bool isDrawnAsFresh(QLineEdit &field)
{
    ui::EmojiLineEdit fresh(field.text(), nullptr);
    fresh.resize(field.size());
    fresh.setCursorPosition(field.cursorPosition());
    return field.grab().toImage() == fresh.grab().toImage();
}

/// Whether the field draws its text as a plain line edit does.
bool isDrawnPlain(QLineEdit &field)
{
    QLineEdit plain(field.text());
    field.resize(200, 30);
    plain.resize(200, 30);
    return field.grab().toImage() == plain.grab().toImage();
}

} // namespace

void TestEmojiLineEdit::initTestCase()
{
    QFont::insertSubstitution(ui::style::emojiFamily(), u"Noto Color Emoji"_s);
}

void TestEmojiLineEdit::theTextIsKept()
{
    const QString text = u"a ❤️‍🔥 b 1️⃣"_s;
    ui::EmojiLineEdit field(text, nullptr);
    QVERIFY(!isDrawnPlain(field));
    QCOMPARE(field.text(), text);
    field.selectAll();
    QCOMPARE(field.selectedText(), text);
    field.copy();
    QCOMPARE(QApplication::clipboard()->text(), text);
}

void TestEmojiLineEdit::everyWayOfTypingIsFollowed()
{
    ui::EmojiLineEdit field(nullptr);
    field.resize(200, 30);
    for (const QString &text :
         {u"a"_s, keycap, u"123"_s, keycap + u"abc"_s, u"abc"_s + keycap, u"abc"_s, QString()}) {
        field.setText(text);
        QVERIFY2(isDrawnAsFresh(field), qPrintable(text));
    }
    QTest::keyClicks(&field, u"see "_s);
    QApplication::clipboard()->setText(keycap + u" and "_s);
    field.paste();
    QVERIFY(isDrawnAsFresh(field));
    QTest::keyClicks(&field, u"x"_s);
    QTest::keyClick(&field, Qt::Key_Home);
    QTest::keyClicks(&field, u"y"_s);
    QCOMPARE(field.text(), u"ysee 1️⃣ and x"_s);
    QVERIFY(isDrawnAsFresh(field));
    compose(field, u"zh"_s);
    compose(field, {}, u"z❤️‍🔥"_s);
    QCOMPARE(field.text(), u"yz❤️‍🔥see 1️⃣ and x"_s);
    QVERIFY(isDrawnAsFresh(field));
    for (int i = 0; i < 4; ++i)
        QTest::keyClick(&field, Qt::Key_Delete);
    QVERIFY(isDrawnAsFresh(field));
}

// The way in which the input method wants its text drawn holds until it is done.
void TestEmojiLineEdit::aCompositionIsLeftAlone()
{
    ui::EmojiLineEdit field(keycap, nullptr);
    QLineEdit plain(keycap);
    for (QLineEdit *each : {static_cast<QLineEdit *>(&field), &plain}) {
        each->resize(200, 30);
        compose(*each, u"kana"_s);
    }
    QCOMPARE(field.grab().toImage(), plain.grab().toImage());
    compose(field, {});
    QCOMPARE(field.text(), keycap);
    QVERIFY(isDrawnAsFresh(field));
}

// Another text takes the place of what is composed, and no event tells of it.
void TestEmojiLineEdit::aDroppedCompositionIsForgotten()
{
    ui::EmojiLineEdit field(keycap, nullptr);
    field.resize(200, 30);
    compose(field, u"kana"_s);
    field.setText(keycap + u" and more"_s);
    QVERIFY(isDrawnAsFresh(field));
}

void TestEmojiLineEdit::undoTakesBackWhatWasTyped()
{
    ui::EmojiLineEdit field(nullptr);
    field.resize(200, 30);
    QTest::keyClicks(&field, u"a"_s);
    QApplication::clipboard()->setText(keycap);
    field.paste();
    field.undo();
    QCOMPARE(field.text(), u"a"_s);
    field.redo();
    QCOMPARE(field.text(), u"a"_s + keycap);
    QVERIFY(isDrawnAsFresh(field));
}

void TestEmojiLineEdit::nothingIsToldOfPictures()
{
    ui::EmojiLineEdit field(nullptr);
    const QSignalSpy changed(&field, &QLineEdit::textChanged);
    const QSignalSpy edited(&field, &QLineEdit::textEdited);
    const QSignalSpy selected(&field, &QLineEdit::selectionChanged);
    field.setText(keycap);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(edited.count(), 0);
    QCOMPARE(selected.count(), 0);
    QVERIFY(!field.isModified());
}

void TestEmojiLineEdit::plainTextsAreDrawnOnce()
{
    ui::EmojiLineEdit field(u"plain 😀 ❤"_s, nullptr);
    QVERIFY(isDrawnPlain(field));
}

void TestEmojiLineEdit::secretsAreLeftAlone()
{
    ui::EmojiLineEdit field(nullptr);
    field.setEchoMode(QLineEdit::Password);
    field.setText(keycap);
    QLineEdit plain(keycap);
    plain.setEchoMode(QLineEdit::Password);
    field.resize(200, 30);
    plain.resize(200, 30);
    QCOMPARE(field.grab().toImage(), plain.grab().toImage());
}

TIDELOFT_GUI_TEST_MAIN(TestEmojiLineEdit)
#include "tst_emoji_line_edit.moc"
