// Reading of the headers, each within its time.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/proxy_greetings.h"

#include "service/http/proxy_header.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/use_awaitable.hpp>

#include <string>
#include <utility>

namespace tideloft::service
{

namespace asio = boost::asio;
using boost::system::error_code;

namespace
{

// Incomplete where the connection ends before its header does. What is behind the header may belong to TLS,
// so never more is read than is missing.
asio::awaitable<ProxyHeader> readHeader(asio::ip::tcp::socket &socket)
{
    std::string bytes;
    ProxyHeader header = parseProxyHeader(bytes);
    error_code error;
    while (!error && header.state == ProxyHeader::State::Incomplete) {
        const std::size_t size = bytes.size();
        bytes.resize(size + header.missing);
        co_await asio::async_read(socket, asio::buffer(&bytes[size], header.missing),
                                  asio::redirect_error(asio::use_awaitable, error));
        if (!error)
            header = parseProxyHeader(bytes);
    }
    co_return header;
}

} // namespace

ProxyGreetings::ProxyGreetings(std::chrono::milliseconds timeout, Greeted whenGreeted,
                               std::function<void()> whenRefused)
    : time(timeout),
      greeted(std::move(whenGreeted)),
      refused(std::move(whenRefused))
{
}

ProxyGreetings::~ProxyGreetings() = default;

void ProxyGreetings::await(Socket socket)
{
    const asio::any_io_executor executor = socket.get_executor();
    co_spawn(executor, greet(std::move(socket)), asio::detached);
}

void ProxyGreetings::giveUp()
{
    for (const std::shared_ptr<Watchdog> &watchdog : waiting)
        watchdog->interrupt();
}

asio::awaitable<void> ProxyGreetings::greet(Socket socket)
{
    const auto watchdog = std::make_shared<Watchdog>(socket);
    waiting.insert(watchdog);
    watchdog->allow(time);
    const ProxyHeader header = co_await readHeader(socket);
    const bool inTime = !watchdog->hasExpired();
    watchdog->release();
    waiting.erase(watchdog);
    if (header.state == ProxyHeader::State::Complete && inTime)
        greeted(std::move(socket), header.client);
    else if (header.state == ProxyHeader::State::Invalid)
        refused();
}

} // namespace tideloft::service
