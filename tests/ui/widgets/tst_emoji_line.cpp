// Cutting a line with pictures where its room ends.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/style/emoji_font.h"
#include "ui/texts/emoji_sequences.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/emoji_line.h"

#include <QApplication>

using namespace Qt::StringLiterals;
using namespace tideloft;

class TestEmojiLine : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cutsBetweenPictures_data();
    void cutsBetweenPictures();
    void whatFitsIsWhole();
    void aLabelIsAsWideAsItsPictures();
};

namespace
{

/// Whether PLACE is not inside a picture of TEXT.
bool isBetweenPictures(const QString &text, qsizetype place)
{
    const QList<ui::EmojiSequence> pictures = ui::emojiSequences(text);
    return std::ranges::none_of(pictures, [place](const ui::EmojiSequence &picture) {
        return place > picture.start && place < picture.start + picture.length;
    });
}

} // namespace

void TestEmojiLine::initTestCase()
{
    QFont::insertSubstitution(ui::style::emojiFamily(), u"Noto Color Emoji"_s);
}

void TestEmojiLine::cutsBetweenPictures_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("pictures alone") << u"❤️‍🔥1️⃣👩‍❤️‍👨👁️‍🗨️"_s;
    QTest::newRow("pictures and words")
        << u"I ❤️‍🔥 it 1️⃣ and 👩🏽‍❤️‍💋‍👨🏿 too"_s;
    QTest::newRow("letters with marks") << u"e\u0301e\u0301 ❤️ e\u0301e\u0301e\u0301"_s;
    QTest::newRow("right to left") << u"שלום ❤️‍🔥 עולם 1️⃣"_s;
}

void TestEmojiLine::cutsBetweenPictures()
{
    QFETCH(const QString, text);
    const QFont font;
    const int whole = qCeil(ui::EmojiLine(text, font).width());
    qsizetype before = 0;
    for (int room = 0; room < whole; ++room) {
        const QString cut = ui::EmojiLine(text, font).elided(room);
        const QString kept = cut.chopped(cut.isEmpty() ? 0 : 1);
        QVERIFY(cut.isEmpty() || cut.endsWith(u'…'));
        QVERIFY(text.startsWith(kept) && isBetweenPictures(text, kept.size()));
        QVERIFY(cut.isEmpty() || ui::EmojiLine(cut, font).width() <= room);
        QVERIFY(kept.size() >= before);
        QVERIFY(text.at(kept.size()) != QChar(0x301)); // its letter would stand alone
        before = kept.size();
    }
    QVERIFY(before > 0);
}

void TestEmojiLine::whatFitsIsWhole()
{
    const QString text = u"I ❤️‍🔥 it"_s;
    const int whole = qCeil(ui::EmojiLine(text, QFont()).width());
    QCOMPARE(ui::EmojiLine(text, QFont()).elided(whole), text);
}

void TestEmojiLine::aLabelIsAsWideAsItsPictures()
{
    const ui::ElidedLabel one(u"❤️"_s, nullptr);
    const ui::ElidedLabel joined(u"❤️‍🔥"_s, nullptr);
    QCOMPARE(joined.sizeHint(), one.sizeHint());
    QCOMPARE(joined.sizeHint().height(), ui::ElidedLabel(u"x"_s, nullptr).sizeHint().height());
}

TIDELOFT_GUI_TEST_MAIN(TestEmojiLine)
#include "tst_emoji_line.moc"
