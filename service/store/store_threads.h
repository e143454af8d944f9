// The database on threads of its own: readers, and writers. To a file there is one writer, which commits
// together what waits together.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/database.h"
#include "service/store/database_lock.h"
#include "service/store/session_look_ups.h"
#include "service/store/write_queue.h"
#include "service/threads/bounded_queue.h"

#include <chrono>
#include <exception>
#include <functional>
#include <future>
#include <optional>
#include <thread>
#include <vector>

namespace tideloft::service
{

/// Looks something up. Must not throw.
using ReadTask = std::function<void(Database &)>;

/// Work that has time, done in small pieces by the writer when it has nothing else to do or has just
/// committed.
struct BackgroundWork {
    /// Does a piece. True when there is more to do at once. May throw.
    std::function<bool(Database &)> piece;
    std::chrono::milliseconds betweenPieces{100};
    std::chrono::milliseconds whenDone{600'000}; ///< until it is looked for again; also after the start
};

struct StoreSettings {
    QString place; ///< as engineFor() takes it
    std::size_t readers = 2;
    std::size_t waitingReads = 4096; ///< more are refused
    std::size_t waitingWrites = 1024;
    /// Told of every commit that worked, with its sync to the disk. Called by the writer.
    Committed committed = [](std::chrono::nanoseconds) {};
    BackgroundWork background = {};                      ///< none unless there is a `piece`
    std::size_t writers = 8;                             ///< to a database that several may write at a time
    std::chrono::milliseconds longestDoubt = usualDoubt; ///< of a change whose commit nobody answered
};

class StoreThreads
{
public:
    /// Opens the database and brings it to the current form. Throws what that throws.
    explicit StoreThreads(const StoreSettings &settings);
    Q_DISABLE_COPY_MOVE(StoreThreads)

    /// Waits for the reads under way and for all writes; reads that still wait are never begun.
    ~StoreThreads();

    /// Both may be called from any thread. False, and nothing done, when too many wait already.
    bool read(ReadTask task) { return reads.push(task); }
    bool write(WriteTask task) { return writes.push(std::move(task)); }

    /// True where other processes write all the time, and need what this one has counted.
    bool isShared() const { return shared; }

    /// What is kept in memory of the database. It follows every write, and forgets everything within a second
    /// after another process has written.
    StoreCache &cache() { return storeCache; }
    const StoreCache &cache() const { return storeCache; }

    /// What readers find the sessions of requests by.
    SessionLookUps &sessions() { return sessionLookUps; }

    std::size_t waitingReads() const { return reads.size(); }
    std::size_t waitingWrites() const { return writes.size(); }

private:
    using Opened = std::promise<void>;
    void readAll(const QString &place, Opened &opened);
    void writeAll(const StoreSettings &settings, Opened &opened);
    void writeBeside(StoreSettings settings, Opened &opened);
    void writeWith(Database &database, const StoreSettings &settings, Opened &opened);
    template <typename Work> void startThread(std::vector<std::thread> &threads, Work work);
    void stop();
    void refuse(Batch batch, const std::exception_ptr &failure);

    const bool shared;
    std::optional<DatabaseLock> lock; ///< of a file
    StoreCache storeCache;
    SessionLookUps sessionLookUps{shared};
    BoundedQueue<ReadTask> reads;
    WriteQueue writes;
    std::vector<std::thread> readers;
    std::vector<std::thread> writers;
};

} // namespace tideloft::service
