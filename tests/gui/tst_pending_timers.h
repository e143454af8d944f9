// The single shots of the program that have not run out yet: what is going to happen, without the wait.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

namespace tideloft::tests
{

/// A single-shot timer that has not run out yet.
struct PendingTimer {
    QPointer<QObject> timer;
    int id = 0;
    int interval = 0; ///< ms
    Qt::TimerType type = Qt::PreciseTimer;

    void runOut() const; ///< now, without the wait
};
/// The program's, the oldest first.
QList<PendingTimer> pendingTimers();
QList<int> pendingIntervals(); ///< theirs, ms
/// Lets those run out that windows of earlier tests have left behind.
void forgetTimers();

} // namespace tideloft::tests
