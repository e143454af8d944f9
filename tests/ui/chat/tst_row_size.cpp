// Rows are measured without their widgets: the sizes are those that the widgets ask for, to the pixel.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/hostile_texts.h"
#include "tests/support/long_form.h"
#include "tests/support/test_main.h"
#include "ui/chat/bubble_size.h"
#include "ui/chat/day_separator.h"
#include "ui/chat/message_row.h"
#include "ui/chat/row_size.h"
#include "ui/messages/spoken_text.h"
#include "ui/style/emoji_font.h"
#include "ui/style/style_sheets.h"
#include "ui/texts/bounded_text.h"

#include <QApplication>
#include <QFontMetrics>
#include <QRandomGenerator>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tideloft;
using namespace tideloft::ui;

namespace
{

const QList<int> widths{300, 380, 423, 512, 594, 610, 700, 1200};

/// A place for rows as in the client's window: it is WIDTH wide and has its sheet.
struct Place {
    explicit Place(const QString &sheet)
    {
        window.setStyleSheet(sheet);
        viewport = new QWidget(&window);
    }

    QSize widgetSize(const HistoryRow &row, int width) const
    {
        viewport->resize(width, 400);
        const auto *message = std::get_if<MessageRowModel>(&row);
        const std::unique_ptr<QWidget> widget(
            message ? static_cast<QWidget *>(new MessageRow(*message, viewport))
                    : makeDaySeparator(std::get<DaySeparatorModel>(row), viewport));
        return widget->sizeHint();
    }

    QWidget window;
    QWidget *viewport = nullptr;
};

/// Words in many scripts and lengths, with line breaks, pictures, tabs and endless words among them.
QString randomText(QRandomGenerator &random)
{
    const QStringList parts{
        u"word"_s, u"a longer word"_s, u"\n"_s,      u"🙂"_s,   u"❤️‍🔥"_s,
        u"漢字"_s, u"שלום"_s,          u"\t"_s,      u"\u00a0"_s, u"https://example.org/a"_s,
        u" "_s,    u"Ünïcödé"_s,       u"e\u0301"_s, u"1️⃣"_s};
    QString text;
    for (int i = random.bounded(25); i > 0; --i)
        text += parts.at(random.bounded(int(parts.size()))) + (random.bounded(3) ? u" "_s : QString());
    return random.bounded(8) == 0 ? QString(random.bounded(300), u'w') : text;
}

/// A paragraph of Latin letters and signs, with words of any length and blanks between them and around.
QString randomParagraph(QRandomGenerator &random)
{
    QString text;
    for (int words = 1 + random.bounded(40); words > 0; --words) {
        const int length = 1 + random.bounded(random.bounded(10) == 0 ? 60 : 12);
        for (int i = 0; i < length; ++i)
            text += QChar(random.bounded(8) ? 0x21 + random.bounded(0x5e) : 0xc0 + random.bounded(0x40));
        text += random.bounded(15) ? u" "_s : u"  "_s;
    }
    return random.bounded(3) ? text.trimmed() : text;
}

HistoryRow randomRow(QRandomGenerator &random)
{
    const QStringList names{u"bob"_s,  u"漢字"_s, u"🙂 smile"_s, u"two\nlines"_s, QString(90, u'm'),
                            u"a\tb"_s, {}};
    if (random.bounded(12) == 0)
        return DaySeparatorModel{random.bounded(4) ? u"7 March 2021"_s : QString()};
    MessageRowModel row{.isMine = random.bounded(2) == 0, .text = randomText(random)};
    row.position = GroupPosition(random.bounded(4));
    row.sender = row.showsSender() ? names.at(random.bounded(int(names.size()))) : QString();
    row.time = random.bounded(2) ? u"12:34"_s : QString();
    return row;
}

} // namespace

class TestRowSize : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void isTheWidgetsOwn_data();
    void isTheWidgetsOwn();
    void isTheWidgetsOwnForHostileTexts();
    void fontsAreThoseOfThePlace();
    void paragraphIsMeasuredAsInADocument_data();
    void paragraphIsMeasuredAsInADocument();
};

void TestRowSize::initTestCase()
{
    QFont::insertSubstitution(style::emojiFamily(), u"Noto Color Emoji"_s);
}

void TestRowSize::isTheWidgetsOwn_data()
{
    QTest::addColumn<QString>("sheet");
    QTest::addColumn<quint32>("seed");
    const QString serif = u"QWidget { font-family: 'DejaVu Serif'; }"_s;
    for (const quint32 seed : {1U, 2U}) {
        QTest::addRow("dark, seed %u", seed) << darkStyleSheet() << seed;
        QTest::addRow("without a sheet, seed %u", seed) << QString() << seed;
        QTest::addRow("another font, seed %u", seed) << serif << seed;
    }
}

void TestRowSize::isTheWidgetsOwn()
{
    QFETCH(const QString, sheet);
    QFETCH(const quint32, seed);
    const Place place(sheet);
    const RowFonts fonts = rowFonts(place.viewport);
    QRandomGenerator random(seed);
    for (int i = 0; i < 50; ++i) {
        const HistoryRow row = randomRow(random);
        const int width = widths.at(random.bounded(int(widths.size())));
        if (rowSize(row, width, fonts).row != place.widgetSize(row, width))
            qInfo() << "row" << i << "at" << width << spokenText(row);
        QCOMPARE(rowSize(row, width, fonts).row, place.widgetSize(row, width));
    }
}

void TestRowSize::isTheWidgetsOwnForHostileTexts()
{
    const Place place(darkStyleSheet());
    const RowFonts fonts = rowFonts(place.viewport);
    for (const tests::HostileText &hostile : tests::hostileTexts(u"/nowhere"_s)) {
        TextLimits limits = messageLimits;
        limits.effort = 20'000;
        const QString text = firstPart(hostile.text, limits);
        const MessageRowModel row{.sender = hostile.text.left(5'000), .text = text, .time = u"12:00"_s};
        for (const int width : {380, 700})
            QVERIFY2(rowSize(row, width, fonts).row == place.widgetSize(row, width),
                     hostile.name.constData());
    }
}

void TestRowSize::fontsAreThoseOfThePlace()
{
    const MessageRowModel row{.isMine = true, .text = u"illicit"_s};
    const Place dark(darkStyleSheet());
    const Place mono(u"QWidget { font-family: 'DejaVu Sans Mono'; }"_s);
    const QSize inMono = rowSize(row, 500, rowFonts(mono.viewport)).row;
    QVERIFY(inMono != rowSize(row, 500, rowFonts(dark.viewport)).row);
    QCOMPARE(inMono, mono.widgetSize(row, 500));
}

void TestRowSize::paragraphIsMeasuredAsInADocument_data()
{
    QTest::addColumn<QString>("family");
    for (const char *family : {"DejaVu Sans", "DejaVu Serif", "DejaVu Sans Mono", "Open Sans", "Segoe UI"})
        QTest::newRow(family) << QString::fromLatin1(family);
}

// The label lays its text out in a document. Measuring takes a way that is shorter for most texts.
void TestRowSize::paragraphIsMeasuredAsInADocument()
{
    QFETCH(const QString, family);
    QFont font(family);
    QRandomGenerator random(1);
    for (int i = 0; i < tests::rounds(300, 50'000); ++i) {
        font.setPixelSize(11 + random.bounded(8));
        const QString text = randomParagraph(random);
        const QRect room(0, 0, widestBubbleText, QWIDGETSIZE_MAX);
        const int natural = QFontMetrics(font).boundingRect(room, Qt::TextWordWrap, text).width();
        const int width = qMin(natural + 1, widestBubbleText);
        const QSize expected(width, bubbleTextHeight(text, font, width));
        if (bubbleTextSize(text, font) != expected)
            qInfo() << "paragraph" << i << text;
        QCOMPARE(bubbleTextSize(text, font), expected);
    }
}

TIDELOFT_GUI_TEST_MAIN(TestRowSize)
#include "tst_row_size.moc"
