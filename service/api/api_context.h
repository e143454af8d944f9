// What every group of endpoints works with.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/password.h"
#include "service/api/tasks.h"
#include "service/http/byte_budget.h"
#include "service/store/store_threads.h"
#include "service/threads/workers.h"

#include <QDateTime>

#include <functional>

namespace tideloft::service
{

struct ApiSettings {
    ScryptCost scryptCost;
    bool secureCookies = true; ///< false only where the service speaks plain HTTP on loopback
    std::size_t hashingThreads = 2;
    std::size_t waitingHashes = 16;        ///< more sign-ins and registrations at a time are refused
    int historyLimit = 5000;               ///< messages that a history gives at most
    std::shared_ptr<ByteBudget> transfers; ///< what large replies may hold together; never null in a context
    std::function<QDateTime()> now = &QDateTime::currentDateTimeUtc;
};

struct ApiContext {
    const ApiSettings settings;
    Workers hashing;
    StoreThreads store; // last: its threads use what stands above

    qint64 nowInMilliseconds() const { return settings.now().toMSecsSinceEpoch(); }
};

/// A handler for signed-in users only. Runs on a reader.
using UserHandler = std::function<Outcome(Database &, const Request &, const User &)>;

} // namespace tideloft::service
