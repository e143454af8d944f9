// Storing of changes: together where that is faster, each by itself where one of them fails.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/database.h"
#include "service/store/message.h"

#include <chrono>
#include <deque>
#include <exception>
#include <functional>
#include <memory>

namespace tideloft::service
{

struct WriteTask {
    /// May throw, which undoes what it has changed. Runs again when another change of the same batch could
    /// not be stored. Also runs again when the connection ended before the commit was confirmed; then it must
    /// find what it has stored and change nothing.
    std::function<void(Database &)> change;
    /// Called once: when the change is on the disk, or with what the change has thrown or the disk refused.
    /// Must not throw.
    std::function<void(std::exception_ptr failure)> done;
    /// A change that stores nothing but one message names the message here. Then the writer may store it
    /// together with other messages that wait, and does not run the change. What became of the message is
    /// written into it.
    std::shared_ptr<MessageToStore> message = {};
    /// True for one statement that needs no transaction where several processes write. It may run twice.
    bool single = false;
};

using Batch = std::deque<WriteTask>;

/// Called after each successful commit, with how long it took, the sync to the disk included.
using Committed = std::function<void(std::chrono::nanoseconds duration)>;

/// Thrown when the database cannot be written at the moment, so that no further change need be tried.
struct CannotBegin {
    std::exception_ptr failure;
    Trouble kind;
};

/// How long a change is tried again after its connection ended before the commit was confirmed.
constexpr std::chrono::milliseconds usualDoubt{5000};

/// Stores the changes, tells what became of each, and takes out of BATCH whatever was told. Throws
/// CannotBegin.
void storeAll(Database &database, Batch &batch, const Committed &committed,
              std::chrono::milliseconds longestDoubt = usualDoubt);

/// Runs a single statement outside of a transaction, and tells what became of it.
void storeSingle(Database &database, const WriteTask &task);

} // namespace tideloft::service
