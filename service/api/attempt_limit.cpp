// Counting of attempts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/attempt_limit.h"

#include <algorithm>

namespace tideloft::service
{

namespace
{

constexpr qint64 minute = 60'000;
constexpr qsizetype mostKeys = 200'000; // a flood of names must not fill the memory

} // namespace

int AttemptLimit::attempt(const QByteArray &key, qint64 now)
{
    if (most == 0)
        return 0;
    const std::lock_guard lock(mutex);
    dropOld(now);
    QList<qint64> &times = attempts[key];
    times.removeIf([now](qint64 time) { return time <= now - minute; });
    if (times.size() >= most)
        return static_cast<int>((times.first() + minute - now + 999) / 1000);
    times.append(now);
    return 0;
}

// Looking at all keys is worth it only once there are twice as many as were left the last time.
void AttemptLimit::dropOld(qint64 now)
{
    if (attempts.size() < roomBeforeDropping)
        return;
    attempts.removeIf(
        [now](auto entry) { return entry.value().isEmpty() || entry.value().last() <= now - minute; });
    if (attempts.size() >= mostKeys)
        attempts.clear();
    roomBeforeDropping = std::max<qsizetype>(1000, 2 * attempts.size());
}

} // namespace tideloft::service
