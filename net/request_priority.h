// Which requests go first: those that the user waits for, or those of the refresh.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

namespace tideloft::net
{

/// What causes a request: the user, or only the refresh timer. While all connections to the service are in
/// use, refreshes wait behind all other requests, however long they have waited already.
enum class RequestPriority { UserInitiated, Refresh };

} // namespace tideloft::net
