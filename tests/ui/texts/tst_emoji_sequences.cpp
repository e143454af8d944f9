// Which parts of a text are pictures because U+FE0F asks for them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/texts/emoji_sequences.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft;

class TestEmojiSequences : public QObject
{
    Q_OBJECT

private slots:
    void one_data();
    void one();
    void none_data();
    void none();
    void inText_data();
    void inText();
};

// Each is one sequence from its beginning to its end.
void TestEmojiSequences::one_data()
{
    QTest::addColumn<QString>("text");
    for (const QString &text : {u"\u00a9\ufe0f"_s,
                                u"\u2122\ufe0f"_s,
                                u"\u203c\ufe0f"_s,
                                u"❤️"_s,
                                u"☀️"_s,
                                u"㊙️"_s,
                                u"🅰️"_s,
                                u"🗺️"_s,
                                u"1️⃣"_s,
                                u"#️⃣"_s,
                                u"*️⃣"_s,
                                u"❤️‍🔥"_s,
                                u"🏳️‍🌈"_s,
                                u"🏳️‍⚧️"_s,
                                u"👁️‍🗨️"_s,
                                u"👩‍❤️‍👨"_s,
                                u"👩🏽‍❤️‍💋‍👨🏿"_s,
                                u"🧑‍⚕️"_s,
                                u"🕵🏽‍♂️"_s,
                                u"🙂‍↔️"_s,
                                u"🏴‍☠️"_s,
                                u"🇸🇪‍❤️"_s,
                                u"🏴\U000e0067\U000e0062\U000e007f‍❤️"_s})
        QTest::addRow("%s", qPrintable(text)) << text;
}

void TestEmojiSequences::one()
{
    QFETCH(const QString, text);
    QVERIFY(text.contains(QChar(0xfe0f)));
    QCOMPARE(ui::emojiSequences(text), (QList<ui::EmojiSequence>{{0, text.size()}}));
}

void TestEmojiSequences::none_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << QString();
    QTest::newRow("letters") << u"Hello"_s;
    QTest::newRow("pictures by default") << u"😀👍🏽🇸🇪👩‍🚀"_s;
    QTest::newRow("symbols without a sign") << u"❤☀©"_s;
    QTest::newRow("a letter with the sign") << u"a\ufe0f"_s;
    QTest::newRow("a digit without a keycap") << u"1\ufe0f"_s;
    QTest::newRow("a keycap without the sign") << u"1\u20e3"_s;
    QTest::newRow("the sign alone") << u"\ufe0f"_s;
    QTest::newRow("symbols that are letters") << u"✓\ufe0f ➤\ufe0f ●\ufe0f ←\ufe0f"_s;
    QTest::newRow("a flag with the sign") << u"🇸🇪\ufe0f"_s;
    QTest::newRow("half a pair before the sign") << QString(QChar(0xd83d)) + QChar(0xfe0f);
    QTest::newRow("the sign for letters") << u"❤\ufe0e"_s;
}

void TestEmojiSequences::none()
{
    QFETCH(const QString, text);
    QCOMPARE(ui::emojiSequences(text), QList<ui::EmojiSequence>());
}

void TestEmojiSequences::inText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<ui::EmojiSequence>>("sequences");
    using Found = QList<ui::EmojiSequence>;
    QTest::newRow("between words") << u"I ❤️ it"_s << Found{{2, 2}};
    QTest::newRow("two in a row") << u"❤️❤️"_s << Found{{0, 2}, {2, 2}};
    QTest::newRow("among others") << u"😀1️⃣👍🏽"_s << Found{{2, 3}};
    QTest::newRow("a digit before") << u"5❤️"_s << Found{{1, 2}};
    QTest::newRow("a number of keycaps") << u"1️⃣2️⃣"_s << Found{{0, 3}, {3, 3}};
    QTest::newRow("a skin tone behind the sign") << u"☝️🏽"_s << Found{{0, 2}};
    QTest::newRow("the sign twice") << u"❤\ufe0f\ufe0f"_s << Found{{0, 2}};
    QTest::newRow("joined to a letter") << u"❤️\u200da"_s << Found{{0, 2}};
    QTest::newRow("joined to nothing") << u"❤️\u200d"_s << Found{{0, 2}};
    QTest::newRow("a letter joined to it") << u"a\u200d❤️"_s << Found{{2, 2}};
    QTest::newRow("tags without an end") << u"🏴\U000e0067❤️"_s << Found{{4, 2}};
    QTest::newRow("over two lines") << u"❤️\n☀️"_s << Found{{0, 2}, {3, 2}};
}

void TestEmojiSequences::inText()
{
    QFETCH(const QString, text);
    QTEST(ui::emojiSequences(text), "sequences");
}

TIDELOFT_TEST_MAIN(TestEmojiSequences)
#include "tst_emoji_sequences.moc"
