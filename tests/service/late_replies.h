// Replies that come when a test wants them to.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/service/raw_requests.h"
#include "tests/service/semaphore.h"

#include <mutex>

namespace tideloft::tests
{

class LateReplies
{
public:
    /// A reply that finish() ends, or the end of TIMEOUT with an empty reply of status 503.
    service::Reply next(std::chrono::milliseconds timeout = std::chrono::milliseconds::max())
    {
        return service::Later<service::Response>{
            [this](const service::Finish<service::Response> &finish) {
                const std::lock_guard lock(mutex);
                waiting << finish;
                begun.release();
            },
            timeout, service::refusalResponse({503, QStringLiteral("late")}, {}, {})};
    }

    /// Waits until that many are asked for.
    void await(int count = 1) { begun.acquire(count); }

    void finish()
    {
        const std::lock_guard lock(mutex);
        for (const auto &finish : waiting)
            finish(replyWith({{QStringLiteral("late"), true}}));
        waiting.clear();
    }

private:
    std::mutex mutex;
    Semaphore begun;
    QList<service::Finish<service::Response>> waiting;
};

} // namespace tideloft::tests
