// Threads for what takes long, with a queue in front of them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/threads/bounded_queue.h"

#include <functional>
#include <thread>
#include <vector>

namespace tideloft::service
{

class Workers
{
public:
    using Job = std::function<void()>;

    /// With low priority the threads leave most of a busy processor to others.
    enum class Priority { Usual, Low };

    Workers(std::size_t threadCount, std::size_t mostWaiting, Priority priority = Priority::Usual);
    Workers(const Workers &) = delete;
    Workers &operator=(const Workers &) = delete;

    ~Workers() { stop(); }

    /// Waits for the jobs under way. Those that still wait are never begun, and no further ones are taken.
    void stop();

    /// False, and nothing done, when too many jobs wait already. JOB must not throw.
    bool submit(Job job) { return queue.push(job); }

    std::size_t waiting() const { return queue.size(); }

private:
    void workOff();

    BoundedQueue<Job> queue;
    std::vector<std::thread> threads;
};

} // namespace tideloft::service
