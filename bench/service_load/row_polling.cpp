// Many clients that poll, and what one of them costs on the wire.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/figures.h"
#include "bench/service_load/polling.h"
#include "bench/service_load/processes.h"
#include "bench/service_load/rows.h"

using namespace Qt::StringLiterals;

namespace tideloft::bench
{

namespace
{

Polling poll(int clients, const PollSettings &settings, ServiceProcess::Transport transport, double seconds)
{
    const Folder folder;
    const std::vector<SeededUser> users = seed(folder.path(u"service.sqlite"_s), clients, 100);
    ServiceProcess service(folder, transport);
    service.start();
    return pollFor(seconds, {service.port(), service.clientContext()}, users, settings, {&service});
}

} // namespace

void measurePolling(bool full)
{
    Polling polling =
        poll(full ? 1000 : 100, {3, false, 0.01}, ServiceProcess::Transport::Plain, full ? 600 : 6);
    reportPolling(QByteArray::number(full ? 1000 : 100)
                      + " clients poll histories of 100 messages every 3 s "
                        "without If-None-Match, 1 % sends",
                  polling, 50, 143); // 150 MB
}

void measureUnchanged(bool full)
{
    Polling polling =
        poll(full ? 3000 : 100, {3, true, 0.01}, ServiceProcess::Transport::Tls, full ? 180 : 6);
    reportPolling(QByteArray::number(full ? 3000 : 100)
                      + " clients poll every 3 s with If-None-Match, 1 % sends, TLS",
                  polling, 50, 0);
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
