// The soft appearance of a page.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/style/fade_in.h"

#include <QGraphicsOpacityEffect>
#include <QPropertyAnimation>
#include <QWidget>

namespace tideloft::ui
{

void fadeIn(QWidget *widget)
{
    auto *effect = new QGraphicsOpacityEffect(widget);
    effect->setOpacity(0.0);
    // The effect owns its animation: whoever replaces the effect ends the animation with it.
    auto *animation = new QPropertyAnimation(effect, "opacity", effect);
    animation->setDuration(180);
    animation->setStartValue(0.0);
    animation->setEndValue(1.0);
    animation->setEasingCurve(QEasingCurve::OutCubic);
    // An opaque but active effect would hand its painter to a fade inside it: a warning
    // on every frame.
    QObject::connect(animation, &QPropertyAnimation::finished, effect,
                     [effect] { effect->setEnabled(false); });
    widget->setGraphicsEffect(effect);
    animation->start(QAbstractAnimation::DeleteWhenStopped);
}

} // namespace tideloft::ui
