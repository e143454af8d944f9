// Many clients that poll, and what one of them costs on the wire.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/figures.h"
#include "bench/service_load/pollers.h"
#include "bench/service_load/processes.h"
#include "bench/service_load/rows.h"

#include <cstdio>

using namespace Qt::StringLiterals;

namespace tideloft::bench
{

namespace
{

struct Polling {
    PollResults results;
    double residentMiB = 0; ///< the most that was seen
    double seconds = 0;
};

void watchMemory(Loop &loop, const ServiceProcess &service, double &most)
{
    most = std::max(most, service.residentMiB());
    loop.at(later(0.5), [&loop, &service, &most] { watchMemory(loop, service, most); });
}

Polling poll(int clients, const PollSettings &settings, ServiceProcess::Transport transport, double seconds)
{
    const Folder folder;
    const std::vector<SeededUser> users = seed(folder.path(u"service.sqlite"_s), clients, 100);
    ServiceProcess service(folder, transport);
    service.start();
    const Where where{service.port(), service.clientContext()};
    Polling polling;
    Loop loop;
    // People do not all start their client in the same moments: each handshake costs a signature.
    const double spread = settings.interval + clients / 100.0;
    const auto pollers = startPollers(loop, where, users, settings, polling.results, spread);
    loop.run(spread + 2 * settings.interval); // all have asked for everything once
    polling.results = {};
    watchMemory(loop, service, polling.residentMiB);
    for (std::size_t i = 0; i < pollers.size(); ++i)
        pollers[i]->start(
            later(settings.interval * static_cast<double>(i) / static_cast<double>(pollers.size())));
    const Time begin = Clock::now();
    loop.run(seconds);
    polling.seconds = secondsSince(begin);
    return polling;
}

void reportPolling(const QByteArray &figure, Polling &polling, double mostMiB)
{
    PollResults &results = polling.results;
    const double p99 = results.latencies.percentile(0.99);
    const double rate = static_cast<double>(results.latencies.count()) / polling.seconds;
    QByteArray target = "no error, p99 under 50 ms";
    if (mostMiB > 0)
        target += ", under " + rounded(mostMiB, 0) + " MiB";
    const bool reached = results.errors == 0 && p99 < 50 && (mostMiB == 0 || polling.residentMiB < mostMiB);
    report(figure,
           QByteArray::number(results.errors) + " errors, p99 " + rounded(p99) + " ms, median "
               + rounded(results.latencies.percentile(0.5)) + " ms, " + rounded(polling.residentMiB, 0)
               + " MiB (" + rounded(rate, 0) + " requests/s for " + rounded(polling.seconds, 0) + " s)",
           target, reached);
    for (const QByteArray &example : results.examples)
        std::fprintf(stderr, "error: %s\n", example.constData());
}

} // namespace

void measurePolling(bool full)
{
    Polling polling =
        poll(full ? 1000 : 100, {3, false, 0.01}, ServiceProcess::Transport::Plain, full ? 600 : 6);
    reportPolling(QByteArray::number(full ? 1000 : 100)
                      + " clients poll histories of 100 messages every 3 s "
                        "without If-None-Match, 1 % sends",
                  polling, 143); // 150 MB
}

void measureUnchanged(bool full)
{
    Polling polling =
        poll(full ? 3000 : 100, {3, true, 0.01}, ServiceProcess::Transport::Tls, full ? 180 : 6);
    reportPolling(QByteArray::number(full ? 3000 : 100)
                      + " clients poll every 3 s with If-None-Match, 1 % sends, TLS",
                  polling, 0);
}

void measureBytes(bool)
{
    const Folder folder;
    const std::vector<SeededUser> users = seed(folder.path(u"service.sqlite"_s), 2, 1000);
    ServiceProcess service(folder, ServiceProcess::Transport::Tls);
    service.start();
    Loop loop;
    Client client(loop, {service.port(), service.clientContext()});
    std::string tags[2];
    std::uint64_t before = 0;
    int left = 2 * 21; // one refresh brings everything, and a minute has 20 more
    int unchanged = 0;
    std::function<void()> next = [&] {
        std::string &tag = tags[left % 2];
        const std::string request =
            left % 2 == 0 ? historyRequest(users[0], tag) : conversationsRequest(users[0], tag);
        client.ask(request, [&](const Reply &reply) {
            unchanged += reply.status == 304 ? 1 : 0;
            tag = reply.etag;
            if (--left == 2 * 20)
                before = client.bytesOnWire();
            left == 0 ? loop.stop() : next();
        });
    };
    next();
    loop.run(30);
    const double kilobytes = static_cast<double>(client.bytesOnWire() - before) / 1000;
    report("bytes of a client and minute, an unchanged conversation of 1,000 messages",
           rounded(kilobytes) + " kB both ways over TLS (" + QByteArray::number(unchanged)
               + " of 40 replies are 304)",
           "at most 20 kB", kilobytes <= 20 && unchanged == 40);
}

} // namespace tideloft::bench
