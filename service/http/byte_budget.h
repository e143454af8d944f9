// A bound on the bytes that all transfers together may hold in memory, and on those of each account.
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

class ByteBudget
{
public:
    /// Bytes that were set aside; they are given back when it goes. The budget must outlive it.
    class Share
    {
    public:
        Share() = default;
        Share(Share &&other) noexcept
            : budget(std::exchange(other.budget, nullptr)),
              account(other.account),
              bytes(other.bytes)
        {
        }
        Share &operator=(Share &&other) noexcept
        {
            Share old(std::move(*this));
            budget = std::exchange(other.budget, nullptr);
            account = other.account;
            bytes = other.bytes;
            return *this;
        }
        ~Share()
        {
            if (budget)
                budget->giveBack(account, bytes);
        }

        explicit operator bool() const { return budget != nullptr; }

        /// Takes as much as is missing to SIZE. False, and the share as it was, when that is too much.
        bool grow(std::uint64_t size) { return budget && budget->enlarge(*this, size); }

    private:
        friend class ByteBudget;
        Share(ByteBudget &from, std::int64_t owner, std::uint64_t size)
            : budget(&from),
              account(owner),
              bytes(size)
        {
        }

        ByteBudget *budget = nullptr;
        std::int64_t account = 0;
        std::uint64_t bytes = 0;
    };

    ByteBudget(std::uint64_t all, std::uint64_t ofOneAccount)
        : left(all),
          mostOfOne(std::min(all, ofOneAccount))
    {
    }
    ByteBudget(const ByteBudget &) = delete;
    ByteBudget &operator=(const ByteBudget &) = delete;

    /// An empty share when the account or all accounts together would have too much. What is larger than all
    /// that one account may have counts as that much: it goes through, but nothing else of the account beside
    /// it. From any thread.
    Share take(std::int64_t account, std::uint64_t size)
    {
        Share share(*this, account, 0);
        return enlarge(share, size) ? std::move(share) : Share();
    }

private:
    bool enlarge(Share &share, std::uint64_t size)
    {
        const std::lock_guard lock(mutex);
        const std::uint64_t wanted = std::min(size, mostOfOne);
        const std::uint64_t more = wanted > share.bytes ? wanted - share.bytes : 0;
        std::uint64_t &taken = takenBy[share.account];
        const bool fits = more <= left && more <= mostOfOne - taken;
        if (fits) {
            left -= more;
            taken += more;
            share.bytes += more;
        }
        if (taken == 0)
            takenBy.erase(share.account);
        return fits;
    }

    void giveBack(std::int64_t account, std::uint64_t bytes)
    {
        const std::lock_guard lock(mutex);
        left += bytes;
        const auto taken = takenBy.find(account);
        if (taken == takenBy.end())
            return; // nothing was taken
        taken->second -= bytes;
        if (taken->second == 0)
            takenBy.erase(taken);
    }

    std::mutex mutex;
    std::uint64_t left;
    const std::uint64_t mostOfOne;
    std::map<std::int64_t, std::uint64_t> takenBy;
};

} // namespace tideloft::service
