// A semaphore of the C++ library's parts: ThreadSanitizer sees into those, and not into the toolkit's.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace tideloft::tests
{

class Semaphore
{
public:
    void release(int more = 1)
    {
        const std::lock_guard lock(mutex);
        count += more;
        changed.notify_all();
    }

    void acquire(int wanted = 1)
    {
        std::unique_lock lock(mutex);
        changed.wait(lock, [&] { return count >= wanted; });
        count -= wanted;
    }

    /// False when there is not so much within that time.
    bool tryAcquire(int wanted, std::chrono::milliseconds timeout)
    {
        std::unique_lock lock(mutex);
        if (!changed.wait_for(lock, timeout, [&] { return count >= wanted; }))
            return false;
        count -= wanted;
        return true;
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    int count = 0;
};

} // namespace tideloft::tests
