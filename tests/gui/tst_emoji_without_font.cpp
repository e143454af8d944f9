// Without a font of emoji, a letter that asks to be a picture is drawn as a letter.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/fonts.h"
#include "tests/gui/tst_emoji_drawing.h"
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"

#include <QFontDatabase>
#include <QLibraryInfo>
#include <QVersionNumber>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestEmojiWithoutFont : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void lettersAreDrawn_data();
    void lettersAreDrawn();
    void cleanupTestCase() { probe.reset(); }

private:
    std::unique_ptr<GuiProbe> probe;
    std::vector<TextPlace> places;
};

namespace
{

/// Whether every pixel is black or of some red.
bool isRed(const QImage &picture)
{
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            if (qGreen(pixel) != 0 || qBlue(pixel) != 0)
                return false;
        }
    }
    return true;
}

} // namespace

void TestEmojiWithoutFont::initTestCase()
{
    QVERIFY(!QFontDatabase::hasFamily(u"Noto Color Emoji"_s));
    placeKeyPair();
    tideloft::app::substituteFonts();
    probe = std::make_unique<GuiProbe>();
    QVERIFY(probe->signIn());
    places = textPlaces(*probe);
}

void TestEmojiWithoutFont::lettersAreDrawn_data()
{
    QTest::addColumn<size_t>("index");
    for (size_t i = 0; i < places.size(); ++i)
        QTest::newRow(places[i].name) << i;
}

// No boxes, which stand for what no font has, and no pictures, which have other colours. Since 6.8 the
// toolkit may take the letter from another font when it asks to be a picture.
void TestEmojiWithoutFont::lettersAreDrawn()
{
    QFETCH(const size_t, index);
    for (const QString &text : {u"\u00a9"_s, u"\u2122"_s}) {
        const QImage letter = places[index].draw(text, Qt::red);
        const QImage asked = places[index].draw(text + QChar(0xfe0f), Qt::red);
        QVERIFY(isRed(asked));
        QVERIFY(asked != places[index].draw(u"\ue000"_s, Qt::red));
        QVERIFY(inkWidth(asked) > 0 && inkWidth(asked) < inkWidth(letter) * 4 / 3);
        if (QLibraryInfo::version() < QVersionNumber(6, 8))
            QCOMPARE(asked, letter);
    }
}

TIDELOFT_GUI_TEST_MAIN(TestEmojiWithoutFont)
#include "tst_emoji_without_font.moc"
