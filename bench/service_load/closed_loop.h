// Connections that ask for the next thing as soon as they have the last.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "bench/service_load/client.h"
#include "bench/service_load/latencies.h"
#include "bench/service_load/seed.h"

namespace tideloft::bench
{

/// What NEXT gives is asked; CHECK tells whether the reply is as it must be.
struct ClosedLoop {
    Where where;
    int connections = 16;
    std::function<std::string(int connection)> next;
    std::function<bool(const Reply &reply)> check;
};

/// The reply to one request; its status is 0 when none came within ten seconds.
Reply replyTo(const Where &where, const std::string &request);

/// Replies a second as they must be. Ends the program at the first that is not.
double repliesASecond(const ClosedLoop &wanted, double seconds);

/// Messages a second that are stored, each user with a connection. LASTNUMBER goes on with each message, so
/// that no two are alike.
double sendsASecond(const Where &where, const std::vector<SeededUser> &users, std::uint64_t &lastNumber,
                    double seconds);

} // namespace tideloft::bench
