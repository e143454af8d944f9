// The room that a text needs, measured without a widget: it is what a selectable label takes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/widgets/text_height.h"

#include <QApplication>
#include <QLabel>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestTextHeight : public QObject
{
    Q_OBJECT

private slots:
    void isThatOfASelectableLabel_data();
    void isThatOfASelectableLabel();
    void aLongWordGetsMoreLinesWhereItMayBreak();
    void theWidthIsThatOfTheWidestLine();
    void measuringLeavesNothingForTheNextText();
};

void TestTextHeight::isThatOfASelectableLabel_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("width");
    for (const int width : {120, 300, 496}) {
        const auto row = [width](const char *name, const QString &text) {
            QTest::addRow("%s, %d px", name, width) << text << width;
        };
        row("short", u"Hello there"_s);
        row("many words", u"The quick brown fox jumps over the lazy dog. "_s.repeated(9).trimmed());
        row("line breaks", u"one\ntwo\n\nfour"_s);
        row("wide script", u"漢字かな交じり文"_s.repeated(9));
        row("markup", u"<b>Bold</b><br>text"_s);
    }
}

void TestTextHeight::isThatOfASelectableLabel()
{
    QFETCH(const QString, text);
    QFETCH(const int, width);
    QLabel label;
    label.setTextFormat(Qt::PlainText);
    label.setWordWrap(true);
    label.setTextInteractionFlags(Qt::TextSelectableByMouse);
    label.setText(text);
    QCOMPARE(textHeight(text, label.font(), width, QTextOption::WordWrap), label.heightForWidth(width));
}

void TestTextHeight::aLongWordGetsMoreLinesWhereItMayBreak()
{
    const QFont font;
    const QString word(200, u'w');
    const int oneLine = textHeight(u"w"_s, font, 300, QTextOption::WordWrap);
    QCOMPARE(textHeight(word, font, 300, QTextOption::WordWrap), oneLine);
    QVERIFY(textHeight(word, font, 300, QTextOption::WrapAtWordBoundaryOrAnywhere) > 3 * oneLine);
}

void TestTextHeight::theWidthIsThatOfTheWidestLine()
{
    const QFont font;
    const QSize one = textSize(u"a longer line"_s, font, 1'000);
    const QSize two = textSize(u"a longer line\nshort"_s, font, 1'000);
    QCOMPARE(two.width(), one.width());
    QCOMPARE(two.height(), 2 * one.height());
    QVERIFY(qAbs(one.width() - QFontMetrics(font).horizontalAdvance(u"a longer line"_s)) <= 1);
    QVERIFY(textSize(u"word "_s.repeated(50), font, 200).width() <= 200);
}

// One document measures every text.
void TestTextHeight::measuringLeavesNothingForTheNextText()
{
    QFont large;
    large.setPixelSize(60);
    const QFont usual;
    const QSize before = textSize(u"Hello"_s, usual, 300);
    textSize(u"🙂 Hello\nHello"_s, large, 50);
    textHeight(u"Hello"_s, large, 50, QTextOption::WrapAnywhere);
    QCOMPARE(textSize(u"Hello"_s, usual, 300), before);
}

TIDELOFT_GUI_TEST_MAIN(TestTextHeight)
#include "tst_text_height.moc"
