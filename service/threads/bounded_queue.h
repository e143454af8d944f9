// A queue between threads that cannot grow without end.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

namespace tideloft::service
{

/// Every function may be called from any thread.
template <typename Item> class BoundedQueue
{
public:
    explicit BoundedQueue(std::size_t mostWaiting) : most(mostWaiting) {}
    BoundedQueue(const BoundedQueue &) = delete;
    BoundedQueue &operator=(const BoundedQueue &) = delete;

    /// False, and ITEM left as it is, when too many wait already or the queue is closed.
    bool push(Item &item)
    {
        {
            const std::lock_guard lock(mutex);
            if (closed || items.size() >= most)
                return false;
            items.push_back(std::move(item));
        }
        filled.notify_one();
        return true;
    }

    /// Waits for an item. Nothing once the queue is closed.
    std::optional<Item> take()
    {
        std::unique_lock lock(mutex);
        filled.wait(lock, [this] { return closed || !items.empty(); });
        if (closed)
            return std::nullopt;
        std::optional<Item> first(std::move(items.front()));
        items.pop_front();
        return first;
    }

    /// Lets nothing in any more and wakes everybody who waits.
    void close()
    {
        {
            const std::lock_guard lock(mutex);
            closed = true;
        }
        filled.notify_all();
    }

    std::size_t size() const
    {
        const std::lock_guard lock(mutex);
        return items.size();
    }

private:
    const std::size_t most;
    mutable std::mutex mutex;
    std::condition_variable filled;
    std::deque<Item> items;
    bool closed = false;
};

} // namespace tideloft::service
