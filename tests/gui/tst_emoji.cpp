// Emoji in people's texts are coloured pictures, and letters are letters.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/fonts.h"
#include "tests/gui/tst_emoji_table.h"
#include "tests/gui/tst_screen_glyphs.h"
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"
#include "ui/chat/bubble_text.h"
#include "ui/style/emoji_font.h"
#include "ui/widgets/emoji_formats.h"

#include <QApplication>
#include <QGlyphRun>
#include <QLabel>
#include <QScopeGuard>
#include <QTextLayout>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;
using tideloft::ui::BubbleText;

class TestEmoji : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void picturesByDefault_data();
    void picturesByDefault();
    void picturesByRequest();
    void othersAreLeftAlone_data();
    void othersAreLeftAlone();
    void withoutAFontOfEmojiNothingChanges();
    void commonestAreColoured_data();
    void commonestAreColoured();
    void lettersAreGrey_data();
    void lettersAreGrey();
};

namespace
{

const QString emojiFont = u"noto color emoji"_s;

/// The font of a message's text, as the window's sheet makes it.
QFont messageFont()
{
    const GuiProbe probe;
    const BubbleText text(u"Hello"_s, probe.window.get());
    text.ensurePolished();
    return text.font();
}

/// The families, the number of glyphs and the width in px of TEXT in a message.
std::tuple<QStringList, int, qreal> pictureOf(const QString &text, const QFont &font)
{
    QTextLayout layout(text, font);
    layout.setFormats(tideloft::ui::emojiFormats(text));
    layout.beginLayout();
    const qreal width = layout.createLine().naturalTextWidth();
    layout.endLayout();
    QStringList families;
    int glyphs = 0;
    for (const QGlyphRun &run : layout.glyphRuns()) {
        families << run.rawFont().familyName().toLower();
        glyphs += static_cast<int>(run.glyphIndexes().size());
    }
    return {families, glyphs, width};
}

/// Whether TEXT has pixels of a colour, in a message that stands in white on black.
bool isColoured(const QString &text)
{
    const GuiProbe probe;
    BubbleText label(text, probe.window.get());
    label.setStyleSheet(u"color: #ffffff; background: #000000; font-size: 24px;"_s);
    label.resize(label.sizeHint());
    const QImage picture = label.grab().toImage();
    int coloured = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            coloured += picture.pixelColor(x, y).saturation() > 60 ? 1 : 0;
    }
    return coloured > 20;
}

} // namespace

void TestEmoji::initTestCase()
{
    placeKeyPair();
    tideloft::app::substituteFonts();
}

// The ranges that Unicode 15 shows as pictures without being asked.
void TestEmoji::picturesByDefault_data()
{
    QTest::addColumn<QList<uint>>("bounds");
    for (const QList<uint> &bounds :
         QList<QList<uint>>{{0x231a, 0x231b},   {0x23e9, 0x23ec},   {0x23f0, 0x23f0},   {0x23f3, 0x23f3},
                            {0x25fd, 0x25fe},   {0x2614, 0x2615},   {0x2648, 0x2653},   {0x267f, 0x267f},
                            {0x2693, 0x2693},   {0x26a1, 0x26a1},   {0x26aa, 0x26ab},   {0x26bd, 0x26be},
                            {0x26c4, 0x26c5},   {0x26ce, 0x26ce},   {0x26d4, 0x26d4},   {0x26ea, 0x26ea},
                            {0x26f2, 0x26f3},   {0x26f5, 0x26f5},   {0x26fa, 0x26fa},   {0x26fd, 0x26fd},
                            {0x2705, 0x2705},   {0x270a, 0x270b},   {0x2728, 0x2728},   {0x274c, 0x274c},
                            {0x274e, 0x274e},   {0x2753, 0x2755},   {0x2757, 0x2757},   {0x2795, 0x2797},
                            {0x27b0, 0x27b0},   {0x27bf, 0x27bf},   {0x2b1b, 0x2b1c},   {0x2b50, 0x2b50},
                            {0x2b55, 0x2b55},   {0x1f004, 0x1f004}, {0x1f0cf, 0x1f0cf}, {0x1f18e, 0x1f18e},
                            {0x1f191, 0x1f19a}, {0x1f1e6, 0x1f1ff}, {0x1f201, 0x1f201}, {0x1f21a, 0x1f21a},
                            {0x1f22f, 0x1f22f}, {0x1f232, 0x1f236}, {0x1f238, 0x1f23a}, {0x1f250, 0x1f251},
                            {0x1f300, 0x1f320}, {0x1f32d, 0x1f335}, {0x1f337, 0x1f37c}, {0x1f37e, 0x1f393},
                            {0x1f3a0, 0x1f3ca}, {0x1f3cf, 0x1f3d3}, {0x1f3e0, 0x1f3f0}, {0x1f3f4, 0x1f3f4},
                            {0x1f3f8, 0x1f43e}, {0x1f440, 0x1f440}, {0x1f442, 0x1f4fc}, {0x1f4ff, 0x1f53d},
                            {0x1f54b, 0x1f54e}, {0x1f550, 0x1f567}, {0x1f57a, 0x1f57a}, {0x1f595, 0x1f596},
                            {0x1f5a4, 0x1f5a4}, {0x1f5fb, 0x1f64f}, {0x1f680, 0x1f6c5}, {0x1f6cc, 0x1f6cc},
                            {0x1f6d0, 0x1f6d2}, {0x1f6d5, 0x1f6d7}, {0x1f6dc, 0x1f6df}, {0x1f6eb, 0x1f6ec},
                            {0x1f6f4, 0x1f6fc}, {0x1f7e0, 0x1f7eb}, {0x1f7f0, 0x1f7f0}, {0x1f90c, 0x1f93a},
                            {0x1f93c, 0x1f945}, {0x1f947, 0x1f9ff}, {0x1fa70, 0x1fa7c}, {0x1fa80, 0x1fa88},
                            {0x1fa90, 0x1fabd}, {0x1fabf, 0x1fac5}, {0x1face, 0x1fadb}, {0x1fae0, 0x1fae8},
                            {0x1faf0, 0x1faf8}})
        QTest::addRow("%x-%x", bounds.first(), bounds.last()) << bounds;
}

void TestEmoji::picturesByDefault()
{
    QFETCH(const QList<uint>, bounds);
    const QFont font = messageFont();
    for (char32_t character = bounds.first(); character <= bounds.last(); ++character) {
        const QString text = QString::fromUcs4(&character, 1);
        QVERIFY2(familiesOf(text, font) == QStringList{emojiFont}, qPrintable(text));
        QCOMPARE(glyphCount(text, font), 1);
    }
}

// One picture each from the font of emoji, of the same width.
void TestEmoji::picturesByRequest()
{
    const QFont font = messageFont();
    const auto one = pictureOf(u"😀"_s, font);
    QStringList others;
    for (const QString &text : requestedPictures() + joinedPictures()) {
        if (pictureOf(text, font) != one)
            others << text;
    }
    QCOMPARE(others, QStringList());
}

// Nothing is known of other places of U+FE0F, and what the font does not have would be a box.
void TestEmoji::othersAreLeftAlone_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("letters") << u"Hello"_s;
    QTest::newRow("a letter") << u"a\ufe0f"_s;
    QTest::newRow("a digit") << u"1\ufe0f"_s;
    QTest::newRow("symbols") << u"✓\ufe0f➤\ufe0f●\ufe0f←\ufe0f"_s;
    QTest::newRow("not in the font") << u"🀀\ufe0f"_s;
    QTest::newRow("one of two is not in the font") << u"❤\ufe0f\u200d🀀"_s;
}

void TestEmoji::othersAreLeftAlone()
{
    QFETCH(const QString, text);
    QVERIFY(tideloft::ui::emojiFormats(text).isEmpty());
}

void TestEmoji::withoutAFontOfEmojiNothingChanges()
{
    QFont::removeSubstitutions(tideloft::ui::style::emojiFamily());
    const auto restore = qScopeGuard([] { tideloft::app::substituteFonts(); });
    QVERIFY(tideloft::ui::emojiFormats(u"❤️‍🔥 1️⃣"_s).isEmpty());
}

void TestEmoji::commonestAreColoured_data()
{
    QTest::addColumn<QString>("text");
    for (const QString &text : {u"😂"_s,
                                u"😊"_s,
                                u"😍"_s,
                                u"😢"_s,
                                u"😀"_s,
                                u"🤔"_s,
                                u"🥰"_s,
                                u"👍"_s,
                                u"👍🏽"_s,
                                u"🙏"_s,
                                u"🎉"_s,
                                u"🔥"_s,
                                u"🚀"_s,
                                u"⭐"_s,
                                u"✅"_s,
                                u"⌚"_s,
                                u"⚡"_s,
                                u"❤️"_s,
                                u"☀️"_s,
                                u"☺️"_s,
                                u"✔️"_s,
                                u"⚙️"_s,
                                u"ℹ️"_s,
                                u"♥️"_s,
                                u"▶️"_s,
                                u"🇸🇪"_s,
                                u"🏳️‍🌈"_s,
                                u"🧑‍⚕️"_s,
                                u"❤️‍🔥"_s,
                                u"👩‍❤️‍👨"_s,
                                u"‼️"_s,
                                u"1️⃣"_s})
        QTest::addRow("%s", qPrintable(text)) << text;
}

void TestEmoji::commonestAreColoured()
{
    QFETCH(const QString, text);
    QVERIFY(isColoured(text));
}

void TestEmoji::lettersAreGrey_data()
{
    QTest::addColumn<QString>("text");
    for (const QString &text : {u"abc"_s, u"Åäö"_s, u"0123456789"_s, u"#*"_s, u"©®"_s, u"✓"_s, u"➤"_s, u"●"_s,
                                u"←"_s, u"…"_s, u"12:04, 5 €"_s})
        QTest::addRow("%s", qPrintable(text)) << text;
}

void TestEmoji::lettersAreGrey()
{
    QFETCH(const QString, text);
    QVERIFY(!isColoured(text));
    QVERIFY(!familiesOf(text, messageFont()).contains(emojiFont));
}

TIDELOFT_GUI_TEST_MAIN(TestEmoji)
#include "tst_emoji.moc"
