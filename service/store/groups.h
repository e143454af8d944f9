// The groups of users, and who is a member.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/users.h"

namespace tideloft::service
{

/// Most groups of one user.
constexpr int maximumGroups = 100;

struct Group {
    QString id; ///< random, and as long as it is kept the same
    QString name;
    QString description;
    QString iconName; ///< of the picture; empty when there is none
};

/// Keeps a group whose only member is MAKER, made at NOW (ms since 1970). False, and nothing kept, when
/// the user has as many groups as one may have.
bool addGroup(Database &database, const User &maker, const Group &group, qint64 now);

/// The user's groups, oldest first.
QList<Group> groupsOf(Database &database, const User &user);

/// One of them; nothing when the user is no member or there is no such group.
std::optional<Group> findGroup(Database &database, const User &user, const QString &groupId);

/// Its row in the table, under the same condition.
std::optional<qint64> findGroupRow(Database &database, const User &user, const QString &groupId);

} // namespace tideloft::service
