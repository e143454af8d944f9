// How long a body or a reply may still take.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/server_settings.h"
#include "service/http/watchdog.h"

#include <algorithm>

namespace tideloft::service
{

/// Ends what stands still, and what is slower than the least rate.
class TransferDeadline
{
public:
    TransferDeadline(const ServerLimits &limits, Watchdog &ending)
        : standstill(limits.bodyTime),
          rate(limits.leastBytesPerSecond),
          watchdog(ending),
          first(std::chrono::steady_clock::now() + standstill)
    {
        watchdog.allow(standstill);
    }

    /// PASSED counts from the beginning. The time grows by whole seconds, because setting the timer anew
    /// costs more than passing on a piece.
    void move(std::uint64_t passed)
    {
        if (passed / rate == seconds)
            return;
        seconds = passed / rate;
        watchdog.allowUntil(
            std::min(first + std::chrono::seconds(seconds), std::chrono::steady_clock::now() + standstill));
    }

private:
    const std::chrono::milliseconds standstill;
    const std::uint64_t rate;
    Watchdog &watchdog;
    const std::chrono::steady_clock::time_point first;
    std::uint64_t seconds = 0;
};

} // namespace tideloft::service
