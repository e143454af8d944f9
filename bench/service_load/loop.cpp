// Waiting for sockets and timers.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/service_load/loop.h"

#include <sys/epoll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>

namespace tideloft::bench
{

Loop::Loop() : epoll(epoll_create1(EPOLL_CLOEXEC)) {}

Loop::~Loop()
{
    close(epoll);
}

void Loop::add(int descriptor, std::uint32_t events, Watched &watched) const
{
    epoll_event event{events, {&watched}};
    epoll_ctl(epoll, EPOLL_CTL_ADD, descriptor, &event);
}

void Loop::change(int descriptor, std::uint32_t events, Watched &watched) const
{
    epoll_event event{events, {&watched}};
    epoll_ctl(epoll, EPOLL_CTL_MOD, descriptor, &event);
}

void Loop::at(Time time, std::function<void()> function)
{
    timers.push({time, std::move(function)});
}

// Calls what is due. Returns after how many milliseconds the next timer is.
int Loop::callTimers()
{
    while (running && !timers.empty() && timers.top().time <= Clock::now()) {
        const std::function<void()> function = timers.top().function;
        timers.pop();
        function();
    }
    if (timers.empty())
        return 100;
    const double wait = Seconds(timers.top().time - Clock::now()).count() * 1000;
    return static_cast<int>(std::clamp(wait, 0.0, 100.0));
}

void Loop::run(double seconds)
{
    const Time end = later(seconds);
    running = true;
    std::array<epoll_event, 256> events{};
    while (running && Clock::now() < end) {
        const int wait = callTimers();
        const int count = epoll_wait(epoll, events.data(), static_cast<int>(events.size()), wait);
        for (int i = 0; i < count && running; ++i) {
            const epoll_event &event = events[static_cast<std::size_t>(i)];
            static_cast<Watched *>(event.data.ptr)->ready(event.events);
        }
    }
    running = false;
    timers = {};
}

} // namespace tideloft::bench
