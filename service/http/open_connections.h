// Who is connected, and which connections only wait for a request.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <map>

namespace tideloft::service
{

/// Keeps what is added without owning it; every connection must be removed before it goes.
template <typename Connection> class OpenConnections
{
public:
    void add(Connection *connection, const QByteArray &peer)
    {
        places.emplace(connection, Place{peer, 0});
        ++peers[peer].open;
    }

    void remove(Connection *connection)
    {
        setIdle(connection, false);
        const auto place = places.find(connection);
        if (place == places.end())
            return;
        const auto peer = peers.find(place->second.peer);
        if (--peer->second.open == 0)
            peers.erase(peer);
        places.erase(place);
    }

    /// Whether the connection has nothing to do but to wait for its next request.
    void setIdle(Connection *connection, bool idle)
    {
        const auto place = places.find(connection);
        if (place == places.end())
            return;
        std::uint64_t &number = place->second.idleNumber;
        Idle &ofPeer = peers[place->second.peer].idle;
        if (number != 0) {
            all.erase(number);
            ofPeer.erase(number);
        }
        number = idle ? ++last : 0;
        if (idle) {
            all.emplace(number, connection);
            ofPeer.emplace(number, connection);
        }
    }

    std::size_t count() const { return places.size(); }

    std::size_t countOf(const QByteArray &peer) const
    {
        const auto found = peers.find(peer);
        return found == peers.end() ? 0 : found->second.open;
    }

    /// The one that has been idle for longest, of all or of one peer; null where none is idle.
    Connection *longestIdle() const { return first(all); }
    Connection *longestIdleOf(const QByteArray &peer) const
    {
        const auto found = peers.find(peer);
        return found == peers.end() ? nullptr : first(found->second.idle);
    }

private:
    using Idle = std::map<std::uint64_t, Connection *>; ///< in the order in which they became idle
    struct Place {
        QByteArray peer;
        std::uint64_t idleNumber; ///< 0 while it is busy
    };
    struct Peer {
        std::size_t open = 0;
        Idle idle;
    };

    static Connection *first(const Idle &idle) { return idle.empty() ? nullptr : idle.begin()->second; }

    std::map<Connection *, Place> places;
    std::map<QByteArray, Peer> peers;
    Idle all;
    std::uint64_t last = 0;
};

} // namespace tideloft::service
