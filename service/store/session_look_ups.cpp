// Who asks first asks for everybody.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/session_look_ups.h"

#include <utility>

namespace tideloft::service
{

namespace
{

constexpr std::size_t mostWaiting = 4096;
constexpr std::size_t mostTogether = 256;

QHash<QByteArray, CachedSession> ownersOf(Database &database,
                                          const std::vector<SessionLookUps::Ticket> &tickets)
{
    QByteArrayList hashes;
    for (const SessionLookUps::Ticket &each : tickets)
        hashes << each->tokenHash;
    return sessionOwners(database, hashes);
}

} // namespace

SessionLookUps::Ticket SessionLookUps::want(const QByteArray &tokenHash)
{
    auto wanted = std::make_shared<Wanted>(tokenHash);
    if (!areTogether)
        return wanted;
    const std::lock_guard lock(mutex);
    if (waiting.size() < mostWaiting) // or it is looked up without others
        waiting.push_back(wanted);
    return wanted;
}

// Of requests that have ended meanwhile nothing is looked up.
SessionLookUps::Tickets SessionLookUps::takeWith(const Ticket &wanted)
{
    Tickets taken{wanted};
    for (; !waiting.empty() && taken.size() < mostTogether; waiting.pop_front()) {
        Ticket other = waiting.front().lock();
        if (other && other != wanted && other->state == Wanted::State::Waiting)
            taken.push_back(std::move(other));
    }
    return taken;
}

void SessionLookUps::setAll(const Tickets &tickets, Wanted::State state)
{
    for (const Ticket &each : tickets)
        each->state = state;
    changed.notify_all();
}

std::optional<CachedSession> SessionLookUps::find(Database &database, const Ticket &wanted)
{
    std::unique_lock lock(mutex);
    changed.wait(lock, [&wanted] { return wanted->state != Wanted::State::UnderWay; });
    if (wanted->state == Wanted::State::Known)
        return wanted->session;
    const Tickets together = takeWith(wanted);
    setAll(together, Wanted::State::UnderWay);
    lock.unlock();
    QHash<QByteArray, CachedSession> owners;
    try {
        owners = ownersOf(database, together);
    } catch (...) {
        lock.lock();
        setAll(together, Wanted::State::Waiting);
        throw;
    }
    lock.lock();
    for (const Ticket &each : together) {
        if (const auto owner = owners.constFind(each->tokenHash); owner != owners.constEnd())
            each->session = *owner;
    }
    setAll(together, Wanted::State::Known);
    return wanted->session;
}

} // namespace tideloft::service
