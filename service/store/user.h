// A user: everything that is kept belongs to one.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::service
{

struct User {
    qint64 id = 0;
    QString name;
};

/// What an account may do. The numbers stand in the database. Of a deleted account the name is left, so that
/// nobody else is ever taken for that person, and the messages that others have got.
enum class UserState { Active = 0, Disabled = 1, Deleted = 2 };

} // namespace tideloft::service
