// How a handler's work is divided among the threads: looking up, changing, and what takes long.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/exchange.h"
#include "service/store/users.h"

#include <functional>
#include <variant>

namespace tideloft::service
{

struct ApiContext;

/// Stores something and gives the reply, which goes out once everything is on the disk. Runs on the writer,
/// and may run twice. May throw, which undoes what it has stored.
using Change = std::function<Response(Database &)>;

/// What takes long and needs no database, such as hashing a password. May throw.
struct SlowWork {
    std::function<std::variant<Response, Change>()> work;
};

/// What a look into the database comes to.
using Outcome = std::variant<Response, Change, SlowWork>;

/// Runs on a reader and may throw.
using LookUp = std::function<Outcome(Database &)>;

/// A reply that begins with a look into the database. Whatever is thrown on the way becomes a reply too.
Later<Response> answerAfter(ApiContext &context, LookUp lookUp);

/// What an exception means to the client: a Refusal says it, everything else is the service's own failure.
Response failureResponse(const std::exception_ptr &failure);

} // namespace tideloft::service
