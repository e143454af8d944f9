// Connections of proxies from which nothing has come yet but, maybe, for whom they are.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/watchdog.h"

#include <boost/asio/awaitable.hpp>
#include <boost/asio/ip/tcp.hpp>

#include <QtGlobal>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <set>

namespace tideloft::service
{

/// Reads the header of the PROXY protocol from each connection, and nothing behind it. Belongs to the thread
/// of the event loop.
class ProxyGreetings
{
public:
    using Socket = boost::asio::ip::tcp::socket;
    /// CLIENT is nobody where the proxy speaks for itself.
    using Greeted = std::function<void(Socket socket, const std::optional<boost::asio::ip::address> &client)>;

    /// A header may take this long. A connection that begins otherwise is closed, and then REFUSED is called.
    /// Both functions must not throw.
    ProxyGreetings(std::chrono::milliseconds timeout, Greeted whenGreeted, std::function<void()> whenRefused);
    Q_DISABLE_COPY_MOVE(ProxyGreetings)
    ~ProxyGreetings();

    void await(Socket socket);

    /// How many are waited for.
    std::size_t count() const { return waiting.size(); }

    /// Closes them.
    void giveUp();

private:
    boost::asio::awaitable<void> greet(Socket socket);

    const std::chrono::milliseconds time;
    const Greeted greeted;
    const std::function<void()> refused;
    std::set<std::shared_ptr<Watchdog>> waiting;
};

} // namespace tideloft::service
