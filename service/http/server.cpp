// Accepts connections, hands slow work to threads, and stops in order.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/server.h"

#include "service/http/certificate.h"
#include "service/http/connection.h"
#include "service/http/loop_mailbox.h"
#include "service/http/peer.h"
#include "service/http/proxy_greetings.h"
#include "service/http/translation.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/use_awaitable.hpp>

#include <QHash>

#include <atomic>
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
    QDateTime certificateEnd() const
    {
        return validUntil == 0 ? QDateTime() : QDateTime::fromSecsSinceEpoch(validUntil).toUTC();
    }
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
    asio::awaitable<void> serve(std::shared_ptr<Connection> connection, QByteArray peer);
    asio::awaitable<Response> answer(Request request);
    void stopNow();
    void readCertificate();
    void readCertificateOnSignal();

    const Handler handler;
    QString certificateFile;
    QString keyFile;
    ConnectionContext context; // before io: the connections that end with io give their bytes back to it
    asio::io_context io{1};
    std::optional<asio::ssl::context> tls;
    tcp::acceptor acceptor;
    asio::signal_set stopSignals;
    asio::signal_set renewSignals;
    asio::steady_timer pause;
    const TrustedProxies trustedProxies;
    const bool proxiesGreet;
    ProxyGreetings greetings;
    std::set<std::shared_ptr<Connection>> connections;
    std::atomic<std::size_t> open = 0;     ///< how many there are, for other threads
    std::atomic<qint64> validUntil = 0;    ///< the certificate, in seconds since 1970; 0 without one
    QHash<QByteArray, std::size_t> ofPeer; ///< how many of the connections
    std::shared_ptr<LoopMailbox> mailbox;  ///< for what other threads bring
};

HttpServer::Implementation::Implementation(const ServerSettings &settings, Handler answering)
    : handler(std::move(answering)),
      context(settings.limits, settings.transfers ? settings.transfers : transferBudget(settings.limits)),
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
    context.admit = [this, admit = settings.admit](Request head) {
        return waitFor<Admission>(mailbox, admit(head));
    };
    context.answer = [this](Request request) { return answer(std::move(request)); };
    certificateFile = settings.certificateFile;
    keyFile = settings.keyFile;
    readCertificate();
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
        if (error || connections.size() + greetings.count() >= context.limits.connections)
            continue;
        const tcp::endpoint remote = socket.remote_endpoint(error);
        const bool trusted = trustedProxies.contains(remote.address());
        if (!error && trusted && proxiesGreet)
            greetings.await(std::move(socket));
        else if (!error)
            take(std::move(socket), {false, peerOf(remote.address()), trusted});
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
    if (!origin.forwarded && ofPeer.value(origin.peer) >= context.limits.connectionsOfOnePeer)
        return;
    auto connection = std::make_shared<Connection>(std::move(socket), context, tls ? &*tls : nullptr, origin);
    connections.insert(connection);
    co_spawn(io, serve(std::move(connection), origin.peer), asio::detached);
}

asio::awaitable<void> HttpServer::Implementation::serve(std::shared_ptr<Connection> connection,
                                                        QByteArray peer)
{
    ++ofPeer[peer];
    ++open;
    try {
        co_await connection->serve();
    } catch (const std::exception &error) {
        context.log(LogLevel::Problem, 0, QByteArray("connection lost: ") + error.what());
    }
    connections.erase(connection);
    --open;
    if (--ofPeer[peer] == 0)
        ofPeer.remove(peer);
    if (context.stopping && connections.empty())
        pause.cancel();
}

asio::awaitable<Response> HttpServer::Implementation::answer(Request request)
{
    return waitFor<Response>(mailbox, handler(request));
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

// Connections keep the certificate that they began with.
void HttpServer::Implementation::readCertificate()
{
    if (certificateFile.isEmpty())
        return;
    tls.emplace(tlsContext(certificateFile, keyFile));
    const QDateTime end = tideloft::service::certificateEnd(*tls);
    validUntil = end.toSecsSinceEpoch();
    const QString warning = expiryWarning(end, QDateTime::currentDateTimeUtc());
    if (!warning.isEmpty())
        context.log(LogLevel::Warning, 0, warning.toUtf8());
}

void HttpServer::Implementation::readCertificateOnSignal()
{
    renewSignals.async_wait([this](const error_code &error, int) {
        if (error)
            return;
        try {
            readCertificate();
            context.log(LogLevel::Info, 0, "read certificate and key again");
        } catch (const std::exception &problem) {
            context.log(LogLevel::Problem, 0, QByteArray("kept the certificate: ") + problem.what());
        }
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

std::shared_ptr<ByteBudget> transferBudget(const ServerLimits &limits)
{
    return std::make_shared<ByteBudget>(limits.transferBytes, limits.accountTransferBytes);
}

Response plainRefusal(const Refusal &refusal)
{
    return refusalResponse(refusal, "text/plain; charset=utf-8", refusal.message.toUtf8());
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
