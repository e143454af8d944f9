// How often something may be tried within a minute.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>

#include <list>
#include <mutex>

namespace tideloft::service
{

/// Counts for each key of its own. From any thread.
class AttemptLimit
{
public:
    /// 0 sets no limit. Of more than MOSTKEYS keys those are forgotten that were tried longest ago.
    explicit AttemptLimit(int mostInAMinute, std::size_t mostKeys = 200'000)
        : most(mostInAMinute),
          mostEntries(mostKeys)
    {
    }

    /// Counts an attempt at NOW (ms of a clock that never jumps). 0 when it may go on, otherwise after how
    /// many seconds the next one may; an attempt that may not go on does not count.
    int attempt(const QByteArray &key, qint64 now);

private:
    struct Entry {
        QByteArray hash;
        QList<qint64> times; ///< of the last minute, the oldest first
    };
    using Entries = std::list<Entry>;

    Entries::iterator entryOf(const QByteArray &key);
    void forget(qint64 now);

    const qsizetype most;
    const std::size_t mostEntries;
    std::mutex mutex;
    Entries entries; ///< in the order of their last attempts that went on
    QHash<QByteArray, Entries::iterator> byHash;
};

} // namespace tideloft::service
