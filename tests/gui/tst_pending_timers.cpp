// Finding the single shots at the event dispatcher, which owns them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_pending_timers.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QTimerEvent>

namespace tideloft::tests
{

void PendingTimer::runOut() const
{
    QTimerEvent event(id);
    if (timer)
        QCoreApplication::sendEvent(timer, &event);
}

QList<PendingTimer> pendingTimers()
{
    const auto *dispatcher = QAbstractEventDispatcher::instance();
    QList<PendingTimer> pending;
    for (QObject *child : dispatcher->children()) {
        if (!child->inherits("QSingleShotTimer"))
            continue;
        for (const auto &info : dispatcher->registeredTimers(child))
            pending.append({child, info.timerId, info.interval, info.timerType});
    }
    return pending;
}

QList<int> pendingIntervals()
{
    QList<int> intervals;
    for (const PendingTimer &timer : pendingTimers())
        intervals.append(timer.interval);
    return intervals;
}

void forgetTimers()
{
    for (const PendingTimer &timer : pendingTimers())
        timer.runOut();
}

} // namespace tideloft::tests
