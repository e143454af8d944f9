// A change that a store's writer makes, and what becomes of it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/store_threads.h"
#include "tests/service/semaphore.h"

#include <exception>
#include <functional>
#include <memory>
#include <utility>

namespace tideloft::tests
{

/// What became of a change.
struct WriteOutcome {
    Semaphore done;
    std::exception_ptr failure;
};

/// Has CHANGE made by STORE. Null if its queue is full.
inline std::shared_ptr<WriteOutcome> write(service::StoreThreads &store,
                                           std::function<void(service::Database &)> change,
                                           std::shared_ptr<service::MessageToStore> message = {})
{
    auto outcome = std::make_shared<WriteOutcome>();
    const bool accepted = store.write({std::move(change),
                                       [outcome](const std::exception_ptr &failure) {
                                           outcome->failure = failure;
                                           outcome->done.release();
                                       },
                                       std::move(message)});
    return accepted ? outcome : nullptr;
}

/// Waits until the change is stored or refused.
inline bool isStored(const std::shared_ptr<WriteOutcome> &outcome)
{
    outcome->done.acquire();
    return !outcome->failure;
}

} // namespace tideloft::tests
