// Emoji in people's texts are coloured pictures, and letters are letters.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/fonts.h"
#include "tests/gui/tst_screen_glyphs.h"
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"
#include "ui/chat/bubble_text.h"

#include <QApplication>
#include <QLabel>

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
    void picturesByRequest_data();
    void picturesByRequest();
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

// Symbols that are pictures when U+FE0F follows.
void TestEmoji::picturesByRequest_data()
{
    QTest::addColumn<QList<uint>>("bounds");
    for (const QList<uint> &bounds :
         QList<QList<uint>>{{0x2049, 0x2049},   {0x2139, 0x2139},   {0x2194, 0x2199},   {0x21a9, 0x21aa},
                            {0x2328, 0x2328},   {0x23cf, 0x23cf},   {0x23ed, 0x23ef},   {0x23f1, 0x23f2},
                            {0x23f8, 0x23fa},   {0x24c2, 0x24c2},   {0x25aa, 0x25ab},   {0x25b6, 0x25b6},
                            {0x25c0, 0x25c0},   {0x25fb, 0x25fc},   {0x2600, 0x2604},   {0x260e, 0x260e},
                            {0x2611, 0x2611},   {0x2618, 0x2618},   {0x261d, 0x261d},   {0x2620, 0x2620},
                            {0x2622, 0x2623},   {0x2626, 0x2626},   {0x262a, 0x262a},   {0x262e, 0x262f},
                            {0x2638, 0x263a},   {0x2640, 0x2640},   {0x2642, 0x2642},   {0x265f, 0x2660},
                            {0x2663, 0x2663},   {0x2665, 0x2666},   {0x2668, 0x2668},   {0x267b, 0x267b},
                            {0x267e, 0x267e},   {0x2692, 0x2692},   {0x2694, 0x2697},   {0x2699, 0x2699},
                            {0x269b, 0x269c},   {0x26a0, 0x26a0},   {0x26a7, 0x26a7},   {0x26b0, 0x26b1},
                            {0x26c8, 0x26c8},   {0x26cf, 0x26cf},   {0x26d1, 0x26d1},   {0x26d3, 0x26d3},
                            {0x26e9, 0x26e9},   {0x26f0, 0x26f1},   {0x26f4, 0x26f4},   {0x26f7, 0x26f9},
                            {0x2702, 0x2702},   {0x2708, 0x2709},   {0x270c, 0x270d},   {0x270f, 0x270f},
                            {0x2712, 0x2712},   {0x2714, 0x2714},   {0x2716, 0x2716},   {0x271d, 0x271d},
                            {0x2721, 0x2721},   {0x2733, 0x2734},   {0x2744, 0x2744},   {0x2747, 0x2747},
                            {0x2763, 0x2764},   {0x27a1, 0x27a1},   {0x2934, 0x2935},   {0x2b05, 0x2b07},
                            {0x3030, 0x3030},   {0x303d, 0x303d},   {0x3297, 0x3297},   {0x3299, 0x3299},
                            {0x1f170, 0x1f171}, {0x1f17e, 0x1f17f}, {0x1f202, 0x1f202}, {0x1f237, 0x1f237},
                            {0x1f321, 0x1f321}, {0x1f324, 0x1f32c}, {0x1f336, 0x1f336}, {0x1f37d, 0x1f37d},
                            {0x1f396, 0x1f397}, {0x1f399, 0x1f39b}, {0x1f39e, 0x1f39f}, {0x1f3cb, 0x1f3ce},
                            {0x1f3d4, 0x1f3df}, {0x1f3f3, 0x1f3f3}, {0x1f3f5, 0x1f3f5}, {0x1f3f7, 0x1f3f7},
                            {0x1f43f, 0x1f43f}, {0x1f441, 0x1f441}, {0x1f4fd, 0x1f4fd}, {0x1f549, 0x1f54a},
                            {0x1f56f, 0x1f570}, {0x1f573, 0x1f579}, {0x1f587, 0x1f587}, {0x1f58a, 0x1f58d},
                            {0x1f590, 0x1f590}, {0x1f5a5, 0x1f5a5}, {0x1f5a8, 0x1f5a8}, {0x1f5b1, 0x1f5b2},
                            {0x1f5bc, 0x1f5bc}, {0x1f5c2, 0x1f5c4}, {0x1f5d1, 0x1f5d3}, {0x1f5dc, 0x1f5de},
                            {0x1f5e1, 0x1f5e1}, {0x1f5e3, 0x1f5e3}, {0x1f5e8, 0x1f5e8}, {0x1f5ef, 0x1f5ef},
                            {0x1f5f3, 0x1f5f3}, {0x1f5fa, 0x1f5fa}, {0x1f6cb, 0x1f6cb}, {0x1f6cd, 0x1f6cf},
                            {0x1f6e0, 0x1f6e5}, {0x1f6e9, 0x1f6e9}, {0x1f6f0, 0x1f6f0}, {0x1f6f3, 0x1f6f3}})
        QTest::addRow("%x-%x", bounds.first(), bounds.last()) << bounds;
}

void TestEmoji::picturesByRequest()
{
    QFETCH(const QList<uint>, bounds);
    const QFont font = messageFont();
    for (char32_t character = bounds.first(); character <= bounds.last(); ++character) {
        const QString text = QString::fromUcs4(&character, 1) + QChar(0xfe0f);
        QVERIFY2(familiesOf(text, font).contains(emojiFont), qPrintable(text));
    }
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
                                u"🧑‍⚕️"_s})
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
