// Looking up sessions: what several requests wait for is one question to the server.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/store/sessions.h"

#include <QByteArray>

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace tideloft::service
{

/// Every function may be called from any thread.
class SessionLookUps
{
public:
    /// What one request asks for. It is looked up once.
    struct Wanted {
        explicit Wanted(QByteArray hash) : tokenHash(std::move(hash)) {}

        const QByteArray tokenHash;

    private:
        friend class SessionLookUps;
        enum class State { Waiting, UnderWay, Known };
        State state = State::Waiting;
        std::optional<CachedSession> session;
    };
    using Ticket = std::shared_ptr<Wanted>;

    /// TOGETHER where a question costs a way to a server.
    explicit SessionLookUps(bool together) : areTogether(together) {}
    Q_DISABLE_COPY_MOVE(SessionLookUps)

    /// Says that the session is going to be asked for.
    Ticket want(const QByteArray &tokenHash);

    /// The session as it is stored, after it was wanted and before this returns; nothing when there is none.
    /// On the way it is found what others want. Waits while another thread does that for this one. May throw,
    /// and then the others ask for themselves.
    std::optional<CachedSession> find(Database &database, const Ticket &wanted);

private:
    using Tickets = std::vector<Ticket>;
    Tickets takeWith(const Ticket &wanted);
    void setAll(const Tickets &tickets, Wanted::State state);

    const bool areTogether;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::weak_ptr<Wanted>> waiting; ///< also some that are known meanwhile
};

} // namespace tideloft::service
