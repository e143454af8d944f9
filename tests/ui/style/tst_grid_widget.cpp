// The grid behind the sign-in page, pixel by pixel.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include <QApplication>

#include "tests/support/test_main.h"
#include "ui/style/grid_widget.h"
#include "ui/style/style_sheets.h"

#include <QImage>
#include <QPainter>

using namespace Qt::StringLiterals;
using namespace tideloft::ui;

class TestGridWidget : public QObject
{
    Q_OBJECT

private slots:
    void lines_data();
    void lines();
    void crossingIsPaintedTwice();
    void everyPixelIsThatOfLines_data();
    void everyPixelIsThatOfLines();
    void coloursIgnoreTheTheme();
};

static QImage render(int width, int height, const QString &sheet = {})
{
    GridWidget grid;
    grid.setStyleSheet(sheet);
    grid.resize(width, height);
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    grid.render(&image);
    return image;
}

static const QColor fill(0x07, 0x07, 0x0c);

/// White at alpha 13 over COLOUR, as the raster engine rounds it.
static QColor under(const QColor &colour)
{
    QImage pixel(1, 1, QImage::Format_RGB32);
    pixel.fill(colour);
    QPainter(&pixel).fillRect(0, 0, 1, 1, QColor(255, 255, 255, 13));
    return pixel.pixelColor(0, 0);
}

void TestGridWidget::lines_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("1 px: the line at 0") << 1 << QList{0};
    QTest::newRow("31 px: the line at 0") << 31 << QList{0};
    QTest::newRow("32 px: still the line at 0 alone") << 32 << QList{0};
    QTest::newRow("33 px: a second line in the last pixel") << 33 << QList{0, 32};
    QTest::newRow("64 px: no third line") << 64 << QList{0, 32};
    QTest::newRow("65 px: a third line") << 65 << QList{0, 32, 64};
}

void TestGridWidget::lines()
{
    QFETCH(int, length);
    QList<int> vertical;
    QList<int> horizontal;
    const QImage wide = render(length, 20);
    const QImage high = render(20, length);
    for (int i = 0; i < length; ++i) {
        // Row and column 10 lie between two lines of the other direction.
        if (wide.pixelColor(i, 10) != fill)
            vertical << i;
        if (high.pixelColor(10, i) != fill)
            horizontal << i;
    }
    QTEST(vertical, "expected");
    QTEST(horizontal, "expected");
    QCOMPARE(wide.pixelColor(0, 19), under(fill));
    QCOMPARE(high.pixelColor(19, 0), under(fill));
}

void TestGridWidget::crossingIsPaintedTwice()
{
    const QImage image = render(64, 64);
    QCOMPARE(image.pixelColor(32, 10), under(fill));
    QCOMPARE(image.pixelColor(10, 32), under(fill));
    QCOMPARE(image.pixelColor(32, 32), under(under(fill)));
    QCOMPARE(image.pixelColor(0, 0), under(under(fill)));
    QCOMPARE(image.pixelColor(31, 31), fill);
    QCOMPARE(image.pixelColor(63, 63), fill);
}

void TestGridWidget::everyPixelIsThatOfLines_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("scale");
    QTest::addColumn<QImage::Format>("format");
    for (const QSize size : {QSize(1, 1), QSize(33, 65), QSize(257, 31), QSize(1100, 720)}) {
        for (const double scale : {1.0, 1.5, 2.0}) {
            for (const auto format : {QImage::Format_RGB32, QImage::Format_ARGB32_Premultiplied})
                QTest::addRow("%d x %d at %g, format %d", size.width(), size.height(), scale, format)
                    << size << scale << format;
        }
    }
}

/// Whether pixels are copied or lines are drawn, the picture is the same.
void TestGridWidget::everyPixelIsThatOfLines()
{
    QFETCH(const QSize, size);
    QFETCH(const double, scale);
    QFETCH(const QImage::Format, format);
    const QPoint place(3, 5);
    const auto picture = [&] {
        QImage image((size + QSize(10, 10)) * scale, format);
        image.setDevicePixelRatio(scale);
        image.fill(Qt::magenta);
        return image;
    };
    GridWidget grid;
    grid.resize(size);
    QImage painted = picture();
    grid.render(&painted, place);
    QImage drawn = picture();
    QPainter painter(&drawn);
    painter.translate(place);
    painter.setClipRect(QRect({}, size));
    painter.fillRect(QRect({}, size), fill);
    painter.setPen(QPen(QColor(255, 255, 255, 13), 1));
    for (int x = 0; x < size.width(); x += 32) {
        for (int y = 0; y < size.height(); y += 32) {
            painter.drawLine(x, y, x, y + 31);
            painter.drawLine(x, y, x + 31, y);
        }
    }
    painter.end();
    QCOMPARE(painted, drawn);
}

void TestGridWidget::coloursIgnoreTheTheme()
{
    const QImage plain = render(70, 70);
    QCOMPARE(render(70, 70, darkStyleSheet()), plain);
    QCOMPARE(render(70, 70, lightStyleSheet()), plain);
    QCOMPARE(render(70, 70, u"QWidget { background: red; }"_s), plain);
}

TIDELOFT_GUI_TEST_MAIN(TestGridWidget)
#include "tst_grid_widget.moc"
