// Asking at fixed times, however long the replies take.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/service_load/pollers.h"

namespace tideloft::bench
{

namespace
{

std::uint64_t newNumber()
{
    static std::uint64_t last = 0;
    return ++last;
}

// The same sends in every run.
double chance()
{
    static std::mt19937 generator(1);
    return std::uniform_real_distribution<double>(0, 1)(generator);
}

} // namespace

Poller::Poller(Loop &owner, const Where &where, const SeededUser &who, const PollSettings &wanted,
               PollResults &seen)
    : loop(owner),
      user(who),
      settings(wanted),
      results(seen),
      conversations(owner, where),
      history(owner, where)
{
}

void Poller::start(Time begin)
{
    loop.at(begin, [this, begin] { refresh(begin); });
}

void Poller::refresh(Time due)
{
    // A send takes the place of so many requests: two make a refresh.
    if (chance() < 2 * settings.sendShare) {
        history.ask(
            sendRequest(user, newNumber()), [this](const Reply &reply) { count(reply, reply.status == 201); },
            due);
    }
    conversations.ask(
        conversationsRequest(user, conversationsTag),
        [this](const Reply &reply) { look(reply, conversationsTag); }, due);
    history.ask(
        historyRequest(user, historyTag), [this](const Reply &reply) { look(reply, historyTag); }, due);
    start(later(settings.interval, due));
}

void Poller::look(const Reply &reply, std::string &etag)
{
    const bool isUnchanged = reply.status == 304 && !etag.empty();
    results.unchanged += isUnchanged ? 1 : 0;
    count(reply, isUnchanged || (reply.status == 200 && reply.bodyBytes >= settings.leastBytes));
    if (settings.withTags && !reply.etag.empty())
        etag = reply.etag;
}

void Poller::count(const Reply &reply, bool asExpected)
{
    results.latencies.add(reply.milliseconds);
    if (asExpected)
        return;
    ++results.errors;
    if (results.examples.size() < 5)
        results.examples << QByteArray::number(reply.status) + ' '
                                + QByteArray::fromStdString(reply.body).left(200);
}

std::vector<std::unique_ptr<Poller>> startPollers(Loop &loop, const Where &where,
                                                  const std::vector<SeededUser> &users,
                                                  const PollSettings &settings, PollResults &results,
                                                  double spread)
{
    std::vector<std::unique_ptr<Poller>> pollers;
    const Time begin = later(0.1);
    for (std::size_t i = 0; i < users.size(); ++i) {
        Where own = where;
        if (settings.apart)
            own.from = addressOf(5, i);
        pollers.push_back(std::make_unique<Poller>(loop, own, users[i], settings, results));
        const double share = static_cast<double>(i) / static_cast<double>(users.size());
        pollers.back()->start(later(spread * share, begin));
    }
    return pollers;
}

} // namespace tideloft::bench
