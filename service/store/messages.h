// Keeping messages, and which is the last one of each conversation.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/database.h"
#include "service/store/message.h"

namespace tideloft::service
{

/// TRIED, where it is given, is 0 at first and takes the number of the message. Whoever does not know whether
/// the message was stored calls with the same number again, and then it is stored once, sealed or not.
Stored storeMessage(Database &database, const User &sender, const User &recipient,
                    const StoredMessage &message, const MessageQuota &quota, qint64 *tried = nullptr);

/// The same for EACH, which says then what became of it. Its recipient is found by the name first, if need
/// be.
void storeMessage(Database &database, MessageToStore &each);

/// How many conversations USER has written the first message of.
qint64 conversationsBegun(Database &database, const User &user);

} // namespace tideloft::service
