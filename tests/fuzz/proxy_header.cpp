// Fuzzing of what a proxy says first on a connection: bounds, and that reading byte by byte never goes too
// far.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/proxy_header.h"
#include "service/http/peer.h"
#include "tests/fuzz/require.h"

#include <algorithm>
#include <cstdint>

using namespace tideloft::service;
using namespace tideloft::tests;
using State = ProxyHeader::State;

namespace
{

// As a connection does: what is missing is read, and then looked at again.
ProxyHeader readInSteps(std::string_view bytes)
{
    std::size_t size = 0;
    ProxyHeader header = parseProxyHeader({});
    while (header.state == State::Incomplete && size + header.missing <= bytes.size()) {
        require(header.missing > 0, "every step reads something");
        size += header.missing;
        require(size <= longestProxyHeader, "no more is read than the longest header has");
        header = parseProxyHeader(bytes.substr(0, size));
    }
    if (header.state == State::Complete)
        require(header.size == size, "nothing is read beyond the header");
    return header;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    const ProxyHeader whole = parseProxyHeader(bytes);
    const ProxyHeader stepwise = readInSteps(bytes);
    // Who waits for more than there is has not looked at the last bytes.
    const bool waits = stepwise.state == State::Incomplete;
    require(waits ? whole.state != State::Complete : whole.state == stepwise.state,
            "reading in steps comes to the same");
    require(whole.client == stepwise.client && whole.size == stepwise.size, "with the same client");
    require(whole.state == State::Complete || !whole.client, "nobody is named without a whole header");
    if (whole.state == State::Incomplete)
        require(size + whole.missing <= longestProxyHeader, "what is waited for has a bound");
    if (whole.client)
        require(!peerOf(*whole.client).isEmpty(), "who is named can be counted");
    return 0;
}
