// HTTP/1.1 on one connection. The only file that knows the HTTP library.
#include "service/http_connection.h"

#include "service/log_line.h"

#include <boost/asio/redirect_error.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http.hpp>

#include <algorithm>

namespace tideloft::service
{

namespace asio = boost::asio;
namespace http = boost::beast::http;
using namespace Qt::StringLiterals;
using asio::ip::tcp;
using boost::system::error_code;
using RequestParser = http::request_parser<http::string_body>;

namespace
{

auto into(error_code &error)
{
    return asio::redirect_error(asio::use_awaitable, error);
}

QByteArray toBytes(boost::beast::string_view text)
{
    return {text.data(), static_cast<qsizetype>(text.size())};
}

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

Request toRequest(const RequestParser &parser, bool secure)
{
    const auto &message = parser.get();
    Request request;
    request.method = toBytes(message.method_string());
    request.target = toBytes(message.target());
    request.contentType = toBytes(message[http::field::content_type]);
    request.cookie = toBytes(message[http::field::cookie]);
    request.fromForeignPage = isForeignPage(parser, secure);
    request.body = QByteArray::fromStdString(message.body());
    return request;
}

Response badRequest()
{
    return errorResponse(400, u"This is not a valid HTTP request."_s);
}

Response parseFailure(const error_code &error, bool tookTooLong)
{
    if (tookTooLong)
        return errorResponse(408, u"The request took too long to arrive."_s);
    if (error == http::error::header_limit)
        return errorResponse(431, u"The header of the request is too large."_s);
    if (error == http::error::body_limit)
        return errorResponse(413, u"The request is too large."_s);
    return badRequest();
}

bool isLost(const error_code &error)
{
    return error == http::error::end_of_stream || error.category() != http::make_error_code({}).category();
}

// What the library lets through although this service cannot serve it.
std::optional<Response> headerFailure(const RequestParser &parser)
{
    const auto &header = parser.get();
    const bool knownVersion = header.version() == 11 || header.version() == 10;
    const auto hosts = header.count(http::field::host);
    if (!knownVersion || hosts > 1 || (hosts == 0 && header.version() == 11)
        || !header.target().starts_with('/'))
        return badRequest();
    if (header.count(http::field::transfer_encoding) > 0 && !parser.chunked())
        return errorResponse(501, u"This transfer encoding is not supported."_s);
    if (header.count(http::field::expect) > 0
        && !boost::beast::iequals(header[http::field::expect], "100-continue"))
        return errorResponse(417, u"This expectation cannot be met."_s);
    return std::nullopt;
}

// The library compares a declared length with the limit that holds while the header is read, and never again.
error_code limitBody(RequestParser &parser, std::uint64_t limit)
{
    parser.body_limit(limit);
    const auto length = parser.content_length();
    return length && *length > limit ? http::make_error_code(http::error::body_limit) : error_code();
}

http::response<http::string_body> toMessage(const Response &response, unsigned version, bool keepAlive)
{
    http::response<http::string_body> message(static_cast<http::status>(response.status), version);
    message.set(http::field::content_type, response.contentType.toStdString());
    message.set("X-Content-Type-Options", "nosniff");
    for (const auto &[name, value] : response.headers)
        message.insert(name.toStdString(), value.toStdString());
    if (message.count(http::field::cache_control) == 0)
        message.set(http::field::cache_control, "no-store");
    message.body() = response.body.toStdString();
    message.keep_alive(keepAlive);
    message.prepare_payload();
    return message;
}

} // namespace

Connection::Connection(tcp::socket socket, ConnectionContext &server, asio::ssl::context *tls)
    : context(server),
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
        const std::size_t size = co_await stream.async_read_some(buffer.prepare(4096), into(error));
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
    parser.body_limit(std::max(context.limits.bodyBytes, context.limits.uploadBytes));
    // g++ 12 frees temporaries twice when co_await stands inside a larger expression, so each stands alone.
    std::optional<Response> response = co_await readRequest(stream, buffer, parser);
    if (lost)
        co_return false;
    const bool refused = response.has_value();
    answering = true;
    if (!refused) {
        Request request = toRequest(parser, isSecure());
        response = co_await context.answer(std::move(request));
    }
    context.log(logLine(toBytes(parser.get().method_string()), *response));
    const bool keepAlive = !refused && parser.keep_alive() && !context.stopping;
    const bool written = co_await write(stream, parser, *response, keepAlive);
    co_return written &&keepAlive;
}

template <typename Stream, typename Buffer, typename Parser>
asio::awaitable<std::optional<Response>> Connection::readRequest(Stream &stream, Buffer &buffer,
                                                                 Parser &parser)
{
    error_code error;
    const std::size_t size = co_await http::async_read_header(stream, buffer, parser, into(error));
    if (!error && size > context.limits.headerBytes) // the library does not count the first line
        error = http::error::header_limit;
    if (!error) {
        if (std::optional<Response> failure = headerFailure(parser))
            co_return failure;
        const bool upload = context.allowsUpload(toRequest(parser, isSecure()));
        error = limitBody(parser, upload ? context.limits.uploadBytes : context.limits.bodyBytes);
    }
    if (!error) {
        watchdog->allow(context.limits.bodyTime);
        co_await invite(stream, parser);
        co_await http::async_read(stream, buffer, parser, into(error));
    }
    if (!error)
        co_return std::nullopt;
    const bool tookTooLong = watchdog->hasExpired();
    lost = context.stopping || (isLost(error) && !tookTooLong);
    co_return parseFailure(error, tookTooLong);
}

// A client that asks first whether its body is welcome is told so; without that it would wait.
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
        message.body().clear(); // the length stays, the body must not follow
    error_code error;
    watchdog->allow(context.limits.bodyTime);
    co_await http::async_write(stream, message, into(error));
    lost = lost || bool(error);
    co_return !error;
}

// Closing with unread bytes would reset the connection and take the reply from the client, so what still
// comes is read for a moment and thrown away.
template <typename Stream> asio::awaitable<void> Connection::close(Stream &stream)
{
    error_code error;
    watchdog->allow(context.limits.stopTime);
    if constexpr (std::is_same_v<Stream, TlsStream>)
        co_await stream.async_shutdown(into(error));
    socket().shutdown(tcp::socket::shutdown_send, error);
    std::array<char, 4096> rest{};
    while (!error && !watchdog->hasExpired())
        co_await socket().async_read_some(asio::buffer(rest), into(error));
}

} // namespace tideloft::service
