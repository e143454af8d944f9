// Cutting a picture to a circle.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/round_picture.h"

#include <QPainter>
#include <QPainterPath>

namespace tideloft::ui
{

QPixmap roundPicture(const QPixmap &source, int size)
{
    const QPixmap scaled = source.scaled(size, size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QPixmap round(size, size);
    round.fill(Qt::transparent);
    QPainter painter(&round);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath circle;
    circle.addEllipse(0, 0, size, size);
    painter.setClipPath(circle);
    painter.drawPixmap(0, 0, scaled);
    return round;
}

} // namespace tideloft::ui
