// Trying again what may be tried again.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/group_commit.h"

#include "service/store/message_batch.h"

#include <QRandomGenerator>

#include <algorithm>
#include <optional>
#include <thread>
#include <vector>

namespace tideloft::service
{

namespace
{

using std::chrono::steady_clock;

/// How often and how long the same changes are tried again.
class Patience
{
public:
    explicit Patience(std::chrono::milliseconds mostDoubt) : longestDoubt(mostDoubt) {}

    /// The connection ended during the commit: to store nothing again and to store it again may both be
    /// wrong, until a new connection shows what was stored.
    void doubt()
    {
        if (doubtEnds == noDoubt)
            doubtEnds = steady_clock::now() + longestDoubt;
    }

    bool doubts() const { return doubtEnds != noDoubt; }

    bool lasts(Trouble kind) const
    {
        if (doubts())
            return (kind == Trouble::Gone || kind == Trouble::Conflict) && steady_clock::now() < doubtEnds;
        return kind == Trouble::Conflict && attempts < mostAttempts;
    }

    // Two that met go on after different times, and so does not meet a third with both again.
    void awaitTurn()
    {
        const int most = 1 << std::min(++attempts, 6);
        std::this_thread::sleep_for(std::chrono::milliseconds(QRandomGenerator::global()->bounded(most) + 1));
    }

private:
    static constexpr int mostAttempts = 20;
    static constexpr steady_clock::time_point noDoubt = steady_clock::time_point::max();

    const std::chrono::milliseconds longestDoubt;
    int attempts = 1;
    steady_clock::time_point doubtEnds = noDoubt;
};

struct Way {
    const Committed &committed;
    std::chrono::milliseconds longestDoubt;
};

void beginIn(Database &database, std::optional<Transaction> &transaction)
{
    try {
        transaction.emplace(database);
    } catch (const StorageError &error) {
        throw CannotBegin{std::current_exception(), error.kind()};
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

// A statement is held in memory several times, so what is large does not go into one.
bool fitIntoOneStatement(const std::vector<MessageToStore *> &messages)
{
    constexpr qsizetype mostLetters = qsizetype{1024} * 1024;
    qsizetype letters = 0;
    for (const MessageToStore *each : messages) {
        const StoredMessage &message = each->message;
        letters += message.text.size() + message.iv.size() + message.recipientKeys.size()
                   + message.senderKeys.size();
    }
    return letters <= mostLetters;
}

// Messages that wait for a shared database; none where there is nothing to put together.
std::vector<MessageToStore *> waitingMessages(const Database &database, const Batch &batch)
{
    std::vector<MessageToStore *> messages;
    if (!database.engine().isShared() || batch.size() == 1)
        return messages;
    for (const WriteTask &task : batch) {
        if (task.message)
            messages.push_back(task.message.get());
    }
    return messages;
}

// The server is asked as often for many messages as for one. In doubt each must look for itself.
std::vector<std::exception_ptr> changeAll(Database &database, const Batch &batch, const Patience &patience)
{
    std::vector<std::exception_ptr> failures(batch.size());
    const std::vector<MessageToStore *> messages = waitingMessages(database, batch);
    if (messages.size() == batch.size() && fitIntoOneStatement(messages) && !patience.doubts()) {
        storeMessages(database, messages);
        return failures;
    }
    if (!messages.empty())
        lockUsers(database, messages);
    std::transform(batch.begin(), batch.end(), failures.begin(),
                   [&](const WriteTask &task) { return changeAlone(database, task); });
    return failures;
}

void commitTogether(Transaction &together, const Way &way, Patience &patience)
{
    const auto begin = steady_clock::now();
    try {
        together.commit();
    } catch (const StorageError &error) {
        if (error.kind() == Trouble::Gone)
            patience.doubt();
        throw;
    }
    way.committed(steady_clock::now() - begin);
}

void storeTogether(Database &database, const Batch &batch, const Way &way, Patience &patience)
{
    std::optional<Transaction> together;
    beginIn(database, together);
    const std::vector<std::exception_ptr> failures = changeAll(database, batch, patience);
    commitTogether(*together, way, patience);
    for (std::size_t i = 0; i < batch.size(); ++i)
        batch[i].done(failures[i]);
}

// What met the change of another process is stored a moment later.
void storeWithPatience(Database &database, const Batch &batch, const Way &way)
{
    for (Patience patience(way.longestDoubt);; patience.awaitTurn()) {
        try {
            return storeTogether(database, batch, way, patience);
        } catch (const StorageError &error) {
            if (!patience.lasts(error.kind()))
                throw;
        } catch (const CannotBegin &cannot) {
            if (!patience.lasts(cannot.kind))
                throw;
        }
    }
}

// One change that cannot be stored must not take the others with it, so each is then tried by itself.
void storeOneByOne(Database &database, Batch &batch, const Way &way)
{
    while (!batch.empty()) {
        const Batch first{batch.front()};
        try {
            storeWithPatience(database, first, way);
        } catch (const StorageError &) {
            first.front().done(std::current_exception());
        }
        batch.pop_front();
    }
}

// A server that has no room, or lets all wait until their time is over, does the same to each of them.
void refuseAll(Batch &batch, const std::exception_ptr &failure)
{
    for (const WriteTask &task : batch)
        task.done(failure);
    batch.clear();
}

} // namespace

void storeAll(Database &database, Batch &batch, const Committed &committed,
              std::chrono::milliseconds longestDoubt)
{
    const Way way{committed, longestDoubt};
    try {
        storeWithPatience(database, batch, way);
        batch.clear();
    } catch (const StorageError &error) {
        if (database.engine().isShared() && error.kind() == Trouble::Passing)
            refuseAll(batch, std::current_exception());
        else
            storeOneByOne(database, batch, way);
    }
}

// Its connection may have been lost since the last task.
void storeSingle(Database &database, const WriteTask &task)
{
    try {
        try {
            task.change(database);
        } catch (const StorageError &error) {
            if (error.kind() != Trouble::Gone)
                throw;
            task.change(database);
        }
    } catch (...) {
        return task.done(std::current_exception());
    }
    task.done(nullptr);
}

} // namespace tideloft::service
