// A bound on the bytes that all transfers together may hold in memory, and a share of them for each owner.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <mutex>
#include <utility>

namespace tideloft::service
{

/// An owner may hold half as much as nobody holds, so that several who hold what they can leave something to
/// everybody else: one alone has a third, two have a quarter each, and ten together leave a sixth.
template <typename Owner> class MemoryBudget
{
public:
    /// Bytes that were set aside; they are given back when it goes. The budget must outlive it.
    class Share
    {
    public:
        Share() = default;
        Share(Share &&other) noexcept
            : budget(std::exchange(other.budget, nullptr)),
              owner(std::move(other.owner)),
              bytes(other.bytes)
        {
        }
        Share &operator=(Share &&other) noexcept
        {
            Share old(std::move(*this));
            budget = std::exchange(other.budget, nullptr);
            owner = std::move(other.owner);
            bytes = other.bytes;
            return *this;
        }
        ~Share()
        {
            if (budget)
                budget->giveBack(owner, bytes);
        }

        explicit operator bool() const { return budget != nullptr; }

        /// Takes as much as is missing to SIZE. False, and the share as it was, when that is too much.
        bool grow(std::uint64_t size) { return budget && budget->enlarge(*this, size); }

    private:
        friend class MemoryBudget;
        Share(MemoryBudget &from, Owner whose) : budget(&from), owner(std::move(whose)) {}

        MemoryBudget *budget = nullptr;
        Owner owner{};
        std::uint64_t bytes = 0;
    };

    MemoryBudget(std::uint64_t all, std::uint64_t ofOneOwner)
        : left(all),
          mostOfOne(std::min(all / 3, ofOneOwner))
    {
    }
    MemoryBudget(const MemoryBudget &) = delete;
    MemoryBudget &operator=(const MemoryBudget &) = delete;

    /// An empty share when the owner or all owners together would have too much. What is larger than all that
    /// one owner may ever have counts as that much: it goes through, but nothing else of the owner beside it.
    /// From any thread.
    Share take(const Owner &owner, std::uint64_t size)
    {
        Share share(*this, owner);
        return enlarge(share, size) ? std::move(share) : Share();
    }

private:
    bool enlarge(Share &share, std::uint64_t size)
    {
        const std::lock_guard lock(mutex);
        const std::uint64_t wanted = std::min(size, mostOfOne);
        const std::uint64_t more = wanted > share.bytes ? wanted - share.bytes : 0;
        std::uint64_t &taken = takenBy[share.owner];
        const bool fits =
            more <= left && more <= mostOfOne - taken && (more == 0 || 2 * (taken + more) <= left - more);
        if (fits) {
            left -= more;
            taken += more;
            share.bytes += more;
        }
        if (taken == 0)
            takenBy.erase(share.owner);
        return fits;
    }

    void giveBack(const Owner &owner, std::uint64_t bytes)
    {
        const std::lock_guard lock(mutex);
        left += bytes;
        const auto taken = takenBy.find(owner);
        if (taken == takenBy.end())
            return; // nothing was taken
        taken->second -= bytes;
        if (taken->second == 0)
            takenBy.erase(taken);
    }

    std::mutex mutex;
    std::uint64_t left;
    const std::uint64_t mostOfOne;
    std::map<Owner, std::uint64_t> takenBy;
};

using ByteBudget = MemoryBudget<std::int64_t>; ///< of accounts

/// Replies and bodies up to this size are counted by address, and larger ones by account: finding the account
/// may take a look into the database.
constexpr std::uint64_t mostCountedByAddress = 64ULL * 1024;

constexpr std::uint64_t usualTransferBytes = 64ULL * 1024 * 1024;
constexpr std::uint64_t usualAccountBytes = usualTransferBytes / 4; ///< as much as the largest list

} // namespace tideloft::service
