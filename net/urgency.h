// Who waits for a reply.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

namespace tideloft::net
{

/// What causes a request: the user, or only the refresh timer. While all connections to the service are in
/// use, refreshes wait behind all other requests, however long they have waited already.
enum class Urgency { Asked, Refresh };

} // namespace tideloft::net
