// What a handler's work comes to, by the thread that does it: looking up, changing, and what takes long.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/exchange.h"
#include "service/store/user.h"

#include <functional>
#include <memory>
#include <variant>

namespace tideloft::service
{

class Database;
struct MessageToStore;
enum class Stored;

/// Stores something and gives the reply, which goes out once everything is on the disk. Runs on the writer,
/// and may run twice, also when the first time was stored: it stores the same once. May throw, which undoes
/// what it has stored.
using Change = std::function<Response(Database &)>;

/// What takes long and needs no database, such as hashing a password. May throw.
struct SlowWork {
    std::function<std::variant<Response, Change>()> work;
};

/// Stores a message. REPLY makes the answer from what became of the message. REPLY may throw.
struct Send {
    std::shared_ptr<MessageToStore> message;
    std::function<Response(Stored)> reply;
};

struct Count;

/// What a look into the database comes to.
using Outcome = std::variant<Response, Change, Send, SlowWork, std::shared_ptr<const Count>>;

/// Runs on a reader and may throw.
using LookUp = std::function<Outcome(Database &)>;

/// Something small that is stored by itself before the look goes on. Runs on a writer, outside of a
/// transaction, and may run twice. May throw, and then the look does not go on.
struct Count {
    std::function<void(Database &)> count;
    LookUp next;
};

/// A handler for signed-in users only. Runs on a reader and may throw.
using UserHandler = std::function<Outcome(Database &, const Request &, const User &)>;

} // namespace tideloft::service
