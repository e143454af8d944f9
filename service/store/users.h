// The table of users.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api_context.h"

#include <optional>

namespace tideloft::service
{

/// Finds a user by any spelling of the name.
std::optional<User> findUser(Database &database, const QString &name);

/// The stored hash; empty when there is no such user.
QByteArray passwordHash(Database &database, const User &user);

/// False when the name is taken. `name` must be normalised.
bool addUser(ApiContext &context, const QString &name, const QByteArray &hash);

} // namespace tideloft::service
