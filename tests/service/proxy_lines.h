// What a proxy says first on a connection, as bytes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace tideloft::tests
{

/// The addresses and ports in a block for IPv4: from 192.0.2.7 to 10.0.0.1.
inline const QByteArray proxiedIpv4 = QByteArray::fromHex("c0000207 0a000001 0fa0 01bb");

/// The second version. COMMAND holds the version too, FAMILY the transport; REST is behind the length.
inline QByteArray proxyBlock(int command, int family, const QByteArray &rest)
{
    const auto size = static_cast<unsigned>(rest.size());
    QByteArray block("\r\n\r\n\0\r\nQUIT\n", 12);
    block += static_cast<char>(command);
    block += static_cast<char>(family);
    block += static_cast<char>(size >> 8);
    block += static_cast<char>(size & 0xff);
    return block + rest;
}

/// The first version, for an IPv4 address.
inline QByteArray proxyLine(const QByteArray &client)
{
    return "PROXY TCP4 " + client + " 127.0.0.1 4000 443\r\n";
}

} // namespace tideloft::tests
