// What becomes of messages that are stored together: each finds what those before have changed.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/message.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace tideloft::service
{

/// A user who sends or gets one of the messages.
struct Party {
    User user;
    UserState state = UserState::Deleted;
    qint64 messages = 0; ///< sent; this and the following grow with the messages that are stored
    qint64 bytes = 0;
    qint64 lastPosition = 0;
    qint64 newMessages = 0; ///< of this batch
    qint64 newBytes = 0;
    bool isChanged = false;
    std::optional<qint64> begun; ///< conversations, once that was asked
};

/// What came before all messages of the batch.
struct Before {
    bool isStored = false; ///< the message itself
    bool haveTalked = false;
};

class BatchDecisions
{
public:
    using Parties = std::map<qint64, Party>;
    using Pair = std::pair<qint64, qint64>; ///< a user and a peer

    /// A message that is to be stored.
    struct Accepted {
        MessageToStore *each;
        qint64 position;
    };

    /// The last message of a conversation, as one of the two sees it.
    struct LastMessage {
        qint64 sender = 0;
        qint64 position = 0;
        bool isBegun = false; ///< the user, and not the peer, has written first
    };

    /// FOUND holds all users who send or get one of the messages. BEGUN counts the conversations that a user
    /// has begun.
    BatchDecisions(Parties found, std::function<qint64(const User &)> begun)
        : everybody(std::move(found)),
          countBegun(std::move(begun))
    {
    }

    /// Decides about one message, and writes the decision into it.
    void take(MessageToStore &each, const Before &before);

    const std::vector<Accepted> &accepted() const { return toStore; }
    const std::map<Pair, LastMessage> &conversations() const { return lastMessages; }
    const Parties &parties() const { return everybody; }

private:
    bool cameBefore(const MessageToStore &each) const;
    qint64 begunBy(Party &party) const;
    void accept(MessageToStore &each, bool haveTalked, qint64 size);
    void rememberLast(Pair pair, const Accepted &last, bool begun);

    Parties everybody;
    const std::function<qint64(const User &)> countBegun;
    std::vector<Accepted> toStore;
    std::set<std::pair<Pair, std::pair<QString, QString>>> sealed; ///< nonce and text
    std::map<Pair, LastMessage> lastMessages;
};

} // namespace tideloft::service
