// Accepts connections, hands slow work to threads, and stops in order.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/server.h"

#include "service/http/connection.h"
#include "service/http/loop_mailbox.h"
#include "service/http/open_connections.h"
#include "service/http/peer.h"
#include "service/http/proxy_greetings.h"
#include "service/http/renewed_certificate.h"
#include "service/http/translation.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/use_awaitable.hpp>

#include <atomic>
#include <map>
#include <optional>
#include <set>

namespace tideloft::service
{

namespace asio = boost::asio;
using namespace Qt::StringLiterals;
using asio::ip::tcp;
using boost::system::error_code;

class HttpServer::Implementation
{
public:
    Implementation(const ServerSettings &settings, Handler answering);
    Q_DISABLE_COPY_MOVE(Implementation)
    ~Implementation() { mailbox->close(); }

    std::uint16_t port() const { return acceptor.local_endpoint().port(); }
    std::size_t connectionCount() const { return open; }
    QDateTime certificateEnd() const { return certificate.end(); }
    void run() { io.run(); }
    void stop()
    {
        asio::post(io, [this] { stopNow(); });
    }
    void stopOnSignals();

private:
    asio::awaitable<void> acceptAll();
    void take(tcp::socket socket, const RequestOrigin &origin);
    void takeGreeted(tcp::socket socket, const std::optional<asio::ip::address> &client);
    bool hasRoomFor(const RequestOrigin &origin);
    asio::awaitable<void> serve(std::shared_ptr<Connection> connection, bool hasRoom);
    asio::awaitable<Response> answer(Request request, bool fromProxy);
    void stopNow();
    void readCertificateOnSignal();

    const Handler handler;
    ConnectionContext context; // before io: the connections that end with io give their bytes back to it
    asio::io_context io{1};
    RenewedCertificate certificate; // connections keep the one that they began with
    tcp::acceptor acceptor;
    asio::signal_set stopSignals;
    asio::signal_set renewSignals;
    asio::steady_timer pause;
    const TrustedProxies trustedProxies;
    const bool proxiesGreet;
    ProxyGreetings greetings;
    std::set<std::shared_ptr<Connection>> connections;
    std::atomic<std::size_t> open = 0;           ///< how many there are, for other threads
    OpenConnections<Connection> counted;         ///< those that are served
    std::map<QByteArray, std::size_t> forwarded; ///< requests under way, by the address that a proxy names
    std::shared_ptr<LoopMailbox> mailbox;        ///< for what other threads bring
};

HttpServer::Implementation::Implementation(const ServerSettings &settings, Handler answering)
    : handler(std::move(answering)),
      context(settings.limits, settings.transfers ? settings.transfers : transferBudget(settings.limits)),
      certificate(settings.certificateFile, settings.keyFile, settings.log),
      acceptor(io),
      stopSignals(io),
      renewSignals(io),
      pause(io),
      trustedProxies(settings.trustedProxies),
      proxiesGreet(settings.proxyProtocol),
      greetings(
          settings.limits.headerTime,
          [this](tcp::socket socket, const auto &client) { takeGreeted(std::move(socket), client); },
          [this] {
              context.log(LogLevel::Warning, 0, "a connection of a trusted proxy begins without its header");
          }),
      mailbox(std::make_shared<LoopMailbox>(io))
{
    context.log = settings.log;
    context.answered = settings.answered;
    context.refuse = settings.refuse;
    context.admit = [this, admit = settings.admit](const Request &head) {
        return waitFor<Admission>(mailbox, admit(head));
    };
    context.answer = [this](Request request, bool fromProxy) {
        return answer(std::move(request), fromProxy);
    };
    context.idleChanged = [this](Connection &connection, bool idle) { counted.setIdle(&connection, idle); };
    certificate.read();
    const tcp::endpoint endpoint(asio::ip::make_address(settings.address.toStdString()), settings.port);
    acceptor.open(endpoint.protocol());
    acceptor.set_option(tcp::acceptor::reuse_address(true));
    acceptor.bind(endpoint);
    acceptor.listen();
    co_spawn(io, acceptAll(), asio::detached);
}

asio::awaitable<void> HttpServer::Implementation::acceptAll()
{
    while (!context.stopping) {
        error_code error;
        tcp::socket socket(io);
        co_await acceptor.async_accept(socket, asio::redirect_error(asio::use_awaitable, error));
        if (error && !context.stopping) { // no file descriptors left: some will come back
            pause.expires_after(std::chrono::milliseconds(100));
            co_await pause.async_wait(asio::redirect_error(asio::use_awaitable, error));
            continue;
        }
        if (error)
            continue;
        const tcp::endpoint remote = socket.remote_endpoint(error);
        const bool trusted = trustedProxies.contains(remote.address());
        if (error)
            continue;
        if (!trusted || !proxiesGreet)
            take(std::move(socket), {false, peerOf(remote.address()), trusted});
        else if (counted.count() + greetings.count() < context.limits.connections)
            greetings.await(std::move(socket));
    }
}

// What a request says behind it is not believed: the proxy may not have read the request.
void HttpServer::Implementation::takeGreeted(tcp::socket socket,
                                             const std::optional<asio::ip::address> &client)
{
    error_code error;
    const tcp::endpoint remote = socket.remote_endpoint(error);
    if (!error && !context.stopping)
        take(std::move(socket), {false, peerOf(client.value_or(remote.address())), false});
}

void HttpServer::Implementation::take(tcp::socket socket, const RequestOrigin &origin)
{
    constexpr std::size_t mostTurnedAway = 64; // at a time; further ones are closed without a word
    const bool hasRoom = hasRoomFor(origin);
    if (!hasRoom && connections.size() >= counted.count() + mostTurnedAway)
        return;
    auto connection = std::make_shared<Connection>(std::move(socket), context, certificate.context(), origin);
    connections.insert(connection);
    if (hasRoom)
        counted.add(connection.get(), origin.peer);
    open = counted.count();
    co_spawn(io, serve(std::move(connection), hasRoom), asio::detached);
}

// Where there is no room, that of a connection which only waits for a request is taken. Its client connects
// again when it has something to ask.
bool HttpServer::Implementation::hasRoomFor(const RequestOrigin &origin)
{
    const bool peerIsFull =
        !origin.forwarded && counted.countOf(origin.peer) >= context.limits.connectionsOfOnePeer;
    if (!peerIsFull && counted.count() + greetings.count() < context.limits.connections)
        return true;
    Connection *idle = peerIsFull ? counted.longestIdleOf(origin.peer) : counted.longestIdle();
    if (!idle)
        return false;
    idle->makeRoom();
    counted.remove(idle);
    return true;
}

asio::awaitable<void> HttpServer::Implementation::serve(std::shared_ptr<Connection> connection, bool hasRoom)
{
    try {
        if (hasRoom)
            co_await connection->serve();
        else
            co_await connection->turnAway();
    } catch (const std::exception &error) {
        context.log(LogLevel::Problem, 0, QByteArray("connection lost: ") + error.what());
    }
    counted.remove(connection.get());
    open = counted.count();
    connections.erase(connection);
    if (context.stopping && connections.empty())
        pause.cancel();
}

// A proxy brings many addresses over its connections, so their requests are counted instead.
asio::awaitable<Response> HttpServer::Implementation::answer(Request request, bool fromProxy)
{
    std::size_t uncounted = 0;
    std::size_t &underWay = fromProxy ? forwarded[request.peer] : uncounted;
    if (underWay >= context.limits.connectionsOfOnePeer)
        co_return context.refuse(tooBusy());
    ++underWay;
    Response response = co_await waitFor<Response>(mailbox, handler(request));
    if (--underWay == 0 && fromProxy)
        forwarded.erase(request.peer);
    co_return response;
}

void HttpServer::Implementation::stopOnSignals()
{
    stopSignals.add(SIGTERM);
    stopSignals.add(SIGINT);
    renewSignals.add(SIGHUP);
    readCertificateOnSignal();
    stopSignals.async_wait([this](const error_code &error, int) {
        if (!error)
            stopNow();
    });
}

void HttpServer::Implementation::readCertificateOnSignal()
{
    renewSignals.async_wait([this](const error_code &error, int) {
        if (error)
            return;
        certificate.readAgain();
        readCertificateOnSignal();
    });
}

// The loop ends by itself when the last connection has; those that take too long are cut off.
void HttpServer::Implementation::stopNow()
{
    if (context.stopping)
        return;
    context.stopping = true;
    error_code ignored;
    acceptor.close(ignored);
    stopSignals.cancel(ignored);
    renewSignals.cancel(ignored);
    greetings.giveUp();
    for (const std::shared_ptr<Connection> &connection : connections)
        connection->finish();
    if (connections.empty())
        return;
    pause.expires_after(context.limits.stopTime);
    pause.async_wait([this](const error_code &error) {
        if (error)
            return;
        io.stop();
    });
}

HttpServer::HttpServer(const ServerSettings &settings, Handler handler)
    : implementation(std::make_unique<Implementation>(settings, std::move(handler)))
{
}

HttpServer::~HttpServer() = default;

std::uint16_t HttpServer::port() const
{
    return implementation->port();
}

std::size_t HttpServer::connections() const
{
    return implementation->connectionCount();
}

QDateTime HttpServer::certificateEnd() const
{
    return implementation->certificateEnd();
}

void HttpServer::run()
{
    implementation->run();
}

void HttpServer::stop()
{
    implementation->stop();
}

void HttpServer::stopOnSignals()
{
    implementation->stopOnSignals();
}

} // namespace tideloft::service
