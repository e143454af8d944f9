// Working off jobs.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/threads/workers.h"

#include <sys/resource.h>
#include <unistd.h>

namespace tideloft::service
{

namespace
{

// On Linux this number belongs to the thread. Where the system refuses, the thread goes on as it is.
void stepBack()
{
    constexpr int last = 19;
    static_cast<void>(setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), last));
}

} // namespace

Workers::Workers(std::size_t threadCount, std::size_t mostWaiting, Priority priority) : queue(mostWaiting)
{
    threads.reserve(threadCount);
    for (std::size_t i = 0; i < threadCount; ++i) {
        threads.emplace_back([this, priority] {
            if (priority == Priority::Low)
                stepBack();
            workOff();
        });
    }
}

void Workers::stop()
{
    queue.close();
    for (std::thread &thread : threads)
        thread.join();
    threads.clear();
}

void Workers::workOff()
{
    while (const std::optional<Job> job = queue.take())
        (*job)();
}

} // namespace tideloft::service
