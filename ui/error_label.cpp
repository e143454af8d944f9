// Keeping an error in its place.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/error_label.h"

#include "ui/text_height.h"

#include <QPainter>

namespace tideloft::ui
{

ErrorLabel::ErrorLabel(QWidget *parent, const QString &objectName) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setObjectName(objectName);
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
}

QSize ErrorLabel::minimumSizeHint() const
{
    return {0, qMin(QLabel::minimumSizeHint().height(), 2 * fontMetrics().lineSpacing() + 14)};
}

bool ErrorLabel::hasWordBeyond(int room) const
{
    const QRect place(0, 0, room, QWIDGETSIZE_MAX);
    return fontMetrics().boundingRect(place, Qt::TextWordWrap, text()).width() > room;
}

int ErrorLabel::heightForWidth(int width) const
{
    const int height = QLabel::heightForWidth(width);
    const int room = width - (this->width() - contentsRect().width());
    if (!hasWordBeyond(room))
        return height;
    const auto heightWith = [&](QTextOption::WrapMode mode) {
        return textHeight(text(), font(), room, mode);
    };
    return height + heightWith(QTextOption::WrapAtWordBoundaryOrAnywhere) - heightWith(QTextOption::WordWrap);
}

// A label breaks lines between words only, and centres a text that is too high: its first lines are lost.
void ErrorLabel::paintEvent(QPaintEvent *event)
{
    const bool fits = heightForWidth(width()) <= height();
    if (fits && !hasWordBeyond(contentsRect().width())) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    drawFrame(&painter);
    QTextOption option(fits ? Qt::AlignCenter : Qt::AlignHCenter | Qt::AlignTop);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(contentsRect(), text(), option);
}

} // namespace tideloft::ui
