// Walking through a page with the Tab key.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/tab_order.h"

#include <QTest>
#include <QWidget>

namespace tideloft::tests
{

QStringList tabOrder(const QWidget *part, QWidget *first)
{
    QStringList order;
    if (!QTest::qWaitForWindowActive(first->window()))
        qFatal("The window with the keyboard's way does not come up");
    first->setFocus();
    // A count that no page comes near: the way may lead somewhere else and never back.
    for (int steps = 0; steps < 100; ++steps) {
        QWidget *focused = part->window()->focusWidget();
        if (!focused || !part->isAncestorOf(focused) || (steps > 0 && focused == first))
            break;
        const QString spoken = focused->accessibleName();
        order.append(spoken.isEmpty() ? focused->property("text").toString() : spoken);
        QTest::keyClick(focused, Qt::Key_Tab);
    }
    return order;
}

} // namespace tideloft::tests
