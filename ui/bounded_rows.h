// How many rows one reply is given.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace tideloft::ui
{

/// What is listed of one reply, from its beginning. All of it lies far beyond what people have; without it a
/// single reply could keep the window busy for minutes, because every row is made of widgets.
constexpr qsizetype conversationsLimit = 2'000;
constexpr qsizetype foundUsersLimit = 2'000;
constexpr qsizetype serversLimit = 1'000;

} // namespace tideloft::ui
