// Stands before the C library: the clock of the computer is ahead by the milliseconds in
// TIDELOFT_CLOCK_AHEAD. The clock that never jumps stays as it is.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include <cstdlib>
#include <ctime>

#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace
{

void shift(timespec &time)
{
    constexpr long second = 1'000'000'000;
    static const long ahead = [] {
        const char *text = std::getenv("TIDELOFT_CLOCK_AHEAD");
        return text ? std::strtol(text, nullptr, 10) : 0;
    }();
    time.tv_nsec += ahead % 1000 * 1'000'000;
    time.tv_sec += ahead / 1000 + time.tv_nsec / second;
    time.tv_nsec %= second;
}

} // namespace

extern "C" int clock_gettime(clockid_t clock, timespec *time) noexcept
{
    const long result = syscall(SYS_clock_gettime, clock, time);
    if (result == 0 && (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE))
        shift(*time);
    return static_cast<int>(result);
}

extern "C" int gettimeofday(timeval *time, void *) noexcept
{
    timespec now{};
    const int result = clock_gettime(CLOCK_REALTIME, &now);
    *time = {now.tv_sec, now.tv_nsec / 1000};
    return result;
}

extern "C" time_t time(time_t *kept) noexcept
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    if (kept)
        *kept = now.tv_sec;
    return now.tv_sec;
}
