// The painted background of the sign-in page.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/style/grid_widget.h"

#include <QPainter>

namespace tideloft::ui
{

void GridWidget::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
    QPainter painter(this);
    painter.fillRect(rect(), QColor(0x07, 0x07, 0x0c));
    painter.setPen(QPen(QColor(255, 255, 255, 13), 1));
    constexpr int spacing = 32;
    // Cell by cell: the toolkit hands longer lines to threads, which costs more than the painting.
    for (int x = 0; x < width(); x += spacing) {
        for (int y = 0; y < height(); y += spacing) {
            painter.drawLine(x, y, x, y + spacing - 1);
            painter.drawLine(x, y, x + spacing - 1, y);
        }
    }
}

} // namespace tideloft::ui
