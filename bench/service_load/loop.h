// An event loop on epoll: one thread, many sockets, and timers.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <queue>
#include <vector>

namespace tideloft::bench
{

using Clock = std::chrono::steady_clock;
using Time = Clock::time_point;
using Seconds = std::chrono::duration<double>;

inline Time later(double seconds, Time from = Clock::now())
{
    return from + std::chrono::duration_cast<Clock::duration>(Seconds(seconds));
}

inline double secondsSince(Time begin)
{
    return Seconds(Clock::now() - begin).count();
}

/// Something with a file descriptor. It must live until the loop has ended.
class Watched
{
public:
    virtual ~Watched() = default;
    virtual void ready(std::uint32_t events) = 0;
};

class Loop
{
public:
    Loop();
    Loop(const Loop &) = delete;
    Loop &operator=(const Loop &) = delete;
    ~Loop();

    void add(int descriptor, std::uint32_t events, Watched &watched) const;
    void change(int descriptor, std::uint32_t events, Watched &watched) const;

    void at(Time time, std::function<void()> function);

    /// Runs until stop() is called, or so many seconds have passed.
    void run(double seconds);
    void stop() { running = false; }

private:
    struct Timer {
        Time time;
        std::function<void()> function;
        bool operator<(const Timer &other) const { return time > other.time; } // the earliest stands on top
    };
    int callTimers();

    int epoll;
    bool running = false;
    std::priority_queue<Timer> timers;
};

} // namespace tideloft::bench
