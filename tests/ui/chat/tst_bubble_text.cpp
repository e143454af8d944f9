// A bubble's text is measured without being laid out in its label: the sizes are a label's all the same.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/chat/bubble_text.h"
#include "ui/style/chat_styles.h"
#include "ui/style/emoji_font.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QClipboard>
#include <QTextDocument>

using namespace Qt::StringLiterals;
using namespace tideloft;

class TestBubbleText : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void heightIsALabelsOwn_data();
    void heightIsALabelsOwn();
    void longWordsAreMeasuredAsTheyAreDrawn_data();
    void longWordsAreMeasuredAsTheyAreDrawn();
    void atRestNothingIsDrawnAgain_data();
    void atRestNothingIsDrawnAgain();
    void longWordsStayBrokenAfterChanges();
    void picturesStayAfterChanges();
    void aPictureIsAsWideAsAnother();
    void copyingKeepsEveryCharacter();
    void anotherFontIsMeasuredAnew();
};

namespace
{

/// Counts how often a widget is asked to paint itself.
class Paints : public QObject
{
public:
    explicit Paints(QWidget *widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
    int count = 0;
};

/// Lets everything that is posted come, and what that posts, many times over.
void letThingsSettle()
{
    for (int i = 0; i < 50; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

} // namespace

void TestBubbleText::initTestCase()
{
    QFont::insertSubstitution(ui::style::emojiFamily(), u"Noto Color Emoji"_s);
}

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
    QTest::newRow("a picture that is asked for") << u"❤️‍🔥"_s;
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
    label.setStyleSheet(ui::style::messageText);
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
    QTest::newRow("pictures that are asked for") << u"❤️‍🔥 one 1️⃣ "_s.repeated(30);
    QTest::newRow("a word of such pictures") << u"❤️‍🔥"_s.repeated(100);
    QTest::newRow("lines of such pictures")
        << u"1️⃣\n2️⃣\n👩‍❤️‍👨👁️‍🗨️\nabc"_s.repeated(9);
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

void TestBubbleText::atRestNothingIsDrawnAgain_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("short words") << u"see you there"_s;
    QTest::newRow("a link") << u"see https://example.org/a/page/about/something?and=more please"_s;
    QTest::newRow("a word of 100,000 letters") << QString(100'000, u'x');
    QTest::newRow("pictures that are asked for") << u"❤️‍🔥 1️⃣"_s;
    QTest::newRow("a link and such pictures")
        << u"see https://example.org/a/page/about/something?and=more ❤️‍🔥"_s;
}

void TestBubbleText::atRestNothingIsDrawnAgain()
{
    QFETCH(const QString, text);
    ui::BubbleText bubble(text, nullptr);
    Paints paints(&bubble);
    bubble.resize(300, bubble.heightForWidth(300));
    for (const int width : {300, 200}) {
        bubble.resize(width, bubble.heightForWidth(width));
        bubble.show();
        QTRY_VERIFY(paints.count > 0);
        letThingsSettle();
        paints.count = 0;
        letThingsSettle();
        QCOMPARE(paints.count, 0);
        bubble.update();
        letThingsSettle();
        QCOMPARE(paints.count, 1);
        paints.count = 0;
    }
}

// A label lays its text out anew after each of these, with a wrapping of its own.
void TestBubbleText::longWordsStayBrokenAfterChanges()
{
    const QString text = u"see https://example.org/"_s + QString(200, u'y') + u" please"_s;
    ui::BubbleText bubble(text, nullptr);
    const auto drawnAt = [&text](int width, const QString &look) {
        ui::BubbleText fresh(text, nullptr);
        fresh.setStyleSheet(look);
        fresh.resize(width, fresh.heightForWidth(width));
        return fresh.grab().toImage();
    };
    for (const QString &look : {ui::style::messageText, u"font-size: 20px;"_s, u"color: red;"_s}) {
        bubble.setStyleSheet(look);
        for (const int width : {300, 200, 496}) {
            bubble.resize(width, bubble.heightForWidth(width));
            QCOMPARE(bubble.grab().toImage(), drawnAt(width, look));
            QCOMPARE(bubble.grab().toImage(), drawnAt(width, look)); // and once more
        }
    }
    bubble.setContentsMargins(10, 0, 10, 0);
    bubble.grab();
    QVERIFY(bubble.findChild<QTextDocument *>()->idealWidth() <= bubble.contentsRect().width());
}

// Pictures stand in the text as in that of a fresh label, whatever happened before.
void TestBubbleText::picturesStayAfterChanges()
{
    const QString text = u"❤️‍🔥 1️⃣\n1️⃣"_s;
    ui::BubbleText bubble(text, nullptr);
    for (const QString &look : {ui::style::messageText, u"font-size: 30px;"_s, u"font-size: 12px;"_s}) {
        ui::BubbleText fresh(text, nullptr);
        for (ui::BubbleText *each : {&bubble, &fresh}) {
            each->setStyleSheet(look);
            each->resize(each->sizeHint());
        }
        QCOMPARE(bubble.size(), fresh.size());
        QCOMPARE(bubble.grab().toImage(), fresh.grab().toImage());
    }
}

// Two pictures side by side would need more room, and so would letters beside what encloses them.
void TestBubbleText::aPictureIsAsWideAsAnother()
{
    const ui::BubbleText usual(u"❤️"_s, nullptr);
    for (const QString &text : {u"❤️‍🔥"_s, u"1️⃣"_s, u"‼️"_s, u"👩‍❤️‍👨"_s})
        QCOMPARE(ui::BubbleText(text, nullptr).sizeHint(), usual.sizeHint());
}

void TestBubbleText::copyingKeepsEveryCharacter()
{
    const QString text = u"a ❤️‍🔥\n1️⃣ \u00a9\ufe0f"_s;
    ui::BubbleText bubble(text, nullptr);
    bubble.resize(bubble.sizeHint());
    bubble.grab();
    QCOMPARE(bubble.text(), text);
    QCOMPARE(bubble.copiedText(), text);
    bubble.selectAll();
    QCOMPARE(bubble.copiedText(), text);
    QTest::keyClick(&bubble, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), text);
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
