// What every group of endpoints works with.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/attempt_limit.h"
#include "service/api/registration.h"
#include "service/api/usual_limits.h"
#include "service/http/byte_budget.h"
#include "service/secrets/password_hash.h"
#include "service/store/messages.h"
#include "service/store/store_threads.h"
#include "service/threads/fair_queue.h"
#include "service/threads/workers.h"

#include <QDateTime>

#include <atomic>
#include <functional>

namespace tideloft::service
{

constexpr qint64 inBytes(int megabytes)
{
    return qint64{megabytes} * 1024 * 1024;
}

/// What one user may have sent, and with how many others.
constexpr MessageQuota usualQuota{usualMessages, inBytes(usualMessageMegabytes), usualConversations};

/// Milliseconds of a clock that never jumps.
qint64 steadyMilliseconds();

struct ApiSettings {
    ScryptCost scryptCost;
    bool secureCookies = true; ///< false only where the service speaks plain HTTP on loopback
    std::size_t hashingThreads = 1;
    std::size_t waitingHashes = 16;               ///< more sign-ins and registrations at a time are refused
    int signInsPerMinute = usualSignInsPerMinute; ///< for each account, and for each address; 0 = any number
    int registrationsPerMinute = usualRegistrationsPerMinute; ///< for each address; 0 = any number
    int searchesPerMinute = 240; ///< for each user; a client asks at every letter that is typed
    Registration registration = Registration::Open;
    MessageQuota quota = usualQuota;
    qint64 pictureBytes = inBytes(usualPictureMegabytes); ///< of one user's pictures
    int keepMessagesDays = 0;                             ///< older messages are forgotten; 0 = never
    std::function<qint64()> steadyNow = &steadyMilliseconds;
    int historyLimit = usualHistoryLimit;  ///< messages that a history gives at most
    std::shared_ptr<ByteBudget> transfers; ///< what large replies may hold together; never null in a context
    std::function<QDateTime()> now = &QDateTime::currentDateTimeUtc;
};

struct ApiContext {
    ApiContext(const ApiSettings &wanted, StoreSettings storage)
        : settings(wanted),
          startedAt(nowInMilliseconds()),
          startedAtSteady(wanted.steadyNow()),
          hashingTurns(wanted.waitingHashes, (wanted.waitingHashes + 3) / 4),
          hashing(wanted.hashingThreads, wanted.waitingHashes, Workers::Priority::Low),
          readingTurns(storage.waitingReads, storage.waitingReads / 4),
          store(withRetention(std::move(storage)))
    {
    }

    const ApiSettings settings;
    const qint64 startedAt;
    const qint64 startedAtSteady;
    AttemptLimit signInsOfAccount{
        settings.signInsPerMinute}; ///< this and the next two: for a database in a file
    AttemptLimit signInsOfAddress{settings.signInsPerMinute};
    AttemptLimit registrations{settings.registrationsPerMinute};
    std::atomic<qint64> nextRemovalOfAttempts = 0; ///< by the clock that never jumps
    AttemptLimit searches{settings.searchesPerMinute};
    FairQueue<QByteArray, Workers::Job> hashingTurns; ///< by address, as the next
    Workers hashing;
    FairQueue<QByteArray, ReadTask> readingTurns;
    StoreThreads store; // last: its threads use what stands above

    /// Has something looked up, or hashed, when it is PEER's turn. False, and nothing done, when too much
    /// waits already, of all or of PEER. From any thread.
    bool read(const QByteArray &peer, ReadTask task);
    bool hash(const QByteArray &peer, Workers::Job job);

    qint64 nowInMilliseconds() const { return settings.now().toMSecsSinceEpoch(); }

    /// The time by which sessions run out, in ms since 1970. It is the time of the start plus the time that
    /// has passed since the start: setting the computer's clock signs nobody out.
    qint64 sessionTime() const { return startedAt + settings.steadyNow() - startedAtSteady; }

private:
    StoreSettings withRetention(StoreSettings storage) const;
};

} // namespace tideloft::service
