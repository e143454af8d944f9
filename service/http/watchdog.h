// Ends what takes too long on a connection.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>

#include <chrono>
#include <memory>

namespace tideloft::service
{

/// Cancels what a socket waits for when the time allowed for it is over. The timer may outlive the connection
/// by one turn of the event loop, so it is shared with the loop, and release() is called before the socket
/// goes.
class Watchdog : public std::enable_shared_from_this<Watchdog>
{
public:
    explicit Watchdog(boost::asio::ip::tcp::socket &watched) : socket(watched), timer(watched.get_executor())
    {
    }

    /// Begins a new step, which may take this long.
    void allow(std::chrono::milliseconds time) { allowUntil(std::chrono::steady_clock::now() + time); }

    void allowUntil(std::chrono::steady_clock::time_point end)
    {
        expired = false;
        timer.expires_at(end);
        timer.async_wait([self = shared_from_this()](boost::system::error_code error) {
            // A call that was on its way already when a new step began is not meant for that step.
            if (!error && self->alive && self->timer.expiry() <= std::chrono::steady_clock::now())
                self->interrupt();
        });
    }

    void interrupt()
    {
        expired = true;
        boost::system::error_code ignored;
        socket.cancel(ignored);
    }

    void release()
    {
        alive = false;
        boost::system::error_code ignored; // a connection that goes must not throw
        timer.cancel(ignored);
    }

    /// True when the current step was interrupted.
    bool hasExpired() const { return expired; }

private:
    boost::asio::ip::tcp::socket &socket;
    boost::asio::steady_timer timer;
    bool expired = false;
    bool alive = true;
};

} // namespace tideloft::service
