// HTTP/1.1 on one connection.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/connection.h"

#include "service/http/transfer_deadline.h"
#include "service/system/process.h"

#include <boost/asio/redirect_error.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http.hpp>

#include <algorithm>
#include <utility>

namespace tideloft::service
{

namespace asio = boost::asio;
namespace http = boost::beast::http;
using namespace Qt::StringLiterals;
using asio::ip::tcp;
using boost::system::error_code;

namespace
{

auto into(error_code &error)
{
    return asio::redirect_error(asio::use_awaitable, error);
}

} // namespace

Connection::Connection(tcp::socket socket, ConnectionContext &server, asio::ssl::context *tls,
                       const RequestOrigin &from)
    : context(server),
      origin{tls != nullptr, from.peer, from.forwarded},
      transport(std::move(socket))
{
    if (tls) {
        tcp::socket plain = std::move(std::get<PlainStream>(transport));
        transport.emplace<TlsStream>(std::move(plain), *tls);
    }
    watchdog = std::make_shared<Watchdog>(this->socket());
}

Connection::~Connection()
{
    watchdog->release();
}

tcp::socket &Connection::socket()
{
    auto *secure = std::get_if<TlsStream>(&transport);
    return secure ? secure->next_layer() : std::get<PlainStream>(transport);
}

void Connection::finish()
{
    if (!answering)
        watchdog->interrupt();
}

asio::awaitable<void> Connection::serve()
{
    error_code error;
    socket().set_option(tcp::no_delay(true), error);
    keepLittleUnsent(socket().native_handle(), context.limits.unsentBytes);
    watchdog->allow(context.limits.headerTime); // for the handshake and the first header together
    if (auto *secure = std::get_if<TlsStream>(&transport)) {
        co_await secure->async_handshake(TlsStream::server, into(error));
        if (!error)
            co_await serveOn(*secure);
    } else {
        co_await serveOn(std::get<PlainStream>(transport));
    }
    socket().close(error);
}

asio::awaitable<void> Connection::turnAway()
{
    error_code error;
    auto *stream = std::get_if<PlainStream>(&transport);
    if (stream) {
        const bool written = co_await write(*stream, RequestParser(), context.refuse(tooBusy()), false);
        if (written)
            co_await close(*stream);
    }
    socket().close(error);
}

template <typename Stream> asio::awaitable<void> Connection::serveOn(Stream &stream)
{
    boost::beast::flat_buffer buffer;
    bool goesOn = !context.stopping;
    while (goesOn) {
        goesOn = co_await exchange(stream, buffer);
        answering = false;
        if (goesOn && !context.stopping)
            goesOn = co_await waitForRequest(stream, buffer);
        goesOn = goesOn && !context.stopping;
    }
    if (!lost)
        co_await close(stream);
}

// Idle time counts until the first byte; from then on the header has the time of a header.
template <typename Stream, typename Buffer>
asio::awaitable<bool> Connection::waitForRequest(Stream &stream, Buffer &buffer)
{
    error_code error;
    if (buffer.size() == 0) {
        watchdog->allow(context.limits.idleTime);
        context.idleChanged(*this, true);
        const std::size_t size = co_await stream.async_read_some(buffer.prepare(4096), into(error));
        context.idleChanged(*this, false);
        buffer.commit(size);
    }
    watchdog->allow(context.limits.headerTime);
    co_return !error;
}

template <typename Stream, typename Buffer>
asio::awaitable<bool> Connection::exchange(Stream &stream, Buffer &buffer)
{
    RequestParser parser;
    parser.header_limit(context.limits.headerBytes);
    parser.body_limit(largestBody(context.limits)); // until it is known who sends it
    admission.reset();
    // g++ 12 frees temporaries twice when co_await stands inside a larger expression, so each stands alone.
    const std::optional<Refusal> refusal = co_await readRequest(stream, buffer, parser);
    if (lost)
        co_return false;
    answering = true;
    const auto begin = std::chrono::steady_clock::now();
    QByteArray body = takeBody(parser);
    Response response;
    if (refusal) {
        response = context.refuse(*refusal);
    } else {
        Request request = headOf(parser, origin);
        request.body = std::move(body);
        response = co_await context.answer(std::move(request), origin.forwarded);
    }
    body = {};
    memory = {}; // nothing of the request is left
    bool hasMemory = bool(response.memory);
    if (!hasMemory)
        hasMemory = co_await setAside(parser, static_cast<std::uint64_t>(response.body.size()));
    if (!hasMemory) {
        const QByteArray route = std::move(response.route);
        response = context.refuse(tooBusy());
        response.route = route;
    }
    const QByteArray method = toBytes(parser.get().method_string());
    context.answered(method, response, std::chrono::steady_clock::now() - begin);
    context.log(logLevel(response), ++context.requests, logLine(method, response));
    const bool keepAlive = !refusal && parser.keep_alive() && !context.stopping;
    const bool written = co_await write(stream, parser, response, keepAlive);
    memory = {};
    co_return written &&keepAlive;
}

// Finding the account may take a look into the database, so it is asked for only where it matters.
template <typename Parser> asio::awaitable<void> Connection::askForAdmission(const Parser &parser)
{
    if (!admission)
        admission = co_await context.admit(headOf(parser, origin));
}

// False when there is no memory left for this much.
template <typename Parser>
asio::awaitable<bool> Connection::setAside(const Parser &parser, std::uint64_t size)
{
    if (size <= context.limits.uncountedBytes)
        co_return true;
    if (size <= context.limits.countedByAddress) {
        if (!memory.ofAddress)
            memory.ofAddress = context.smallTransfers.take(peerOf(parser, origin), 0);
        co_return memory.ofAddress.grow(size);
    }
    memory.ofAddress = {};
    if (memory.ofAccount)
        co_return memory.ofAccount.grow(size);
    co_await askForAdmission(parser);
    memory.ofAccount = context.transfers->take(admission->account, size);
    co_return bool(memory.ofAccount);
}

// The library compares a declared length with the limit that holds while the header is read, and never again.
template <typename Parser> asio::awaitable<std::optional<Refusal>> Connection::admitBody(Parser &parser)
{
    const auto &limits = context.limits;
    const std::uint64_t size = expectedSize(parser, largestBody(limits));
    if (size <= std::min(smallestLimit(limits), limits.countedByAddress))
        co_return std::nullopt;
    co_await askForAdmission(parser);
    const std::uint64_t limit = bodyLimit(admission->bodySize, limits);
    parser.body_limit(limit);
    if (!parser.chunked() && size > limit)
        co_return admission->whenTooLarge.value_or(tooLarge());
    co_return std::nullopt;
}

// Memory is taken for what has come, not for what was declared, and time is given for what comes.
template <typename Stream, typename Buffer, typename Parser>
asio::awaitable<error_code> Connection::readBody(Stream &stream, Buffer &buffer, Parser &parser)
{
    error_code error;
    TransferDeadline deadline(context.limits, *watchdog);
    while (!error && !parser.is_done()) {
        co_await http::async_read_some(stream, buffer, parser, into(error));
        const std::uint64_t size = parser.get().body().size();
        deadline.move(size);
        const bool hasMemory = co_await setAside(parser, size);
        if (!hasMemory)
            error = asio::error::no_memory;
    }
    co_return error;
}

template <typename Stream, typename Buffer, typename Parser>
asio::awaitable<std::optional<Refusal>> Connection::readRequest(Stream &stream, Buffer &buffer,
                                                                Parser &parser)
{
    error_code error;
    const std::size_t size = co_await http::async_read_header(stream, buffer, parser, into(error));
    if (!error && size > context.limits.headerBytes) // the library does not count the first line
        error = http::error::header_limit;
    if (!error) {
        if (std::optional<Refusal> failure = headerFailure(parser))
            co_return failure;
        std::optional<Refusal> refused = co_await admitBody(parser);
        if (refused)
            co_return refused;
    }
    if (!error) {
        co_await invite(stream, parser);
        error = co_await readBody(stream, buffer, parser);
    }
    if (!error)
        co_return std::nullopt;
    if (error == asio::error::no_memory)
        co_return tooBusy();
    const bool tookTooLong = watchdog->hasExpired();
    lost = context.stopping || (isLost(error) && !tookTooLong);
    co_return parseFailure(error, tookTooLong);
}

// A client may ask whether its body is welcome before it sends the body. Without this answer it would wait.
template <typename Stream, typename Parser>
asio::awaitable<void> Connection::invite(Stream &stream, const Parser &parser)
{
    constexpr boost::beast::string_view welcome = "HTTP/1.1 100 Continue\r\n\r\n";
    error_code ignored; // shows again when the body is read
    if (parser.get().count(http::field::expect) > 0 && parser.get().version() == 11 && !parser.is_done())
        co_await asio::async_write(stream, asio::buffer(welcome.data(), welcome.size()), into(ignored));
}

template <typename Stream, typename Parser>
asio::awaitable<bool> Connection::write(Stream &stream, const Parser &parser, const Response &response,
                                        bool keepAlive)
{
    auto message = toMessage(response, parser.get().version() == 10 ? 10 : 11, keepAlive);
    if (parser.get().method() == http::verb::head)
        message.body() = {}; // the length stays, the body must not follow
    ReplySerializer serializer(message);
    error_code error;
    std::uint64_t passed = 0;
    TransferDeadline deadline(context.limits, *watchdog);
    while (!error && !serializer.is_done()) {
        passed += co_await http::async_write_some(stream, serializer, into(error));
        deadline.move(passed);
    }
    lost = lost || bool(error);
    co_return !error;
}

// Closing with unread bytes would reset the connection and take the reply from the client, so what still
// comes is read for a moment and thrown away.
template <typename Stream> asio::awaitable<void> Connection::close(Stream &stream)
{
    error_code error;
    watchdog->allow(context.limits.lingerTime);
    if constexpr (std::is_same_v<Stream, TlsStream>)
        co_await stream.async_shutdown(into(error));
    socket().shutdown(tcp::socket::shutdown_send, error);
    std::array<char, 4096> rest{};
    while (!error && !watchdog->hasExpired())
        co_await socket().async_read_some(asio::buffer(rest), into(error));
}

} // namespace tideloft::service
