// Counting of attempts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/attempt_limit.h"

#include <QCryptographicHash>

#include <iterator>

namespace tideloft::service
{

namespace
{

constexpr qint64 minute = 60'000;

} // namespace

int AttemptLimit::attempt(const QByteArray &key, qint64 now)
{
    if (most == 0)
        return 0;
    const std::lock_guard lock(mutex);
    forget(now);
    const auto entry = entryOf(key);
    QList<qint64> &times = entry->times;
    times.removeIf([now](qint64 time) { return time <= now - minute; });
    if (times.size() >= most)
        return static_cast<int>((times.first() + minute - now + 999) / 1000);
    times.append(now);
    entries.splice(entries.end(), entries, entry);
    if (entries.size() > mostEntries) {
        byHash.remove(entries.front().hash);
        entries.pop_front();
    }
    return 0;
}

// Whatever is tried, its length is that of a hash.
AttemptLimit::Entries::iterator AttemptLimit::entryOf(const QByteArray &key)
{
    const QByteArray hash = QCryptographicHash::hash(key, QCryptographicHash::Sha256);
    const auto found = byHash.constFind(hash);
    if (found != byHash.constEnd())
        return *found;
    entries.push_back({hash, {}});
    return *byHash.insert(hash, std::prev(entries.end()));
}

void AttemptLimit::forget(qint64 now)
{
    while (!entries.empty() && entries.front().times.last() <= now - minute) {
        byHash.remove(entries.front().hash);
        entries.pop_front();
    }
}

} // namespace tideloft::service
