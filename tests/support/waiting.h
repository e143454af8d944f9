// Waiting that ends as soon as what is waited for is there: the toolkit's looks every 10 or 50 ms only.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/patience.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QTest>

#include <chrono>

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

// What QTRY_VERIFY and the like begin with. Newer versions of the toolkit make a whole number of a longer one
// here, of which the compiler warns.
#undef QTRY_IMPL
#define QTRY_IMPL(expr, timeout)                                                                             \
    const auto qt_test_timeout = [&] {                                                                       \
        using namespace std::chrono_literals;                                                                \
        return std::chrono::milliseconds{timeout};                                                           \
    }();                                                                                                     \
    const int qt_test_timeoutValue = static_cast<int>(qt_test_timeout.count());                              \
    {QTRY_LOOP_IMPL(expr, qt_test_timeoutValue, 0)} QTRY_TIMEOUT_DEBUG_IMPL(expr, qt_test_timeoutValue, 0)

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
