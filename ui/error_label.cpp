// Keeping an error in its place.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/error_label.h"

#include <QPainter>
#include <QStyle>

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

void ErrorLabel::paintEvent(QPaintEvent *event)
{
    if (heightForWidth(width()) <= height()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    drawFrame(&painter);
    style()->drawItemText(&painter, contentsRect(), Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap,
                          palette(), isEnabled(), text(), foregroundRole());
}

} // namespace tideloft::ui
