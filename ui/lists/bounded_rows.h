// How many rows one reply is given.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>

namespace tideloft::ui
{

/// How many entries of one reply are listed, from its beginning. No person has so many. Without these limits
/// a single reply could keep the window busy for minutes.
constexpr qsizetype conversationsLimit = 10'000;
constexpr qsizetype foundUsersLimit = 10'000;
constexpr qsizetype serversLimit = 1'000;

/// Of a history the newest are shown: those are at the end, which is where the list stands.
constexpr qsizetype historyLimit = 50'000;

/// The last historyLimit of ITEMS, all of them if there are no more.
QJsonArray newestItems(const QJsonArray &items);

} // namespace tideloft::ui
