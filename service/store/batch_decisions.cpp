// Deciding about messages in their order.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/batch_decisions.h"

#include "service/store/message_rules.h"

#include <algorithm>

namespace tideloft::service
{

bool BatchDecisions::cameBefore(const MessageToStore &each) const
{
    return sealed.contains({{each.sender.id, each.recipient.id}, {each.message.iv, each.message.text}});
}

qint64 BatchDecisions::begunBy(Party &party) const
{
    if (!party.begun)
        party.begun = countBegun(party.user);
    return *party.begun;
}

void BatchDecisions::rememberLast(Pair pair, const Accepted &last, bool begun)
{
    LastMessage &known = lastMessages.try_emplace(pair, LastMessage{0, 0, begun}).first->second;
    known.sender = last.each->sender.id;
    known.position = last.position;
}

// What one writes to oneself is one conversation.
void BatchDecisions::accept(MessageToStore &each, bool haveTalked, qint64 size)
{
    Party &sender = everybody.at(each.sender.id);
    Party &recipient = everybody.at(each.recipient.id);
    const qint64 position = std::max(sender.lastPosition, recipient.lastPosition) + 1;
    toStore.push_back({&each, position});
    if (!each.message.iv.isEmpty())
        sealed.insert({{sender.user.id, recipient.user.id}, {each.message.iv, each.message.text}});
    rememberLast({sender.user.id, recipient.user.id}, toStore.back(), true);
    if (recipient.user.id != sender.user.id)
        rememberLast({recipient.user.id, sender.user.id}, toStore.back(), false);
    if (sender.begun && !haveTalked)
        ++*sender.begun;
    for (Party *party : {&sender, &recipient}) {
        party->lastPosition = position;
        party->isChanged = true;
    }
    ++sender.messages;
    ++sender.newMessages;
    sender.bytes += size;
    sender.newBytes += size;
}

void BatchDecisions::take(MessageToStore &each, const Before &before)
{
    if (each.recipient.id == 0) {
        each.stored = Stored::NoRecipient;
        return;
    }
    Party &sender = everybody.at(each.sender.id);
    const bool haveTalked = before.haveTalked || lastMessages.contains({each.sender.id, each.recipient.id});
    const MessageFacts facts{sender.state, everybody.at(each.recipient.id).state, sender.messages,
                             sender.bytes, before.isStored || cameBefore(each),   haveTalked};
    const qint64 size = sizeOf(each.message);
    each.stored = decide(facts, size, each.quota, [&] { return begunBy(sender); });
    if (each.stored == Stored::Now)
        accept(each, haveTalked, size);
}

} // namespace tideloft::service
