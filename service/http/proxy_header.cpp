// Reading of the header, from which nothing may stray: what a proxy says here decides whom the limits count.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/proxy_header.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace tideloft::service
{

namespace ip = boost::asio::ip;

namespace
{

using State = ProxyHeader::State;

constexpr std::string_view textBegin = "PROXY ";
constexpr std::size_t shortestText = 15; // "PROXY UNKNOWN" and the end of the line
constexpr std::size_t longestText = 107;
constexpr std::string_view signature("\r\n\r\n\0\r\nQUIT\n", 12);
constexpr std::size_t fixedPart = 16; // of version 2: signature, command, family, length

ProxyHeader invalid()
{
    return {};
}

ProxyHeader incomplete(std::size_t missing)
{
    return {State::Incomplete, 0, missing};
}

ProxyHeader complete(std::size_t size, std::optional<ip::address> client = {})
{
    return {State::Complete, size, 0, std::move(client)};
}

bool agree(std::string_view bytes, std::string_view begin)
{
    const std::size_t size = std::min(bytes.size(), begin.size());
    return bytes.substr(0, size) == begin.substr(0, size);
}

unsigned byteAt(std::string_view bytes, std::size_t place)
{
    return static_cast<unsigned char>(bytes[place]);
}

unsigned numberAt(std::string_view bytes, std::size_t place)
{
    return byteAt(bytes, place) << 8 | byteAt(bytes, place + 1);
}

std::vector<std::string_view> fieldsOf(std::string_view line)
{
    std::vector<std::string_view> fields;
    for (std::size_t blank = line.find(' '); blank != line.npos; blank = line.find(' ')) {
        fields.push_back(line.substr(0, blank));
        line.remove_prefix(blank + 1);
    }
    fields.push_back(line);
    return fields;
}

bool isPort(std::string_view text)
{
    const bool isDecimal = std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (!isDecimal || text.empty() || text.size() > 5 || (text.size() > 1 && text[0] == '0'))
        return false;
    return std::stoi(std::string(text)) <= 65535;
}

// The library also takes the name of an interface behind an address, and whatever stands behind a zero byte.
std::optional<ip::address> addressOf(std::string_view family, std::string_view text)
{
    if (text.find_first_not_of("0123456789abcdefABCDEF:.") != text.npos)
        return std::nullopt;
    boost::system::error_code error;
    const ip::address address = family == "TCP4" ? ip::address(ip::make_address_v4(text, error))
                                                 : ip::address(ip::make_address_v6(text, error));
    return error ? std::nullopt : std::optional(address);
}

// LINE without its end.
ProxyHeader parseLine(std::string_view line, std::size_t size)
{
    const std::vector<std::string_view> fields = fieldsOf(line);
    const std::string_view family = fields[1];
    if (family == "UNKNOWN") // what follows has no meaning
        return complete(size);
    if ((family != "TCP4" && family != "TCP6") || fields.size() != 6)
        return invalid();
    const std::optional<ip::address> client = addressOf(family, fields[2]);
    if (!client || !addressOf(family, fields[3]) || !isPort(fields[4]) || !isPort(fields[5]))
        return invalid();
    return complete(size, client);
}

ProxyHeader parseText(std::string_view bytes)
{
    const std::string_view begin = bytes.substr(0, longestText);
    const std::size_t end = begin.find_first_of("\r\n");
    if (end == begin.npos || end + 1 == begin.size()) {
        const bool endBegins = end != begin.npos && begin[end] == '\r';
        if (begin.size() == longestText || (end != begin.npos && !endBegins))
            return invalid();
        const std::size_t least = endBegins ? 1 : 2;
        return incomplete(std::max(least, shortestText - std::min(shortestText, begin.size())));
    }
    if (begin.substr(end, 2) != "\r\n")
        return invalid();
    return parseLine(begin.substr(0, end), end + 2);
}

// Behind the addresses stand entries, each of a kind, a length and so many bytes. Nothing is made of them.
bool areEntries(std::string_view bytes)
{
    while (bytes.size() >= 3) {
        const std::size_t size = 3 + numberAt(bytes, 1);
        if (size > bytes.size())
            return false;
        bytes.remove_prefix(size);
    }
    return bytes.empty();
}

template <typename Address>
ProxyHeader withClient(std::string_view block, std::size_t addressesAndPorts, std::size_t size)
{
    if (block.size() < addressesAndPorts || !areEntries(block.substr(addressesAndPorts)))
        return invalid();
    typename Address::bytes_type bytes;
    std::copy_n(block.begin(), bytes.size(), bytes.begin());
    return complete(size, ip::address(Address(bytes)));
}

ProxyHeader parseBlock(unsigned family, std::string_view block, std::size_t size)
{
    switch (family) {
    case 0x00: // the proxy does not know
        return complete(size);
    case 0x11:
        return withClient<ip::address_v4>(block, 12, size);
    case 0x21:
        return withClient<ip::address_v6>(block, 36, size);
    default: // no client comes over datagrams or from a socket of the proxy's machine
        return invalid();
    }
}

ProxyHeader parseBinary(std::string_view bytes)
{
    if (bytes.size() < fixedPart)
        return incomplete(fixedPart - bytes.size());
    constexpr unsigned local = 0x20; // the proxy speaks for itself, and what follows has no meaning
    constexpr unsigned forwarded = 0x21;
    const unsigned command = byteAt(bytes, 12);
    const std::size_t size = fixedPart + numberAt(bytes, 14);
    if ((command != local && command != forwarded) || size > longestProxyHeader)
        return invalid();
    if (bytes.size() < size)
        return incomplete(size - bytes.size());
    if (command == local)
        return complete(size);
    return parseBlock(byteAt(bytes, 13), bytes.substr(fixedPart, size - fixedPart), size);
}

} // namespace

ProxyHeader parseProxyHeader(std::string_view bytes)
{
    if (bytes.empty())
        return incomplete(shortestText);
    if (agree(bytes, textBegin))
        return parseText(bytes);
    return agree(bytes, signature) ? parseBinary(bytes) : invalid();
}

} // namespace tideloft::service
