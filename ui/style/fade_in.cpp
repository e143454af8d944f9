// The soft appearance of a page.
#include "ui/style/fade_in.h"

#include <QGraphicsOpacityEffect>
#include <QPropertyAnimation>
#include <QWidget>

namespace tideloft::ui
{

// Two effects that are active inside each other paint one device with two painters, which Qt refuses with
// a warning on every frame. Hence at most one fade runs on any path of the widget tree.
static void finishFade(const QObject *effect)
{
    for (auto *animation : effect->findChildren<QPropertyAnimation *>())
        animation->setCurrentTime(animation->duration());
}

static void finishFadesAround(const QWidget *widget)
{
    for (const auto *effect : widget->findChildren<QGraphicsOpacityEffect *>())
        finishFade(effect);
    for (const auto *ancestor = widget->parentWidget(); ancestor; ancestor = ancestor->parentWidget()) {
        if (const auto *effect = ancestor->graphicsEffect())
            finishFade(effect);
    }
}

void fadeIn(QWidget *widget)
{
    finishFadesAround(widget);
    auto *effect = new QGraphicsOpacityEffect(widget);
    effect->setOpacity(0.0);
    // The effect owns its animation: whoever replaces the effect ends the animation with it.
    auto *animation = new QPropertyAnimation(effect, "opacity", effect);
    animation->setDuration(180);
    animation->setStartValue(0.0);
    animation->setEndValue(1.0);
    animation->setEasingCurve(QEasingCurve::OutCubic);
    QObject::connect(animation, &QPropertyAnimation::finished, effect,
                     [effect] { effect->setEnabled(false); });
    widget->setGraphicsEffect(effect);
    animation->start(QAbstractAnimation::DeleteWhenStopped);
}

} // namespace tideloft::ui
