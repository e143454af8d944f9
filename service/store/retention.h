// Forgetting of old messages, a few at a time.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/database.h"

namespace tideloft::service
{

/// Forgets at most MOST messages that were sent before TIME (ms since 1970), the oldest first, and says
/// how many. A conversation ends with its last message. The file keeps its size,
/// and what is free in it takes up new messages.
int removeMessagesBefore(Database &database, qint64 time, int most);

} // namespace tideloft::service
