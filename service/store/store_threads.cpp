// Threads that own a connection each.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/store_threads.h"

#include "service/store/engines.h"
#include "service/store/schema.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::chrono::milliseconds idleTurn{1000};

/// When the next piece of work is due that has time.
class BackgroundTurns
{
public:
    explicit BackgroundTurns(BackgroundWork wanted) : background(std::move(wanted)) {}

    std::chrono::milliseconds untilNext() const
    {
        using namespace std::chrono;
        if (!background.piece)
            return idleTurn;
        return std::clamp<milliseconds>(ceil<milliseconds>(next - steady_clock::now()), 0ms, idleTurn);
    }

    void take(Database &database)
    {
        if (!background.piece || untilNext().count() > 0)
            return;
        bool more = false;
        try {
            more = background.piece(database);
        } catch (const std::exception &) {
            return postpone(); // the failure is reported by the tasks that wait for the writer
        }
        next = std::chrono::steady_clock::now() + (more ? background.betweenPieces : background.whenDone);
    }

    /// For a moment. Who waits for the writer goes before work that has time, while another process holds the
    /// database.
    void postpone() { next = std::max(next, std::chrono::steady_clock::now() + idleTurn); }

private:
    const BackgroundWork background;
    std::chrono::steady_clock::time_point next = std::chrono::steady_clock::now() + background.whenDone;
};

void joinAll(std::vector<std::thread> &threads)
{
    for (std::thread &thread : threads)
        thread.join();
    threads.clear();
}

} // namespace

StoreThreads::StoreThreads(const StoreSettings &settings)
    : shared(engineFor(settings.place)->isShared()),
      reads(settings.waitingReads),
      writes(settings.waitingWrites, shared ? WriteQueue::Takers::Several : WriteQueue::Takers::One)
{
    if (const QString file = engineFor(settings.place)->file(); !file.isEmpty())
        lock.emplace(file, DatabaseLock::Kind::Shared);
    if (shared)
        storeCache.keepNothing();
    try {
        startThread(writers, [this, settings](Opened &opened) { writeAll(settings, opened); });
        for (std::size_t i = 1; shared && i < settings.writers; ++i)
            startThread(writers, [this, settings](Opened &opened) { writeBeside(settings, opened); });
        for (std::size_t i = 0; i < settings.readers; ++i)
            startThread(readers, [this, settings](Opened &opened) { readAll(settings.place, opened); });
    } catch (...) {
        stop();
        throw;
    }
}

StoreThreads::~StoreThreads()
{
    stop();
}

// The writer of a file ends when nobody reads any more: only the last connection takes the journals away, and
// of two that end at the same moment neither is the last.
void StoreThreads::stop()
{
    reads.close();
    joinAll(readers);
    writes.close();
    joinAll(writers);
}

// Each thread opens its connection itself, because a connection belongs to its thread.
template <typename Work> void StoreThreads::startThread(std::vector<std::thread> &threads, Work work)
{
    auto opened = std::make_shared<Opened>();
    std::future<void> result = opened->get_future();
    threads.emplace_back([opened, work = std::move(work)] {
        try {
            work(*opened);
        } catch (...) {
            opened->set_exception(std::current_exception());
        }
    });
    result.get();
}

void StoreThreads::readAll(const QString &place, Opened &opened)
{
    Database database(place, Database::Access::ReadOnly);
    opened.set_value();
    while (const std::optional<ReadTask> task = reads.take())
        (*task)(database);
}

// The first writer also brings the tables to their form, and does the work that has time.
void StoreThreads::writeAll(const StoreSettings &settings, Opened &opened)
{
    Store database(settings.place);
    writeWith(database, settings, opened);
}

void StoreThreads::writeBeside(StoreSettings settings, Opened &opened)
{
    Database database(settings.place);
    settings.background = {};
    writeWith(database, settings, opened);
}

// An engine that several write at a time commits together by itself what they commit at the same moment.
void StoreThreads::writeWith(Database &database, const StoreSettings &settings, Opened &opened)
{
    BackgroundTurns background(settings.background);
    database.use(storeCache);
    qint64 changes = database.engine().changesOfOthers(database);
    opened.set_value();
    std::optional<WriteQueue::Taken> taken = writes.take(background.untilNext());
    for (; taken; taken = writes.take(background.untilNext(), std::move(*taken))) {
        Batch &batch = taken->batch;
        std::exception_ptr failure;
        try {
            // The number changes when another connection has written, which only that of another process
            // does.
            if (const qint64 now = database.engine().changesOfOthers(database); now != changes) {
                changes = now;
                storeCache.forgetAll();
            }
            if (shared && !batch.empty() && batch.front().single)
                storeSingle(database, batch.front());
            else if (!batch.empty())
                storeAll(database, batch, settings.committed, settings.longestDoubt);
        } catch (const CannotBegin &cannot) {
            background.postpone();
            failure = cannot.failure;
        } catch (...) {
            failure = std::current_exception(); // the next batch may be stored again
        }
        if (failure)
            refuse(std::move(batch), failure);
        batch = {};
        if (background.untilNext().count() == 0)
            *taken = {}; // others may have the next messages meanwhile
        background.take(database);
    }
}

// What waits has waited as long as the writer has, and would wait as long again.
void StoreThreads::refuse(Batch batch, const std::exception_ptr &failure)
{
    const Batch waiting = writes.takeAll();
    batch.insert(batch.end(), waiting.begin(), waiting.end());
    for (const WriteTask &task : batch)
        task.done(failure);
}

} // namespace tideloft::service
