// Threads that own a connection each, and group commit.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/store_threads.h"

#include "service/store/schema.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <memory>
#include <optional>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

// A commit takes the time of one sync, however much it holds. More than this would keep the first for long.
constexpr std::size_t mostTogether = 256;
constexpr std::chrono::milliseconds idleTurn{1000};

using Batch = std::deque<WriteTask>;

// The database cannot be written at all at the moment, so whatever waits would wait for nothing.
struct CannotBegin {
    std::exception_ptr failure;
};

void beginIn(Database &database, std::optional<Transaction> &transaction)
{
    try {
        transaction.emplace(database);
    } catch (const StorageError &) {
        throw CannotBegin{std::current_exception()};
    }
}

// What the change has thrown, if that is its own affair. What the storage throws concerns all.
std::exception_ptr changeAlone(Database &database, const WriteTask &task)
{
    Transaction part(database);
    try {
        task.change(database);
        part.commit();
    } catch (const StorageError &) {
        throw;
    } catch (...) {
        return std::current_exception();
    }
    return nullptr;
}

using Committed = std::function<void(std::chrono::nanoseconds)>;

void storeTogether(Database &database, const Batch &batch, const Committed &committed)
{
    std::vector<std::exception_ptr> failures;
    std::optional<Transaction> together;
    beginIn(database, together);
    for (const WriteTask &task : batch)
        failures.push_back(changeAlone(database, task));
    const auto begin = std::chrono::steady_clock::now();
    together->commit();
    committed(std::chrono::steady_clock::now() - begin);
    for (std::size_t i = 0; i < batch.size(); ++i)
        batch[i].done(failures[i]);
}

// One change that cannot be stored must not take the others with it, so each is then tried by itself.
void storeOneByOne(Database &database, Batch &batch, const Committed &committed)
{
    while (!batch.empty()) {
        const Batch first{batch.front()};
        try {
            storeTogether(database, first, committed);
        } catch (const StorageError &) {
            first.front().done(std::current_exception());
        }
        batch.pop_front();
    }
}

void storeAll(Database &database, Batch &batch, const Committed &committed)
{
    try {
        storeTogether(database, batch, committed);
        batch.clear();
    } catch (const StorageError &) {
        storeOneByOne(database, batch, committed);
    }
}

/// When the next piece of work is due that has time.
class UpkeepTurns
{
public:
    explicit UpkeepTurns(Upkeep wanted) : upkeep(std::move(wanted)) {}

    std::chrono::milliseconds untilNext() const
    {
        using namespace std::chrono;
        if (!upkeep.piece)
            return idleTurn;
        return std::max(0ms, ceil<milliseconds>(next - steady_clock::now()));
    }

    void take(Database &database)
    {
        if (!upkeep.piece || untilNext().count() > 0)
            return;
        bool more = false;
        try {
            more = upkeep.piece(database);
        } catch (const std::exception &) {
            // The failure is reported by the tasks that wait for the writer; the piece is tried again.
        }
        next = std::chrono::steady_clock::now() + (more ? upkeep.betweenPieces : upkeep.whenDone);
    }

    /// Who waits for the writer goes before work that has time, while another process holds the database.
    void postpone() { next = std::max(next, std::chrono::steady_clock::now() + idleTurn); }

private:
    const Upkeep upkeep;
    std::chrono::steady_clock::time_point next = std::chrono::steady_clock::now() + upkeep.whenDone;
};

} // namespace

StoreThreads::StoreThreads(const StoreSettings &settings)
    : lock(settings.file, DatabaseLock::Kind::Shared),
      reads(settings.waitingReads),
      writes(settings.waitingWrites)
{
    try {
        startThread([this, settings](Opened &opened) { writeAll(settings, opened); });
        for (std::size_t i = 0; i < settings.readers; ++i)
            startThread([this, settings](Opened &opened) { readAll(settings.file, opened); });
    } catch (...) {
        stop();
        throw;
    }
}

StoreThreads::~StoreThreads()
{
    stop();
}

// The writer ends last: only the last connection takes the journals away.
void StoreThreads::stop()
{
    reads.close();
    writes.close();
    while (!threads.empty()) {
        threads.back().join();
        threads.pop_back();
    }
}

// Each thread opens its connection itself, because a connection belongs to its thread.
template <typename Work> void StoreThreads::startThread(Work work)
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

void StoreThreads::readAll(const QString &file, Opened &opened)
{
    Database database(file, Database::Access::ReadOnly);
    opened.set_value();
    while (const std::optional<ReadTask> task = reads.take())
        (*task)(database);
}

void StoreThreads::writeAll(const StoreSettings &settings, Opened &opened)
{
    Store database(settings.file);
    UpkeepTurns upkeep(settings.upkeep);
    database.keep(knownState);
    QVariant version = database.pragma(u"data_version"_s);
    opened.set_value();
    while (std::optional<Batch> batch =
               writes.takeAll(mostTogether, std::min(idleTurn, upkeep.untilNext()))) {
        try {
            // The number changes when another connection has written, which only that of another process
            // does.
            if (const QVariant now = database.pragma(u"data_version"_s); now != version) {
                version = now;
                knownState.forgetAll();
            }
            if (!batch->empty())
                storeAll(database, *batch, settings.committed);
        } catch (const CannotBegin &cannot) {
            upkeep.postpone();
            refuse(std::move(*batch), cannot.failure);
        } catch (...) {
            refuse(std::move(*batch), std::current_exception()); // the next batch may be stored again
        }
        upkeep.take(database);
    }
}

// What waits has waited as long as the writer has, and would wait as long again.
void StoreThreads::refuse(std::deque<WriteTask> batch, const std::exception_ptr &failure)
{
    const Batch waiting =
        writes.takeAll(std::numeric_limits<std::size_t>::max(), std::chrono::milliseconds(0))
            .value_or(Batch());
    batch.insert(batch.end(), waiting.begin(), waiting.end());
    for (const WriteTask &task : batch)
        task.done(failure);
}

} // namespace tideloft::service
