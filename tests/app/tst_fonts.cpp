// "Segoe UI" is stood in for by fonts that a Debian has.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/fonts.h"
#include "tests/support/test_main.h"
#include "ui/style/emoji_font.h"
#include "ui/style/style_sheets.h"
#include "ui/style/symbol_font.h"

#include <QApplication>
#include <QFont>
#include <QLineEdit>
#include <QMainWindow>
#include <QRawFont>

using namespace Qt::StringLiterals;

class TestFonts : public QObject
{
    Q_OBJECT

private slots:
    void lettersThenEmojiThenSymbols();
    void symbolsAreNoEmoji();
    void picturesComeFromOneFont();
    void lettersHaveNoEmoji();
    void widgetsHaveTheSheetsFontFromTheirBeginning();
};

void TestFonts::lettersThenEmojiThenSymbols()
{
    QCOMPARE(QFont::substitutes(u"Segoe UI"_s), QStringList());
    tideloft::app::substituteFonts();
    // The toolkit keeps these names in lower case.
    QCOMPARE(QFont::substitutes(u"Segoe UI"_s),
             (QStringList{u"open sans"_s, u"noto color emoji"_s, u"dejavu sans"_s}));
}

void TestFonts::symbolsAreNoEmoji()
{
    tideloft::app::substituteFonts();
    QCOMPARE(QFont::substitutes(tideloft::ui::style::symbolFamily()).mid(0, 2),
             (QStringList{u"open sans"_s, u"dejavu sans"_s}));
}

// No font of letters stands behind it: that would draw half of a picture.
void TestFonts::picturesComeFromOneFont()
{
    tideloft::app::substituteFonts();
    QCOMPARE(QFont::substitutes(tideloft::ui::style::emojiFamily()), QStringList{u"noto color emoji"_s});
}

// What the font of letters has no other font draws.
void TestFonts::lettersHaveNoEmoji()
{
    const QRawFont letters = QRawFont::fromFont(QFont(u"Open Sans"_s));
    QCOMPARE(letters.familyName(), u"Open Sans"_s);
    QVERIFY(letters.supportsCharacter(u'1'));
    for (const char32_t emoji : U"⌚⏰⚡⭐✅❤☀☺✈☎♥😀😂😊😍😢🚀🤔🥰")
        QVERIFY2(!emoji || !letters.supportsCharacter(emoji), qPrintable(QString::fromUcs4(&emoji, 1)));
}

void TestFonts::widgetsHaveTheSheetsFontFromTheirBeginning()
{
    QFont heavy = QApplication::font();
    heavy.setWeight(QFont::Medium);
    QApplication::setFont(heavy);
    tideloft::app::useSheetFont();
    QMainWindow window;
    auto *field = new QLineEdit(&window);
    const QFont before = field->font();
    window.setStyleSheet(tideloft::ui::darkStyleSheet());
    window.show();
    QCOMPARE(before.families(), field->font().families());
    QCOMPARE(before.pixelSize(), field->font().pixelSize());
    QCOMPARE(before.weight(), QFont::Medium); // what the desktop says beside that stays
    QCOMPARE(before, field->font());
}

TIDELOFT_GUI_TEST_MAIN(TestFonts)
#include "tst_fonts.moc"
