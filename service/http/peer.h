// Who is at the other end of a connection, as far as limits go.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <boost/asio/ip/address.hpp>

#include <QStringList>

#include <vector>

namespace tideloft::service
{

/// Proxies that may say for whom they come.
class TrustedProxies
{
public:
    /// ADDRESSES are numeric. Throws std::exception when one is not.
    explicit TrustedProxies(const QStringList &addresses);

    /// An IPv4 address is the same when it is written as an IPv6 one.
    bool contains(const boost::asio::ip::address &address) const;

private:
    std::vector<boost::asio::ip::address> trusted;
};

/// What one person can be expected to have: an IPv4 address, or the first 64 bits of an IPv6 address
/// (RFC 6177).
QByteArray peerOf(const boost::asio::ip::address &address);

/// The peer that a proxy names last in X-Forwarded-For; that of the proxy itself when it names none.
QByteArray forwardedPeer(const QByteArray &forwardedFor, const QByteArray &proxy);

} // namespace tideloft::service
