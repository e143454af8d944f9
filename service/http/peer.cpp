// Addresses as keys.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/peer.h"

#include <algorithm>

namespace tideloft::service
{

namespace ip = boost::asio::ip;

namespace
{

// A socket that listens on every address sees IPv4 addresses as IPv6 ones.
ip::address unmapped(const ip::address &address)
{
    if (address.is_v6() && address.to_v6().is_v4_mapped())
        return ip::make_address_v4(ip::v4_mapped, address.to_v6());
    return address;
}

} // namespace

TrustedProxies::TrustedProxies(const QStringList &addresses)
{
    for (const QString &address : addresses)
        trusted.push_back(unmapped(ip::make_address(address.toStdString())));
}

bool TrustedProxies::contains(const ip::address &address) const
{
    return std::find(trusted.begin(), trusted.end(), unmapped(address)) != trusted.end();
}

QByteArray peerOf(const ip::address &anyAddress)
{
    const ip::address address = unmapped(anyAddress);
    if (address.is_v4())
        return QByteArray::fromStdString(address.to_string());
    ip::address_v6::bytes_type bytes = address.to_v6().to_bytes();
    std::fill(bytes.begin() + 8, bytes.end(), static_cast<unsigned char>(0));
    return QByteArray::fromStdString(ip::address_v6(bytes).to_string()) + "/64";
}

// What stands before the last entry was sent by the client, and may be anything.
QByteArray forwardedPeer(const QByteArray &forwardedFor, const QByteArray &proxy)
{
    boost::system::error_code error;
    const QByteArray last = forwardedFor.mid(forwardedFor.lastIndexOf(',') + 1).trimmed();
    const ip::address address = ip::make_address(last.toStdString(), error);
    return error ? proxy : peerOf(address);
}

} // namespace tideloft::service
