// How often something may be tried within a minute.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>

#include <mutex>

namespace tideloft::service
{

/// Counts for each key of its own. From any thread.
class AttemptLimit
{
public:
    /// 0 sets no limit.
    explicit AttemptLimit(int mostInAMinute) : most(mostInAMinute) {}

    /// Counts an attempt at NOW (ms of a clock that never jumps). 0 when it may go on, otherwise after how
    /// many seconds the next one may; an attempt that may not go on does not count.
    int attempt(const QByteArray &key, qint64 now);

private:
    void dropOld(qint64 now);

    const qsizetype most;
    std::mutex mutex;
    QHash<QByteArray, QList<qint64>> attempts; ///< of the last minute, the oldest first
    qsizetype roomBeforeDropping = 1000;
};

} // namespace tideloft::service
