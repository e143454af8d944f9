// Who waits for a reply.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

namespace tideloft::net
{

/// Somebody who has just clicked, or only the timer. While all connections to the service are taken, what the
/// timer asks for stands back behind everything else, however long it has waited.
enum class Urgency { Asked, Refresh };

} // namespace tideloft::net
