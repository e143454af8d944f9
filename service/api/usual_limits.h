// What the service allows where its options say nothing else.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

namespace tideloft::service
{

constexpr int usualSignInsPerMinute = 10;       ///< for each account, and for each address
constexpr int usualRegistrationsPerMinute = 10; ///< for each address
constexpr int usualHistoryLimit = 5000;         ///< messages that a history gives
constexpr int usualMessages = 1'000'000;        ///< that one user may have sent
constexpr int usualMessageMegabytes = 2048;     ///< that these take
constexpr int usualConversations = 2000;        ///< of one user
constexpr int usualPictureMegabytes = 100;      ///< of one user's picture and servers' icons

} // namespace tideloft::service
