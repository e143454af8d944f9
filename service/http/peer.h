// Who is at the other end of a connection, as far as limits go.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <boost/asio/ip/address.hpp>

namespace tideloft::service
{

/// What one person can be expected to have: an IPv4 address, or the first 64 bits of an IPv6 address
/// (RFC 6177).
QByteArray peerOf(const boost::asio::ip::address &address);

/// The peer that a proxy names last in X-Forwarded-For; that of the proxy itself when it names none.
QByteArray forwardedPeer(const QByteArray &forwardedFor, const QByteArray &proxy);

} // namespace tideloft::service
