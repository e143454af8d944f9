// The caches of the lists that refreshes ask for again and again. They belong to one signed-in user.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "net/etag_cache.h"
#include "net/reply_cache.h"

namespace tideloft::net
{

/// A reply may be cached only if its request was sent after the sign-in, and nobody has signed out since.
class ReplyCaches
{
public:
    ReplyCache conversations;
    ReplyCache history;
    ReplyCache servers;
    ETagCache tags;

    /// A user has signed in: replies to requests that are sent from now on may be cached.
    void open()
    {
        isOpen = true;
        tags.clear(); // of the sign-in before
    }
    /// Empties the caches, and closes them until the next open().
    void clear()
    {
        for (ReplyCache *cache : {&conversations, &history, &servers})
            cache->clear();
        tags.clear();
        isOpen = false;
        ++period;
    }
    [[nodiscard]] bool areOpen() const { return isOpen; }
    /// What a request remembers while its reply is on the way.
    [[nodiscard]] quint64 periodOfRequest() const { return isOpen ? period : never; }
    /// Whether the reply to a request of that period may be cached.
    [[nodiscard]] bool mayKeep(quint64 periodOfRequest) const { return periodOfRequest == period; }

private:
    static constexpr quint64 never = 0;
    quint64 period = 1; ///< another number after every clear()
    bool isOpen = false;
};

} // namespace tideloft::net
