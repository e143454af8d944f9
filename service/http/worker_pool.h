// Threads for the few things that take long, with a queue that cannot grow without end.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <boost/asio/post.hpp>
#include <boost/asio/thread_pool.hpp>

#include <atomic>
#include <cstddef>
#include <utility>

namespace tideloft::service
{

class WorkerPool
{
public:
    WorkerPool(std::size_t threadCount, std::size_t queueLength)
        : most(threadCount + queueLength),
          threads(threadCount)
    {
    }
    WorkerPool(const WorkerPool &) = delete;
    WorkerPool &operator=(const WorkerPool &) = delete;
    ~WorkerPool() { threads.join(); }

    /// Lets no further job begin; those that run are not interrupted.
    void stop() { threads.stop(); }

    /// False, and nothing done, when too many jobs wait already. `job` must not throw.
    template <typename Job> bool submit(Job job)
    {
        if (unfinished.fetch_add(1) >= most) {
            --unfinished;
            return false;
        }
        boost::asio::post(threads, [this, job = std::move(job)]() mutable {
            job();
            --unfinished;
        });
        return true;
    }

private:
    const std::size_t most;
    std::atomic<std::size_t> unfinished = 0;
    boost::asio::thread_pool threads; // last: its threads use what stands above
};

} // namespace tideloft::service
