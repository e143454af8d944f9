// Several messages in one transaction.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/database.h"
#include "service/store/message.h"

#include <vector>

namespace tideloft::service
{

/// Locks all users who send or get one of the messages, until the present transaction is over.
void lockUsers(Database &database, const std::vector<MessageToStore *> &messages);

/// Stores the messages as storeMessage() does one after the other, and writes into each what became of the
/// message. Takes five statements for any number, and one more for each sender who begins a conversation. For
/// databases that several processes write; none of the messages may have been tried.
void storeMessages(Database &database, const std::vector<MessageToStore *> &messages);

} // namespace tideloft::service
