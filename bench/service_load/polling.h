// Many clients that poll for a time, and what is reported of that.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "bench/service_load/pollers.h"
#include "bench/service_load/processes.h"

namespace tideloft::bench
{

struct Polling {
    PollResults results;
    double residentMiB = 0; ///< of all services together, the most that was seen
    double seconds = 0;
};

/// All users poll. What counts begins when everybody has asked for everything once.
Polling pollFor(double seconds, const Where &where, const std::vector<SeededUser> &users,
                const PollSettings &settings, const std::vector<const ServiceProcess *> &services);

/// MOSTMIB may be 0, which is no bound.
void reportPolling(const QByteArray &figure, Polling &polling, double mostMilliseconds, double mostMiB);

} // namespace tideloft::bench
