// What waits to be stored, and what of it goes together.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/group_commit.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

namespace tideloft::service
{

/// Every function may be called from any thread.
class WriteQueue
{
public:
    /// Who takes from the queue.
    enum class Takers {
        One,    ///< A writer alone, which stores together whatever waits.
        Several ///< They store messages together and everything else one by one. Only one of them has
                ///< messages at a time: several would take each message as it comes, and ask the server as
                ///< often for one as for many.
    };

    WriteQueue(std::size_t mostWaiting, Takers takers)
        : most(mostWaiting),
          areSeveral(takers == Takers::Several)
    {
    }
    Q_DISABLE_COPY_MOVE(WriteQueue)

    /// False, and nothing done, when too many wait already or the queue is closed.
    bool push(WriteTask task);

    /// A batch. While it holds messages, nobody else gets any.
    class Taken
    {
    public:
        Taken() = default;
        Taken(WriteQueue *owner, Batch content) : batch(std::move(content)), queue(owner) {}
        Taken(Taken &&other) noexcept
            : batch(std::move(other.batch)),
              queue(std::exchange(other.queue, nullptr))
        {
        }
        Taken &operator=(Taken &&other) noexcept;
        Taken(const Taken &) = delete;
        Taken &operator=(const Taken &) = delete;
        ~Taken() { giveBack(); }

        Batch batch;

    private:
        friend class WriteQueue;
        void giveBack();

        WriteQueue *queue = nullptr; ///< where others wait until these messages are stored
    };

    /// Waits at most TIMEOUT for something, and takes what goes together; what came first is first. DONE is
    /// what this writer took last and has stored: it may go on with the next messages before anybody else is
    /// woken for them. Nothing once the queue is closed and there is nothing left for this writer.
    std::optional<Taken> take(std::chrono::milliseconds timeout, Taken done);
    std::optional<Taken> take(std::chrono::milliseconds timeout);

    /// Takes everything that waits, to be refused.
    Batch takeAll();

    /// Lets nothing in any more and wakes everybody who waits.
    void close();

    std::size_t size() const;

private:
    struct Waiting {
        std::uint64_t number; ///< in the order of their coming
        WriteTask task;
    };
    using Lane = std::deque<Waiting>;
    Lane *nextLane();

    const std::size_t most;
    const bool areSeveral;
    mutable std::mutex mutex;
    std::condition_variable changed;
    Lane messages; ///< empty where there is one taker
    Lane others;
    std::uint64_t count = 0; ///< of all that came
    bool messagesAreTaken = false;
    bool closed = false;
};

} // namespace tideloft::service
