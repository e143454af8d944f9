// A time of polling.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/service_load/polling.h"

#include "bench/figures.h"

#include <algorithm>
#include <cstdio>

namespace tideloft::bench
{

namespace
{

void watchMemory(Loop &loop, const std::vector<const ServiceProcess *> &services, double &most)
{
    double now = 0;
    for (const ServiceProcess *service : services)
        now += service->residentMiB();
    most = std::max(most, now);
    loop.at(later(0.5), [&loop, &services, &most] { watchMemory(loop, services, most); });
}

} // namespace

Polling pollFor(double seconds, const Where &where, const std::vector<SeededUser> &users,
                const PollSettings &settings, const std::vector<const ServiceProcess *> &services)
{
    Polling polling;
    Loop loop;
    // People do not all start their client in the same moments: each handshake costs a signature.
    const double spread = settings.interval + static_cast<double>(users.size()) / 100.0;
    const auto pollers = startPollers(loop, where, users, settings, polling.results, spread);
    loop.run(spread + 2 * settings.interval); // all have asked for everything once
    polling.results = {};
    watchMemory(loop, services, polling.residentMiB);
    for (std::size_t i = 0; i < pollers.size(); ++i)
        pollers[i]->start(
            later(settings.interval * static_cast<double>(i) / static_cast<double>(pollers.size())));
    const Time begin = Clock::now();
    loop.run(seconds);
    polling.seconds = secondsSince(begin);
    return polling;
}

void reportPolling(const QByteArray &figure, Polling &polling, double mostMilliseconds, double mostMiB)
{
    PollResults &results = polling.results;
    const double p99 = results.latencies.percentile(0.99);
    const double rate = static_cast<double>(results.latencies.count()) / polling.seconds;
    QByteArray target = "no error, p99 under " + rounded(mostMilliseconds, 0) + " ms";
    if (mostMiB > 0)
        target += ", under " + rounded(mostMiB, 0) + " MiB";
    const bool reached =
        results.errors == 0 && p99 < mostMilliseconds && (mostMiB == 0 || polling.residentMiB < mostMiB);
    report(figure,
           QByteArray::number(results.errors) + " errors, p99 " + rounded(p99) + " ms, median "
               + rounded(results.latencies.percentile(0.5)) + " ms, " + rounded(polling.residentMiB, 0)
               + " MiB (" + rounded(rate, 0) + " requests/s for " + rounded(polling.seconds, 0) + " s)",
           target, reached);
    for (const QByteArray &example : results.examples)
        std::fprintf(stderr, "error: %s\n", example.constData());
}

} // namespace tideloft::bench
