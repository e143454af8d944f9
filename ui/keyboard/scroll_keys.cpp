// Keys that scroll what stands elsewhere.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/keyboard/scroll_keys.h"

#include <QAbstractScrollArea>
#include <QKeyEvent>
#include <QScrollBar>

namespace tideloft::ui
{

namespace
{

class ScrollKeys : public QObject
{
public:
    ScrollKeys(QWidget *field, QAbstractScrollArea *area) : QObject(field), bar(area->verticalScrollBar())
    {
        field->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress)
            return QObject::eventFilter(watched, event);
        switch (static_cast<QKeyEvent *>(event)->key()) {
        case Qt::Key_PageUp:
            bar->triggerAction(QAbstractSlider::SliderPageStepSub);
            return true;
        case Qt::Key_PageDown:
            bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
            return true;
        default:
            return QObject::eventFilter(watched, event);
        }
    }

private:
    QScrollBar *bar;
};

} // namespace

void scrollByKeys(QWidget *field, QAbstractScrollArea *area)
{
    new ScrollKeys(field, area); // owned by the field
}

} // namespace tideloft::ui
