// A queue with turns: who brings much waits behind who brings little.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <utility>

namespace tideloft::service
{

/// Every function may be called from any thread, and none waits.
template <typename Owner, typename Item> class FairQueue
{
public:
    FairQueue(std::size_t mostWaiting, std::size_t mostOfOneOwner)
        : most(mostWaiting),
          mostOfOne(mostOfOneOwner)
    {
    }
    FairQueue(const FairQueue &) = delete;
    FairQueue &operator=(const FairQueue &) = delete;

    /// False, and ITEM left as it is, when too many wait already, of all owners or of this one.
    bool push(const Owner &owner, Item &item)
    {
        const std::lock_guard lock(mutex);
        const auto found = waiting.find(owner);
        if (count >= most || (found == waiting.end() ? mostOfOne == 0 : found->second.size() >= mostOfOne))
            return false;
        std::deque<Item> &own = found == waiting.end() ? waiting[owner] : found->second;
        if (own.empty())
            turns.push_back(owner);
        own.push_back(std::move(item));
        ++count;
        return true;
    }

    /// The oldest item of the owner whose turn it is. Nothing when none waits.
    std::optional<Item> take()
    {
        const std::lock_guard lock(mutex);
        if (turns.empty())
            return std::nullopt;
        const auto owner = waiting.find(turns.front());
        turns.pop_front();
        std::optional<Item> item(std::move(owner->second.front()));
        owner->second.pop_front();
        --count;
        if (owner->second.empty())
            waiting.erase(owner);
        else
            turns.push_back(owner->first);
        return item;
    }

    std::size_t size() const
    {
        const std::lock_guard lock(mutex);
        return count;
    }

private:
    const std::size_t most;
    const std::size_t mostOfOne;
    mutable std::mutex mutex;
    std::map<Owner, std::deque<Item>> waiting; ///< of those only for whom something waits
    std::deque<Owner> turns;                   ///< each of these once
    std::size_t count = 0;
};

} // namespace tideloft::service
