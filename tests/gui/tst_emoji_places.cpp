// Wherever a text of a person stands, what the text asks to be a picture is one, and letters are letters.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/fonts.h"
#include "tests/gui/tst_emoji_drawing.h"
#include "tests/gui/tst_emoji_table.h"
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>

#include <utility>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestEmojiPlaces : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void picturesAreSingle_data() { eachPlace(); }
    void picturesAreSingle();
    void lettersStayLetters_data() { eachPlace(); }
    void lettersStayLetters();
    // Initials stand in the middle, and a box has another place for pictures.
    void lettersStandWhereTheyStood_data() { eachPlace({"header's initials", "box"}); }
    void lettersStandWhereTheyStood();
    void cleanupTestCase() { probe.reset(); }

private:
    void eachPlace(const QByteArrayList &except = {}) const;

    std::unique_ptr<GuiProbe> probe;
    std::vector<TextPlace> places;
};

namespace
{

/// PICTURE from its first column that is not all black, as many columns as are drawn in, and all rows.
QImage inkOf(const QImage &picture)
{
    const QList<int> columns = inkColumns(picture);
    return columns.isEmpty() ? QImage()
                             : picture.copy(columns.first(), 0, inkWidth(picture), picture.height());
}

/// SEQUENCES in rows that have room everywhere.
QList<QStringList> inRows(const QStringList &sequences)
{
    QList<QStringList> rows;
    QStringList row;
    for (const QString &sequence : sequences) {
        const qsizetype length = row.join(QString()).size() + sequence.size();
        if (row.size() == 8 || length > 32)
            rows << std::exchange(row, {});
        row << sequence;
    }
    return rows << row;
}

/// Whether TEXT is drawn at PLACE as pictures alone: they are the same with every pen, and letters are not.
bool isPictured(const TextPlace &place, const QString &text)
{
    return place.draw(text, Qt::red) == place.draw(text, Qt::green);
}

} // namespace

void TestEmojiPlaces::initTestCase()
{
    placeKeyPair();
    tideloft::app::substituteFonts();
    probe = std::make_unique<GuiProbe>();
    QVERIFY(probe->signIn());
    places = textPlaces(*probe);
}

void TestEmojiPlaces::eachPlace(const QByteArrayList &except) const
{
    QTest::addColumn<size_t>("index");
    for (size_t i = 0; i < places.size(); ++i) {
        if (!except.contains(places[i].name))
            QTest::newRow(places[i].name) << i;
    }
}

// Of two pictures for one sequence, and of letters beside a picture, a row would be wider.
void TestEmojiPlaces::picturesAreSingle()
{
    QFETCH(const size_t, index);
    const TextPlace &place = places[index];
    const int eight = inkWidth(place.draw(u"⬜"_s.repeated(8), Qt::red)); // they fill their whole width
    QVERIFY(eight > 8 * 5);
    QStringList faults;
    for (const QStringList &row : inRows(requestedPictures() + joinedPictures())) {
        const QImage inRed = place.draw(row.join(QString()), Qt::red);
        const qsizetype beyond = 8 * inkWidth(inRed) - row.size() * eight;
        if (inRed != place.draw(row.join(QString()), Qt::green) || qAbs(beyond) > eight * 2 / 3)
            faults << row;
    }
    QCOMPARE(faults.join(u' '), QString());
}

void TestEmojiPlaces::lettersStayLetters()
{
    QFETCH(const size_t, index);
    for (const QString &text : {u"a"_s, u"1"_s, u"#"_s, u"*"_s, u"\u00a9"_s, u"✓"_s, u"➤"_s, u"●"_s, u"←"_s,
                                u"1\u20e3"_s, u"1 ❤️‍🔥"_s, u"❤️‍🔥 1"_s})
        QVERIFY2(!isPictured(places[index], text), qPrintable(text));
}

// A picture behind letters moves none of them.
void TestEmojiPlaces::lettersStandWhereTheyStood()
{
    QFETCH(const size_t, index);
    const auto drawn = [this, index](const QString &text) { return places[index].draw(text, Qt::red); };
    const QImage alone = inkOf(drawn(u"Hg"_s));
    for (const QString &text : {u"Hg ❤️‍🔥"_s, u"Hg 1️⃣ Hg"_s})
        QCOMPARE(inkOf(drawn(text)).copy(alone.rect()), alone);
}

TIDELOFT_GUI_TEST_MAIN(TestEmojiPlaces)
#include "tst_emoji_places.moc"
