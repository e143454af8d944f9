// What requests and replies look like in the HTTP library.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/translation.h"

#include "service/http/peer.h"

#include <algorithm>
#include <utility>

namespace tideloft::service
{

namespace http = boost::beast::http;
using namespace Qt::StringLiterals;
using boost::system::error_code;

namespace
{

// Browsers alone send an Origin (RFC 6454, section 7.3), and pages cannot change it.
bool isForeignPage(const RequestParser &parser, bool secure)
{
    const auto &header = parser.get();
    const auto origins = header.count(http::field::origin);
    if (origins == 0)
        return false;
    const std::string own = (secure ? "https://" : "http://") + std::string(header[http::field::host]);
    return origins > 1 || !boost::beast::iequals(header[http::field::origin], own);
}

Refusal badRequest()
{
    return {400, u"This is not a valid HTTP request."_s};
}

// A reply without a body needs none of this, and every client gets dozens of those a minute.
void describeBody(ReplyMessage &message)
{
    message.set("X-Content-Type-Options", "nosniff");
    if (message.count(http::field::cache_control) == 0)
        message.set(http::field::cache_control, "no-store");
}

// Of several headers of that name the last is the proxy's: the others are what the client sent.
QByteArray lastForwardedFor(const RequestParser::value_type &message)
{
    const auto [begin, end] = message.equal_range("X-Forwarded-For");
    return begin == end ? QByteArray() : toBytes(std::prev(end)->value());
}

} // namespace

QByteArray toBytes(boost::beast::string_view text)
{
    return {text.data(), static_cast<qsizetype>(text.size())};
}

QByteArray peerOf(const RequestParser &parser, const RequestOrigin &origin)
{
    return origin.forwarded ? forwardedPeer(lastForwardedFor(parser.get()), origin.peer) : origin.peer;
}

Request headOf(const RequestParser &parser, const RequestOrigin &origin)
{
    const auto &message = parser.get();
    Request request;
    request.method = toBytes(message.method_string());
    request.target = toBytes(message.target());
    request.contentType = toBytes(message[http::field::content_type]);
    request.cookie = toBytes(message[http::field::cookie]);
    request.ifNoneMatch = toBytes(message[http::field::if_none_match]);
    request.fromForeignPage = isForeignPage(parser, origin.secure);
    request.peer = peerOf(parser, origin);
    return request;
}

QByteArray takeBody(RequestParser &parser)
{
    return QByteArray::fromStdString(std::exchange(parser.get().body(), {}));
}

Refusal tooLarge()
{
    return {413, u"The request is too large."_s};
}

Refusal parseFailure(const error_code &error, bool tookTooLong)
{
    if (tookTooLong)
        return {408, u"The request took too long to arrive."_s};
    if (error == http::error::header_limit)
        return {431, u"The header of the request is too large."_s};
    if (error == http::error::body_limit)
        return tooLarge();
    return badRequest();
}

bool isLost(const error_code &error)
{
    return error == http::error::end_of_stream || error.category() != http::make_error_code({}).category();
}

// What the library lets through although this service cannot serve it.
std::optional<Refusal> headerFailure(const RequestParser &parser)
{
    const auto &header = parser.get();
    const bool knownVersion = header.version() == 11 || header.version() == 10;
    const auto hosts = header.count(http::field::host);
    if (!knownVersion || hosts > 1 || (hosts == 0 && header.version() == 11)
        || !header.target().starts_with('/'))
        return badRequest();
    if (header.count(http::field::transfer_encoding) > 0 && !parser.chunked())
        return Refusal(501, u"This transfer encoding is not supported."_s);
    if (header.count(http::field::expect) > 0
        && !boost::beast::iequals(header[http::field::expect], "100-continue"))
        return Refusal(417, u"This expectation cannot be met."_s);
    return std::nullopt;
}

std::uint64_t expectedSize(const RequestParser &parser, std::uint64_t limit)
{
    if (parser.chunked())
        return limit;
    const auto length = parser.content_length();
    return length ? *length : 0;
}

std::uint64_t bodyLimit(BodySize size, const ServerLimits &limits)
{
    if (size == BodySize::Small)
        return limits.smallBodyBytes;
    return size == BodySize::Usual ? limits.bodyBytes : limits.uploadBytes;
}

ReplyMessage toMessage(const Response &response, unsigned version, bool keepAlive)
{
    ReplyMessage message(static_cast<http::status>(response.status), version);
    const bool hasBody = message.result() != http::status::not_modified;
    if (!response.contentType.isEmpty())
        message.set(http::field::content_type, response.contentType.toStdString());
    for (const auto &[name, value] : response.headers)
        message.insert(name.toStdString(), value.toStdString());
    if (hasBody)
        describeBody(message);
    message.body() = {response.body.constData(), static_cast<std::size_t>(response.body.size())};
    message.keep_alive(keepAlive);
    if (hasBody)
        message.prepare_payload();
    return message;
}

std::uint64_t largestBody(const ServerLimits &limits)
{
    return std::max({limits.smallBodyBytes, limits.bodyBytes, limits.uploadBytes});
}

std::uint64_t smallestLimit(const ServerLimits &limits)
{
    return std::min({limits.smallBodyBytes, limits.bodyBytes, limits.uploadBytes});
}

} // namespace tideloft::service
