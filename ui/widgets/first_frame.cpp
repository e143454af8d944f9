// Waiting for a window's first frame.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/first_frame.h"

#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <utility>

namespace tideloft::ui
{

namespace
{

class FirstFrame : public QObject
{
public:
    FirstFrame(QWidget *widget, std::function<void()> wanted) : QObject(widget), action(std::move(wanted))
    {
        widget->window()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            watched->removeEventFilter(this);
            QTimer::singleShot(0, this, [this] {
                deleteLater();
                action();
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    const std::function<void()> action;
};

} // namespace

void afterFirstFrame(QWidget *widget, std::function<void()> action)
{
    new FirstFrame(widget, std::move(action));
}

} // namespace tideloft::ui
