// Waiting that ends as soon as what is waited for is there: the toolkit's looks every 10 or 50 ms only.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/patience.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QTest>

namespace tideloft::tests
{

/// Lets what is due happen, and gives others a millisecond: servers in threads, other processes.
inline void takeTurn()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QTest::qSleep(1);
}

/// Whether the predicate becomes true within the time, while events are delivered.
template <typename Predicate> [[nodiscard]] bool waitFor(Predicate isThere, int timeout = patience())
{
    const QDeadlineTimer end(timeout);
    while (!isThere()) {
        if (end.hasExpired())
            return false;
        takeTurn();
    }
    return true;
}

} // namespace tideloft::tests

// The loop of QTRY_VERIFY and the like. Their messages name its variable: the time that has passed, in ms.
#undef QTRY_LOOP_IMPL
#define QTRY_LOOP_IMPL(expr, timeoutValue, step)                                                             \
    Q_UNUSED(step)                                                                                           \
    int qt_test_i = 0;                                                                                       \
    QElapsedTimer qt_test_timer;                                                                             \
    for (qt_test_timer.start();                                                                              \
         qt_test_i < (timeoutValue) && !(QTest::runningTest() && QTest::currentTestFailed()) && !(expr);     \
         qt_test_i = static_cast<int>(qt_test_timer.elapsed()))                                              \
        tideloft::tests::takeTurn();
