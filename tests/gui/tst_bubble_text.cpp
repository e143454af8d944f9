// A bubble's text is measured without being laid out in its label: the sizes are a label's all the same.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/bubble_text.h"
#include "ui/style/inline_styles.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QTextDocument>

using namespace Qt::StringLiterals;
using namespace tideloft;

class TestBubbleText : public QObject
{
    Q_OBJECT

private slots:
    void heightIsALabelsOwn_data();
    void heightIsALabelsOwn();
    void longWordsAreMeasuredAsTheyAreDrawn_data();
    void longWordsAreMeasuredAsTheyAreDrawn();
    void anotherFontIsMeasuredAnew();
};

void TestBubbleText::heightIsALabelsOwn_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("one letter") << u"x"_s;
    QTest::newRow("some lines") << u"The quick brown fox jumps over the lazy dog. "_s.repeated(8);
    QTest::newRow("line breaks of all sorts") << u"a\nb\r\nc\rd\u2028e\u2029f"_s;
    QTest::newRow("blank lines at both ends") << u"\n\nx\n\n"_s;
    QTest::newRow("blanks only") << u"   "_s;
    QTest::newRow("tabs") << u"a\tb\tc\t"_s.repeated(20);
    QTest::newRow("emoji") << u"🙂 🔒 🌍 "_s.repeated(20);
    QTest::newRow("another script") << u"漢字 かな "_s.repeated(20);
    QTest::newRow("right to left") << u"שלום עולם "_s.repeated(20);
    QTest::newRow("markup") << u"<b>x</b> &amp; <br> y"_s;
}

void TestBubbleText::heightIsALabelsOwn()
{
    QFETCH(const QString, text);
    const ui::BubbleText bubble(text, nullptr);
    QLabel label;
    label.setTextFormat(Qt::PlainText);
    label.setText(text);
    label.setWordWrap(true);
    label.setTextInteractionFlags(Qt::TextSelectableByMouse);
    label.setStyleSheet(ui::style::messageText());
    label.ensurePolished();
    for (int width = 40; width <= 496; width += 3)
        QCOMPARE(bubble.heightForWidth(width), label.heightForWidth(width));
    QCOMPARE(bubble.sizeHint().height(), label.heightForWidth(bubble.sizeHint().width()));
}

void TestBubbleText::longWordsAreMeasuredAsTheyAreDrawn_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("one word") << QString(500, u'x');
    QTest::newRow("among others") << u"see https://example.org/"_s + QString(80, u'y') + u" please\n"_s;
    QTest::newRow("a script without blanks") << u"漢字かな交じり文"_s.repeated(30);
}

void TestBubbleText::longWordsAreMeasuredAsTheyAreDrawn()
{
    QFETCH(const QString, text);
    ui::BubbleText bubble(text, nullptr);
    for (const int width : {60, 199, 344, 496}) {
        bubble.resize(width, bubble.heightForWidth(width));
        bubble.grab();
        const auto *document = bubble.findChild<QTextDocument *>();
        QVERIFY(document);
        QVERIFY(document->idealWidth() <= width);
        QCOMPARE(bubble.heightForWidth(width), qCeil(document->size().height()));
    }
}

void TestBubbleText::anotherFontIsMeasuredAnew()
{
    ui::BubbleText bubble(u"The quick brown fox jumps over the lazy dog. "_s.repeated(8), nullptr);
    const QSize small = bubble.sizeHint();
    bubble.setStyleSheet(u"font-size: 26px;"_s);
    QVERIFY(bubble.sizeHint().height() > 2 * small.height());
    QVERIFY(bubble.heightForWidth(small.width()) > 2 * small.height());
}

TIDELOFT_GUI_TEST_MAIN(TestBubbleText)
#include "tst_bubble_text.moc"
