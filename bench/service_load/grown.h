// A database as it is after years: many users and many messages, made by a few statements.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "bench/service_load/seed.h"

namespace tideloft::bench
{

constexpr int messagesOfAUser = 100; ///< in the whole database, for each user

/// Fills the empty database at PLACE with so many users, who are signed in. Each has ten conversations of
/// twenty messages, which lie apart from each other, as messages do that were written over the years.
std::vector<SeededUser> grow(const QString &place, int users);

} // namespace tideloft::bench
