// What all connections of a server share.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/byte_budget.h"
#include "service/http/server_settings.h"

#include <boost/asio/awaitable.hpp>

#include <functional>
#include <memory>

namespace tideloft::service
{

class Connection;

/// What a connection needs of the server; outlives every connection.
struct ConnectionContext {
    ConnectionContext(const ServerLimits &wanted, std::shared_ptr<ByteBudget> budget)
        : limits(wanted),
          transfers(std::move(budget))
    {
    }

    const ServerLimits limits;
    const std::shared_ptr<ByteBudget> transfers;
    MemoryBudget<QByteArray> smallTransfers{limits.smallTransferBytes,
                                            limits.smallTransferBytes}; ///< by address
    std::function<void(LogLevel level, std::uint64_t request, const QByteArray &line)> log;
    std::uint64_t requests = 0; ///< since the start
    std::function<void(const QByteArray &method, const Response &response, std::chrono::nanoseconds duration)>
        answered;
    std::function<Response(const Refusal &refusal)> refuse;
    std::function<boost::asio::awaitable<Admission>(Request head)> admit;
    std::function<boost::asio::awaitable<Response>(Request request, bool forwarded)> answer;
    std::function<void(Connection &connection, bool idle)> idleChanged;
    bool stopping = false;
};

} // namespace tideloft::service
