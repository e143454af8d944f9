// Honest clients beside slow ones, nonsense and guessed passwords, all at once.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/figures.h"
#include "bench/service_load/attackers.h"
#include "bench/service_load/pollers.h"
#include "bench/service_load/processes.h"
#include "bench/service_load/rows.h"

#include <cstdio>

using namespace Qt::StringLiterals;

namespace tideloft::bench
{

namespace
{

// As fast as it can, the load would take both cores for itself, and every delay would be its own.
constexpr double nonsenseASecond = 2000;

struct Attack {
    std::vector<std::unique_ptr<SlowClient>> slow;
    Nonsense nonsense;
    Guesses guesses;
};

// As many from one address as the service takes.
void connectSlowClients(Loop &loop, Attack &attack, std::uint16_t port, const std::vector<SeededUser> &users,
                        int count)
{
    constexpr SlowClient::Kind kinds[] = {SlowClient::Kind::Header, SlowClient::Kind::Body,
                                          SlowClient::Kind::NeverReads};
    for (int i = 0; i < count; ++i)
        attack.slow.push_back(
            std::make_unique<SlowClient>(loop, kinds[i % 3], port, "127.9.0." + std::to_string(1 + i / 190),
                                         users[static_cast<std::size_t>(i) % users.size()]));
}

void watchMemory(Loop &loop, const ServiceProcess &service, double &most)
{
    most = std::max(most, service.residentMiB());
    loop.at(later(0.1), [&loop, &service, &most] { watchMemory(loop, service, most); });
}

// The most seconds for which one slow client was held; -1 while one still is.
double longestHeld(const Attack &attack)
{
    double longest = 0;
    for (const auto &slow : attack.slow) {
        if (slow->isConnected())
            return -1;
        longest = std::max(longest, slow->longest());
    }
    return longest;
}

/// What the attack did to the service and to the honest clients.
struct Damage {
    bool crashed = false;
    double moreMiB = 0;
    double p99 = 0;
    double slowGone = 0; ///< seconds; -1: some are still there
};

void tellDetails(const Attack &attack, const PollResults &honest)
{
    for (const auto &[status, count] : attack.guesses.statuses())
        std::fprintf(stderr, "sign-ins with status %d: %d\n", status, count);
    for (const QByteArray &example : honest.examples)
        std::fprintf(stderr, "error: %s\n", example.constData());
}

void reportDamage(const Attack &attack, const PollResults &honest, const Damage &damage)
{
    const auto number = [](std::size_t value) { return QByteArray::number(quint64(value)); };
    report(number(attack.slow.size()) + " slow clients, " + number(attack.nonsense.sent())
               + " malformed requests at " + rounded(nonsenseASecond, 0)
               + " a second and 200 sign-ins a second, beside 50 honest clients",
           QByteArray(damage.crashed ? "a crash" : "no crash") + ", honest p99 " + rounded(damage.p99)
               + " ms of " + number(honest.latencies.count()) + " with " + number(honest.errors)
               + " errors, slow clients gone after " + rounded(damage.slowGone) + " s, "
               + rounded(damage.moreMiB, 0) + " MiB more (" + number(attack.nonsense.answered())
               + " malformed ones refused, " + number(attack.guesses.begun()) + " sign-ins)",
           "no crash, no error, p99 under 50 ms, gone in 20 s, under 95 MiB more", // 100 MB
           !damage.crashed && honest.errors == 0 && damage.p99 < 50 && damage.slowGone >= 0
               && damage.slowGone <= 20 && damage.moreMiB < 95);
}

// While there is nonsense, slow clients come again. Then the last of them are waited for.
void runUntilDone(Loop &loop, Attack &attack)
{
    std::function<void()> endWhenDone = [&] {
        if (attack.nonsense.isDone()) {
            for (const auto &slow : attack.slow)
                slow->comeNoMore();
        }
        const bool isDone = attack.nonsense.isDone() && longestHeld(attack) >= 0;
        isDone ? loop.stop() : loop.at(later(0.2), endWhenDone);
    };
    endWhenDone();
    loop.run(180);
}

} // namespace

void measureHostile(bool full)
{
    const Folder folder;
    const std::vector<SeededUser> users = seed(folder.path(u"service.sqlite"_s), 50, 100);
    ServiceProcess service(folder, ServiceProcess::Transport::Plain,
                           {u"--connections-per-address"_s, u"200"_s, u"--quiet"_s});
    service.start();
    Loop loop;
    PollResults results;
    const auto honest = startPollers(loop, {service.port()}, users, {0.5, true, 0.01}, results, 0.5);
    loop.run(3);
    results = {};
    const double before = service.residentMiB();
    double most = before;
    Attack attack{{}, {loop, service.port(), full ? 100'000U : 2000U}, {loop, service.port(), 200}};
    for (std::size_t i = 0; i < honest.size(); ++i)
        honest[i]->start(later(0.01 * static_cast<double>(i)));
    watchMemory(loop, service, most);
    connectSlowClients(loop, attack, service.port(), users, full ? 1000 : 100);
    attack.nonsense.start(16, nonsenseASecond);
    attack.guesses.start(Clock::now());
    runUntilDone(loop, attack);
    const bool crashed = !service.isRunning() || service.residentMiB() == 0;
    tellDetails(attack, results);
    reportDamage(attack, results,
                 {crashed, most - before, results.latencies.percentile(0.99), longestHeld(attack)});
}

} // namespace tideloft::bench
