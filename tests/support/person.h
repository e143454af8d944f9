// Somebody who answers a dialog or a menu while the code that opened it waits.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/patience.h"

#include <QApplication>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <functional>

namespace tideloft::tests
{

/// Waits, from any event loop that runs meanwhile, for a modal widget or a menu of type Widget, and then uses
/// it once, like the person before the screen. What the person leaves open is closed and counts as a fault.
template <typename Widget> class Person
{
public:
    explicit Person(std::function<void(Widget &)> use)
    {
        QObject::connect(&look, &QTimer::timeout, &look, [this, use] {
            QWidget *menu = QApplication::activePopupWidget();
            const QPointer front = qobject_cast<Widget *>(menu ? menu : QApplication::activeModalWidget());
            if (!front || !front->isVisible())
                return;
            look.stop();
            if (!menu && !QTest::qWaitForWindowActive(front, patience()))
                qFatal("The dialog does not come up");
            seen = true;
            use(*front);
            done = !front || !front->isVisible();
            if (!done)
                front->close();
        });
        look.start(1);
    }
    bool hasSeen() const { return seen; }     ///< whether anything came up
    bool hasAnswered() const { return done; } ///< false too when nothing came up

private:
    QTimer look;
    bool seen = false;
    bool done = false;
};

} // namespace tideloft::tests
