// Where nobody has installed a font of emoji, what would be a picture is drawn as the letter that it is.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/fonts.h"
#include "tests/gui/tst_emoji_drawing.h"
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"

#include <QFontDatabase>

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

// No boxes, and no pictures.
void TestEmojiWithoutFont::lettersAreDrawn()
{
    QFETCH(const size_t, index);
    for (const QString &text : {u"\u00a9"_s, u"\u2122"_s}) {
        const QImage letter = places[index].draw(text, Qt::red);
        QCOMPARE(places[index].draw(text + QChar(0xfe0f), Qt::red), letter);
    }
}

TIDELOFT_GUI_TEST_MAIN(TestEmojiWithoutFont)
#include "tst_emoji_without_font.moc"
