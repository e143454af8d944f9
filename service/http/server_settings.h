// How a server listens, and what it allows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/access_log.h"
#include "service/http/byte_budget.h"
#include "service/http/exchange.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

namespace tideloft::service
{

struct ServerLimits {
    std::uint32_t headerBytes = 16 * 1024;
    std::uint64_t smallBodyBytes = 16ULL * 1024; ///< these three where ServerSettings::admit says so
    std::uint64_t bodyBytes = 1024ULL * 1024;
    std::uint64_t uploadBytes = (5ULL * 1024 + 64) * 1024;
    std::uint64_t uncountedBytes = 4096; ///< bodies and replies up to this always go on
    std::uint64_t countedByAddress = mostCountedByAddress;
    std::uint64_t smallTransferBytes = 32ULL * 1024 * 1024; ///< of those up to that at a time; others get 503
    std::uint64_t transferBytes = usualTransferBytes; ///< of all larger ones, which are counted by account
    std::uint64_t accountTransferBytes = usualAccountBytes; ///< of those of one account
    int unsentBytes = 256 * 1024; ///< of a connection that the system keeps; nobody counts these
    std::size_t connections = 10'000;
    std::size_t connectionsOfOnePeer = 200; ///< two for each client behind one address
    std::chrono::milliseconds headerTime{10'000};
    std::chrono::milliseconds bodyTime{15'000};       ///< for which a body or a reply may stand still
    std::uint64_t leastBytesPerSecond = 16ULL * 1024; ///< of a body or a reply, once that time is over
    std::chrono::milliseconds lingerTime{2'000};      ///< for reading what a refused client still sends
    std::chrono::milliseconds idleTime{65'000};       ///< between two requests
    std::chrono::milliseconds stopTime{3'000};        ///< for replies under way when the server is stopped
};

/// The budget that the limits describe.
std::shared_ptr<ByteBudget> transferBudget(const ServerLimits &limits);

/// A refusal as a line of text.
Response plainRefusal(const Refusal &refusal);

struct ServerSettings {
    QString address = QStringLiteral("127.0.0.1"); ///< a numeric address
    std::uint16_t port = 8443;                     ///< 0 = any free port
    QString certificateFile;                       ///< PEM, the chain; empty = plain HTTP
    QString keyFile;                               ///< PEM
    QStringList trustedProxies;                    ///< numeric addresses, whose X-Forwarded-For is believed
    bool proxyProtocol = false; ///< these begin each connection with a header, which is believed instead
    ServerLimits limits;
    /// What large bodies and replies may hold together; made from the limits when there is none.
    std::shared_ptr<ByteBudget> transfers;
    /// Asked with everything but the body, before a large body is read or a large reply sent. Must not throw.
    std::function<Admitted(const Request &head)> admit = [](const Request &) { return Admission(); };
    /// How a refusal is written: it is the same for what the server refuses and what the handler does.
    std::function<Response(const Refusal &refusal)> refuse = &plainRefusal;
    /// Told of every request that was answered, from the whole request to the reply.
    std::function<void(const QByteArray &method, const Response &response, std::chrono::nanoseconds duration)>
        answered = [](const QByteArray &, const Response &, std::chrono::nanoseconds) {};
    /// REQUEST counts the requests since the start; 0 where a line belongs to none.
    std::function<void(LogLevel level, std::uint64_t request, const QByteArray &line)> log =
        [](LogLevel, std::uint64_t, const QByteArray &) {};
};

} // namespace tideloft::service
