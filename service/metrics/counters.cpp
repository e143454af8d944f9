// Counting, and writing down what was counted.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/metrics/counters.h"

namespace tideloft::service
{

namespace
{

// From what memory answers to what a slow disk needs.
std::vector<double> usualBounds()
{
    return {0.0005, 0.001, 0.0025, 0.005, 0.01, 0.025, 0.05, 0.1, 0.25, 0.5, 1, 2.5, 5, 10};
}

double inSeconds(std::chrono::nanoseconds duration)
{
    return std::chrono::duration<double>(duration).count();
}

MetricsText::Labels labelsOf(const std::pair<QByteArray, QByteArray> &route)
{
    return {{"method", route.first}, {"route", route.second}};
}

} // namespace

Counters::Counters() : commits(usualBounds()) {}

// What strangers ask for anywhere else is counted as one, or they would decide how much is kept.
void Counters::requestFinished(const QByteArray &method, const QByteArray &route, int status,
                               std::chrono::nanoseconds duration)
{
    const Route key = route.isEmpty() ? Route("other", "other") : Route(method, route);
    const std::lock_guard lock(mutex);
    RouteCounts &counts = routes.try_emplace(key, RouteCounts{{}, Histogram(usualBounds())}).first->second;
    ++counts.byStatus[status];
    counts.durations.observe(inSeconds(duration));
}

void Counters::commitFinished(std::chrono::nanoseconds duration)
{
    const std::lock_guard lock(mutex);
    commits.observe(inSeconds(duration));
}

void Counters::write(MetricsText &text) const
{
    const std::lock_guard lock(mutex);
    writeRequests(text);
    writeDurations(text);
    text.begin("tideloftd_commit_duration_seconds", "histogram",
               "Commits to the database, each with its sync to the disk.");
    text.sample({}, commits);
}

void Counters::writeRequests(MetricsText &text) const
{
    text.begin("tideloftd_requests_total", "counter", "Requests that were answered.");
    for (const auto &[route, counts] : routes) {
        for (const auto &[status, count] : counts.byStatus)
            text.sample(labelsOf(route) + MetricsText::Labels{{"status", QByteArray::number(status)}},
                        static_cast<double>(count));
    }
}

void Counters::writeDurations(MetricsText &text) const
{
    text.begin("tideloftd_request_duration_seconds", "histogram",
               "From a whole request to its reply, without sending that.");
    for (const auto &[route, counts] : routes)
        text.sample(labelsOf(route), counts.durations);
}

} // namespace tideloft::service
