// The users that a search has found, in their list.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class QListWidget;

namespace tideloft::ui
{

/// Makes LIST list USERNAMES, and nothing else.
void showFoundUsers(QListWidget *list, const QStringList &usernames);

} // namespace tideloft::ui
