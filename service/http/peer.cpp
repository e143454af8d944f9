// Addresses as keys.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/peer.h"

#include <algorithm>

namespace tideloft::service
{

namespace ip = boost::asio::ip;

QByteArray peerOf(const ip::address &address)
{
    if (address.is_v4())
        return QByteArray::fromStdString(address.to_string());
    const ip::address_v6 v6 = address.to_v6();
    if (v6.is_v4_mapped())
        return QByteArray::fromStdString(ip::make_address_v4(ip::v4_mapped, v6).to_string());
    ip::address_v6::bytes_type bytes = v6.to_bytes();
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
