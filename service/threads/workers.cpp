// Working off jobs.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/threads/workers.h"

#include "service/system/process.h"

namespace tideloft::service
{

Workers::Workers(std::size_t threadCount, std::size_t mostWaiting, Priority priority) : queue(mostWaiting)
{
    threads.reserve(threadCount);
    for (std::size_t i = 0; i < threadCount; ++i) {
        threads.emplace_back([this, priority] {
            if (priority == Priority::Low)
                letOthersGoFirst();
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
