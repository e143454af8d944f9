// Several messages in one transaction.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/database.h"
#include "service/store/message.h"

#include <vector>

namespace tideloft::service
{

/// Stores the messages as storeMessage() does one after the other, and says of each what became of it. Asks
/// the server as often for many as for one. For databases that several processes write; none may have been
/// tried.
void storeMessages(Database &database, const std::vector<MessageToStore *> &messages);

} // namespace tideloft::service
