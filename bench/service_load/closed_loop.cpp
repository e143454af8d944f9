// Counting of replies under full load.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/service_load/closed_loop.h"

#include <QtGlobal>

#include <memory>
#include <vector>

namespace tideloft::bench
{

namespace
{

void askAgain(const ClosedLoop &wanted, std::vector<std::unique_ptr<Client>> &clients, int connection,
              std::size_t &count)
{
    clients[static_cast<std::size_t>(connection)]->ask(
        wanted.next(connection), [&wanted, &clients, connection, &count](const Reply &reply) {
            if (!wanted.check(reply))
                qFatal("An unexpected reply: %d %s", reply.status, reply.body.substr(0, 200).c_str());
            ++count;
            askAgain(wanted, clients, connection, count);
        });
}

} // namespace

Reply replyTo(const Where &where, const std::string &request)
{
    Loop loop;
    Client client(loop, where);
    Reply got;
    client.ask(request, [&](const Reply &reply) {
        got = reply;
        loop.stop();
    });
    loop.run(10);
    return got;
}

double repliesASecond(const ClosedLoop &wanted, double seconds)
{
    Loop loop;
    std::vector<std::unique_ptr<Client>> clients;
    std::size_t count = 0;
    for (int i = 0; i < wanted.connections; ++i) {
        clients.push_back(std::make_unique<Client>(loop, wanted.where));
        askAgain(wanted, clients, i, count);
    }
    loop.run(0.5); // all are connected
    count = 0;
    const Time begin = Clock::now();
    loop.run(seconds);
    return static_cast<double>(count) / secondsSince(begin);
}

double sendsASecond(const Where &where, const std::vector<SeededUser> &users, std::uint64_t &lastNumber,
                    double seconds)
{
    return repliesASecond(
        {where, static_cast<int>(users.size()),
         [&](int i) { return sendRequest(users[static_cast<std::size_t>(i)], ++lastNumber); },
         [](const Reply &reply) { return reply.status == 201; }},
        seconds);
}

} // namespace tideloft::bench
