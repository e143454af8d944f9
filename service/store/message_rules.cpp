// The order in which a message is refused.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/message_rules.h"

namespace tideloft::service
{

qint64 sizeOf(const StoredMessage &message)
{
    return message.text.toUtf8().size() + message.iv.toUtf8().size() + message.recipientKeys.toUtf8().size()
           + message.senderKeys.toUtf8().size();
}

// What strangers have begun does not count: they could use up the quota of anybody.
Stored decide(const MessageFacts &facts, qint64 size, const MessageQuota &quota,
              const std::function<qint64()> &begun)
{
    if (facts.sender != UserState::Active)
        return Stored::NoSender;
    if (facts.isStored)
        return Stored::Before;
    if (facts.recipient == UserState::Deleted)
        return Stored::NoRecipient;
    if (facts.messages >= quota.messages)
        return Stored::TooManyMessages;
    if (facts.bytes + size > quota.bytes)
        return Stored::TooManyBytes;
    if (!facts.haveTalked && begun() >= quota.conversations)
        return Stored::TooManyConversations;
    return Stored::Now;
}

} // namespace tideloft::service
