// One connection of a client: its requests, one after the other.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/connection_context.h"
#include "service/http/translation.h"
#include "service/http/watchdog.h"

#include <boost/asio/awaitable.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>

#include <memory>
#include <variant>

namespace tideloft::service
{

class Connection
{
public:
    /// If there is a context TLS the client has to speak TLS, else plain HTTP. FROM says who is at its other
    /// end.
    Connection(boost::asio::ip::tcp::socket socket, ConnectionContext &server, boost::asio::ssl::context *tls,
               const RequestOrigin &from);
    Q_DISABLE_COPY_MOVE(Connection)
    ~Connection();

    /// Ends when the connection does. The connection must live as long.
    boost::asio::awaitable<void> serve();

    /// In place of serve(): says that there is no room for the connection, where the client speaks plain
    /// HTTP.
    boost::asio::awaitable<void> turnAway();

    /// Ends the connection now if it only waits, otherwise after the reply that is under way.
    void finish();

    /// Ends a connection that only waits, to make room for another one.
    void makeRoom()
    {
        lost = true;
        finish();
    }

private:
    using PlainStream = boost::asio::ip::tcp::socket;
    struct Memory {
        MemoryBudget<QByteArray>::Share ofAddress; ///< while it is little
        ByteBudget::Share ofAccount;
    };
    using TlsStream = boost::asio::ssl::stream<boost::asio::ip::tcp::socket>;

    template <typename Stream> boost::asio::awaitable<void> serveOn(Stream &stream);
    template <typename Stream, typename Buffer>
    boost::asio::awaitable<bool> exchange(Stream &stream, Buffer &buffer);
    template <typename Stream, typename Buffer>
    boost::asio::awaitable<bool> waitForRequest(Stream &stream, Buffer &buffer);
    template <typename Stream, typename Buffer, typename Parser>
    boost::asio::awaitable<std::optional<Refusal>> readRequest(Stream &stream, Buffer &buffer,
                                                               Parser &parser);
    template <typename Stream, typename Buffer, typename Parser>
    boost::asio::awaitable<boost::system::error_code> readBody(Stream &stream, Buffer &buffer,
                                                               Parser &parser);
    template <typename Parser> boost::asio::awaitable<std::optional<Refusal>> admitBody(Parser &parser);
    template <typename Parser> boost::asio::awaitable<void> askForAdmission(const Parser &parser);
    template <typename Parser>
    boost::asio::awaitable<bool> setAside(const Parser &parser, std::uint64_t size);
    template <typename Stream, typename Parser>
    boost::asio::awaitable<void> invite(Stream &stream, const Parser &parser);
    template <typename Stream, typename Parser>
    boost::asio::awaitable<bool> write(Stream &stream, const Parser &parser, const Response &response,
                                       bool keepAlive);
    template <typename Stream> boost::asio::awaitable<void> close(Stream &stream);
    boost::asio::ip::tcp::socket &socket();

    ConnectionContext &context;
    const RequestOrigin origin;
    std::variant<PlainStream, TlsStream> transport;
    std::shared_ptr<Watchdog> watchdog;
    std::optional<Admission> admission; ///< of the current request, once it was needed
    Memory memory;                      ///< of its body, and then of its reply
    bool answering = false;
    bool lost = false; ///< the client has gone, so that no reply reaches it
};

} // namespace tideloft::service
