// The tables of groups and their members.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api_context.h"

#include <QJsonArray>
#include <QJsonObject>

#include <optional>

namespace tideloft::service
{

/// Most groups of one user.
constexpr int maximumGroups = 100;

/// Makes a group whose only member is `maker`, and returns it as an object; nothing, and nothing made, when
/// the user has as many groups as one may have.
std::optional<QJsonObject> makeGroup(ApiContext &context, const User &maker, const QString &name,
                                     const QString &description);

/// The user's groups as objects with `groupId`, `name`, `description` and `iconUrl`, oldest first.
QJsonArray groupsOf(Database &database, const User &user);

/// One of them; nothing when the user is no member or there is no such group.
std::optional<QJsonObject> findGroup(Database &database, const User &user, const QString &groupId);

/// Its row in the table, under the same condition.
std::optional<qint64> findGroupRow(Database &database, const User &user, const QString &groupId);

} // namespace tideloft::service
