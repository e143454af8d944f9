// Setting and restoring the time in which cursors blink.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/resting_cursor.h"

#include <QApplication>
#include <QEvent>

namespace tideloft::app
{

RestingCursor::RestingCursor(std::chrono::milliseconds patience) : flashTime(QApplication::cursorFlashTime())
{
    if (flashTime <= 0)
        return;
    timer.setSingleShot(true);
    timer.setInterval(patience);
    connect(&timer, &QTimer::timeout, this, &RestingCursor::rest);
    qApp->installEventFilter(this);
    timer.start();
}

RestingCursor::~RestingCursor()
{
    wake();
}

bool RestingCursor::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::InputMethod:
    case QEvent::FocusIn:
        wake();
        timer.start();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

// Widgets follow at once, and show the cursor as they stop.
void RestingCursor::rest()
{
    QApplication::setCursorFlashTime(0);
}

void RestingCursor::wake() const
{
    if (QApplication::cursorFlashTime() != flashTime)
        QApplication::setCursorFlashTime(flashTime);
}

} // namespace tideloft::app
