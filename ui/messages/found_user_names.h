// The users that a search has found, by name.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>
#include <QStringList>

namespace tideloft::ui
{

/// The usable user names of a search reply: objects with a `username` that is not blank, trimmed. Up to
/// foundUsersLimit.
QStringList foundUserNames(const QJsonArray &users);

} // namespace tideloft::ui
