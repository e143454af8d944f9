// Whether a message is kept.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/message.h"

#include <functional>

namespace tideloft::service
{

/// What the database knows of the two who talk, and of what came before the message.
struct MessageFacts {
    UserState sender = UserState::Deleted;
    UserState recipient = UserState::Deleted;
    qint64 messages = 0; ///< that the sender has sent
    qint64 bytes = 0;    ///< of the messages that the sender has sent
    bool isStored = false;
    bool haveTalked = false;
};

/// The bytes that MESSAGE counts for its sender: as the database counts them when messages are removed.
qint64 sizeOf(const StoredMessage &message);

/// What becomes of a message of SIZE bytes. How many conversations the sender has BEGUN is asked only where
/// that matters.
Stored decide(const MessageFacts &facts, qint64 size, const MessageQuota &quota,
              const std::function<qint64()> &begun);

} // namespace tideloft::service
