// The header of the PROXY protocol, by which a proxy says for whom it connects, in both versions.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <boost/asio/ip/address.hpp>

#include <cstddef>
#include <optional>
#include <string_view>

namespace tideloft::service
{

/// The longest header that is read. Proxies keep theirs far below it.
inline constexpr std::size_t longestProxyHeader = 2048;

struct ProxyHeader {
    enum class State { Incomplete, Complete, Invalid };

    State state = State::Invalid;
    std::size_t size = 0;    ///< of a complete header
    std::size_t missing = 0; ///< an incomplete header has at least so many bytes more
    /// Whom a complete header names; nobody where the proxy speaks for itself, or does not know.
    std::optional<boost::asio::ip::address> client = {};
};

/// BYTES are the first of a connection. Whoever reads no more of the connection than is missing leaves what
/// comes after the header where it is.
ProxyHeader parseProxyHeader(std::string_view bytes);

} // namespace tideloft::service
