// The painted background of the sign-in page.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/style/grid_widget.h"

#include <QPainter>

namespace tideloft::ui
{

namespace
{

constexpr int spacing = 32;

/// Paints the grid in a place of that WIDTH and HEIGHT, line by line.
void paintLines(QPainter &painter, int width, int height)
{
    painter.fillRect(0, 0, width, height, QColor(0x07, 0x07, 0x0c));
    painter.setPen(QPen(QColor(255, 255, 255, 13), 1));
    // Cell by cell: the toolkit hands longer lines to threads, which costs more than the painting.
    for (int x = 0; x < width; x += spacing) {
        for (int y = 0; y < height; y += spacing) {
            painter.drawLine(x, y, x, y + spacing - 1);
            painter.drawLine(x, y, x + spacing - 1, y);
        }
    }
}

/// Paints the same grid from copies of a few cells, in a tenth of the time. The copies are drawn one by one,
/// because the toolkit starts threads for a large picture, too.
void paintCopies(QPainter &painter, int width, int height)
{
    constexpr int cells = 8 * spacing;
    QImage picture(cells, spacing, QImage::Format_RGB32);
    QPainter picturePainter(&picture);
    paintLines(picturePainter, cells, spacing);
    picturePainter.end();
    for (int x = 0; x < width; x += cells) {
        for (int y = 0; y < height; y += spacing)
            painter.drawImage(x, y, picture);
    }
}

/// Whether PAINTER draws a picture pixel by pixel: not scaled, and in the same colours.
bool copiesPixels(const QPainter &painter)
{
    return painter.deviceTransform().type() <= QTransform::TxTranslate
           && painter.device()->devicePixelRatio() == 1 && painter.device()->depth() >= 24;
}

} // namespace

void GridWidget::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
    QPainter painter(this);
    if (copiesPixels(painter))
        paintCopies(painter, width(), height());
    else
        paintLines(painter, width(), height());
}

} // namespace tideloft::ui
