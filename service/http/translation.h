// Between the messages of the HTTP library and those of the service. With connection.cpp, all that knows
// the library.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/server_settings.h"

#include <boost/beast/http.hpp>
#include <boost/beast/http/span_body.hpp>

#include <optional>

namespace tideloft::service
{

using RequestParser = boost::beast::http::request_parser<boost::beast::http::string_body>;
using ReplyMessage = boost::beast::http::response<boost::beast::http::span_body<const char>>;

using ReplySerializer = boost::beast::http::response_serializer<boost::beast::http::span_body<const char>>;

QByteArray toBytes(boost::beast::string_view text);

/// Where a request comes from, and how.
struct RequestOrigin {
    bool secure = false;    ///< over TLS
    QByteArray peer;        ///< whose connection it is
    bool forwarded = false; ///< by a proxy that may say for whom
};

/// Whose request it is, as far as limits go.
QByteArray peerOf(const RequestParser &parser, const RequestOrigin &origin);

/// Everything but the body.
Request headOf(const RequestParser &parser, const RequestOrigin &origin);

/// Leaves the parser with nothing, so that there is one copy.
QByteArray takeBody(RequestParser &parser);

/// What the library lets through although this service cannot serve it.
std::optional<Refusal> headerFailure(const RequestParser &parser);

/// What to say of a request that could not be read.
Refusal parseFailure(const boost::system::error_code &error, bool tookTooLong);
Refusal tooLarge();

/// True when the connection ended, rather than that something wrong was sent.
bool isLost(const boost::system::error_code &error);

/// The length that was announced. What is not announced may become as large as LIMIT.
std::uint64_t expectedSize(const RequestParser &parser, std::uint64_t limit);

std::uint64_t bodyLimit(BodySize size, const ServerLimits &limits);
std::uint64_t largestBody(const ServerLimits &limits);
std::uint64_t smallestLimit(const ServerLimits &limits);

/// The message looks at the body of the response, which has to live as long.
ReplyMessage toMessage(const Response &response, unsigned version, bool keepAlive);

} // namespace tideloft::service
