// Where the lines of an error break, and what is seen of a text that has no room.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_main.h"
#include "ui/style/style_sheets.h"
#include "ui/widgets/error_label.h"

#include <QApplication>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;
using tideloft::ui::ErrorLabel;

namespace
{

/// An error on a card of some width, which is as high as the error asks for unless it is told to be lower.
struct Card {
    explicit Card(const QString &text, int width = 260, int height = 0)
    {
        card.setStyleSheet(tideloft::ui::darkStyleSheet());
        auto *column = new QVBoxLayout(&card);
        column->setContentsMargins(0, 0, 0, 0);
        label = new ErrorLabel(&card, u"authError"_s);
        label->setText(text);
        column->addWidget(label);
        label->ensurePolished();
        card.setFixedSize(width, height > 0 ? height : column->heightForWidth(width));
        card.show();
        QCoreApplication::processEvents();
    }

    QWidget card;
    ErrorLabel *label = nullptr;
};

bool isInk(QRgb pixel)
{
    return qRed(pixel) > 150 && qGreen(pixel) < 150 && qRed(pixel) - qGreen(pixel) > 60;
}

/// How far the pixels differ from their ground, all in all: letters leave the same wherever they stand.
double inkOf(const Card &shown)
{
    const QImage image = shown.label->window()->grab().toImage();
    const int ground = qGreen(image.pixel(image.width() / 2, 3));
    double ink = 0;
    for (int y = 3; y < image.height() - 3; ++y) {
        for (int x = 10; x < image.width() - 10; ++x)
            ink += qAbs(qGreen(image.pixel(x, y)) - ground);
    }
    return ink;
}

/// The rows of pixels from the first with ink on, at most MOST of them, up to one without.
QImage inkedRows(const Card &shown, int most)
{
    const QImage image = shown.label->window()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    const auto hasInk = [&](int y) {
        const auto *row = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        return std::any_of(row, row + image.width(), isInk);
    };
    int top = 0;
    while (top < image.height() && !hasInk(top))
        ++top;
    int count = 0;
    while (top + count < image.height() && count < most && hasInk(top + count))
        ++count;
    return image.copy(0, top, image.width(), count);
}

} // namespace

class TestErrorLabel : public QObject
{
    Q_OBJECT

private slots:
    void wordsThatAreTooWideAreShownWhole_data();
    void wordsThatAreTooWideAreShownWhole();
    void everyVariantIsShown();
    void tabsAreMeasuredAsTheyAreDrawn();
    void wordsThatFitAreNotBroken();
    void aTextWithTooManyLinesShowsTheFirst_data();
    void aTextWithTooManyLinesShowsTheFirst();
};

void TestErrorLabel::wordsThatAreTooWideAreShownWhole_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("word");
    QTest::newRow("alone") << QString() << u"MMMMMMMMMM"_s;
    QTest::newRow("behind a separator of variants") << u"short\u009c"_s << u"MMMMMMMMMM"_s;
    QTest::newRow("behind tabs") << u"a\tb\tc\td\tf "_s << u"MMMMMMMMMM"_s;
    QTest::newRow("behind words") << u"Error transferring "_s << u"MMMMMMMMMM"_s;
    QTest::newRow("signs that part words elsewhere") << QString() << u"M&M.M_M%1M"_s;
}

// What ten times the word leaves on the screen is ten times what the word leaves.
void TestErrorLabel::wordsThatAreTooWideAreShownWhole()
{
    QFETCH(const QString, before);
    QFETCH(const QString, word);
    const double rest = before.isEmpty() ? 0 : inkOf(Card(before));
    const double once = inkOf(Card(word));
    const double tenTimes = inkOf(Card(before + word.repeated(10))) - rest;
    QVERIFY(once > 1'000);
    QVERIFY2(qAbs(tenTimes / once - 10) < 0.5, qPrintable(u"%1 times as much"_s.arg(tenTimes / once)));
}

// The toolkit would draw the first of the two that fits.
void TestErrorLabel::everyVariantIsShown()
{
    const QString longer = u"a longer text behind it"_s;
    const Card both(longer + u'\u009c' + u"short"_s);
    const Card blank(longer + u" short"_s);
    QVERIFY(inkOf(both) > 1'000);
    QCOMPARE(both.label->height(), blank.label->height());
    QVERIFY(qAbs(inkOf(both) / inkOf(blank) - 1) < 0.02);
}

// A line of tabs and letters that is wider than the label goes on in the next line.
void TestErrorLabel::tabsAreMeasuredAsTheyAreDrawn()
{
    const QString word = u"MM"_s;
    const double once = inkOf(Card(word));
    const double six = inkOf(Card((word + u'\t').repeated(6)));
    QVERIFY2(qAbs(six / once - 6) < 0.3, qPrintable(u"%1 times as much"_s.arg(six / once)));
}

void TestErrorLabel::wordsThatFitAreNotBroken()
{
    const QString text = u"The quick brown fox jumps over the lazy dog and runs away from all of them"_s;
    const Card shown(text);
    QLabel plain(shown.label->window());
    plain.setObjectName(u"authError"_s);
    plain.setAlignment(Qt::AlignCenter);
    plain.setWordWrap(true);
    plain.setText(text);
    plain.ensurePolished();
    QCOMPARE(shown.label->height(), plain.heightForWidth(260));
    plain.resize(shown.label->size());
    QCOMPARE(shown.label->grab().toImage(), plain.grab().toImage());
}

void TestErrorLabel::aTextWithTooManyLinesShowsTheFirst_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("words") << u"first line\n"_s + u"more\n"_s.repeated(50);
    QTest::newRow("a long word") << u"first line\n"_s + QString(2'000, u'M');
}

void TestErrorLabel::aTextWithTooManyLinesShowsTheFirst()
{
    QFETCH(const QString, text);
    const Card shown(text, 260, 60);
    const Card first(u"first line"_s, 260, 60);
    QVERIFY(shown.label->minimumSizeHint().height() <= 60);
    const QImage wanted = inkedRows(first, QWIDGETSIZE_MAX);
    QVERIFY(wanted.height() > 5);
    QCOMPARE(inkedRows(shown, wanted.height()), wanted);
}

TIDELOFT_GUI_TEST_MAIN(TestErrorLabel)
#include "tst_error_label.moc"
