// What is counted while the service runs: requests and commits. Neither names nor contents.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/metrics/metrics_text.h"

#include <chrono>
#include <map>
#include <mutex>
#include <utility>

namespace tideloft::service
{

/// Every function may be called from any thread.
class Counters
{
public:
    Counters();

    /// ROUTE is the pattern that answered; empty where none did, and then METHOD may be any text.
    void requestFinished(const QByteArray &method, const QByteArray &route, int status,
                         std::chrono::nanoseconds duration);
    void commitFinished(std::chrono::nanoseconds duration);

    void write(MetricsText &text) const;

private:
    using Route = std::pair<QByteArray, QByteArray>; ///< method and pattern
    struct RouteCounts {
        std::map<int, std::uint64_t> byStatus;
        Histogram durations;
    };
    void writeRequests(MetricsText &text) const;
    void writeDurations(MetricsText &text) const;

    mutable std::mutex mutex;
    std::map<Route, RouteCounts> routes;
    Histogram commits;
};

} // namespace tideloft::service
