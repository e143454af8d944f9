// Sockets that never block, and as much of HTTP as our own replies need.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/service_load/client.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace tideloft::bench
{

namespace
{

constexpr std::size_t keptOfBody = 4096;

sockaddr_in socketAddress(const std::string &text, std::uint16_t port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    inet_pton(AF_INET, text.c_str(), &address.sin_addr);
    return address;
}

// A balancer may write the names of headers in small letters.
std::string valueOf(const std::string &head, std::string_view name)
{
    const auto isSame = [](unsigned char one, unsigned char other) {
        return std::tolower(one) == std::tolower(other);
    };
    const auto begin = std::search(head.begin(), head.end(), name.begin(), name.end(), isSame);
    if (begin == head.end())
        return {};
    const auto value = begin + static_cast<std::ptrdiff_t>(name.size());
    return {value, std::find(value, head.end(), '\r')};
}

} // namespace

Client::Client(Loop &owner, Where target) : loop(owner), where(std::move(target)) {}

Client::~Client()
{
    drop();
}

std::uint64_t Client::bytesOnWire() const
{
    const SSL *now = tls.get();
    return wireBytes + (now ? BIO_number_read(SSL_get_rbio(now)) + BIO_number_written(SSL_get_wbio(now)) : 0);
}

void Client::connectNow()
{
    drop();
    descriptor = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    const int yes = 1;
    setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
    setsockopt(descriptor, IPPROTO_IP, IP_BIND_ADDRESS_NO_PORT, &yes, sizeof yes);
    const sockaddr_in from = socketAddress(where.from, 0);
    const sockaddr_in to = socketAddress("127.0.0.1", where.port);
    if (bind(descriptor, reinterpret_cast<const sockaddr *>(&from), sizeof from) != 0
        || (connect(descriptor, reinterpret_cast<const sockaddr *>(&to), sizeof to) != 0
            && errno != EINPROGRESS)) {
        drop();
        return;
    }
    if (where.tls) {
        tls.reset(SSL_new(where.tls));
        SSL_set_fd(tls.get(), descriptor);
        SSL_set_connect_state(tls.get());
    }
    listensForWriting = true;
    loop.add(descriptor, EPOLLIN | EPOLLOUT | EPOLLRDHUP, *this);
}

void Client::drop()
{
    if (descriptor >= 0) {
        wireBytes = bytesOnWire();
        close(descriptor); // which takes it out of the loop
    }
    tls.reset();
    descriptor = -1;
    connected = underWay = inBody = false;
    out.clear();
    head.clear();
}

void Client::listen(bool forWriting)
{
    if (descriptor < 0 || forWriting == listensForWriting)
        return;
    listensForWriting = forWriting;
    loop.change(descriptor, EPOLLIN | EPOLLRDHUP | (forWriting ? static_cast<unsigned>(EPOLLOUT) : 0U),
                *this);
}

void Client::ask(std::string request, Done done, Time due)
{
    asked.push_back({std::move(request), std::move(done), due});
    if (!underWay)
        sendNext();
}

void Client::sendNext()
{
    if (asked.empty())
        return;
    if (descriptor < 0)
        connectNow();
    if (descriptor < 0)
        return lose();
    underWay = true;
    reply = {};
    out = asked.front().request;
    if (connected && !flush())
        lose();
}

bool Client::sendRaw(const std::string &bytes)
{
    out += bytes;
    return descriptor >= 0 && (!connected || flush());
}

// False when the connection cannot be made.
bool Client::finishConnecting()
{
    int error = 0;
    socklen_t size = sizeof error;
    getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &error, &size);
    if (error != 0)
        return false;
    if (tls) {
        const int result = SSL_do_handshake(tls.get());
        const int reason = SSL_get_error(tls.get(), result);
        if (result != 1) {
            listen(reason == SSL_ERROR_WANT_WRITE);
            return reason == SSL_ERROR_WANT_READ || reason == SSL_ERROR_WANT_WRITE;
        }
    }
    connected = true;
    return flush();
}

// False when the connection is lost.
bool Client::flush()
{
    while (!out.empty()) {
        const ssize_t count = tls ? SSL_write(tls.get(), out.data(), static_cast<int>(out.size()))
                                  : send(descriptor, out.data(), out.size(), MSG_NOSIGNAL);
        if (count <= 0) {
            const int reason = tls ? SSL_get_error(tls.get(), static_cast<int>(count)) : 0;
            listen(true);
            return tls ? reason == SSL_ERROR_WANT_WRITE || reason == SSL_ERROR_WANT_READ : errno == EAGAIN;
        }
        out.erase(0, static_cast<std::size_t>(count));
    }
    listen(false);
    return true;
}

void Client::ready(std::uint32_t events)
{
    if (descriptor < 0)
        return;
    if (!connected) {
        if (!finishConnecting())
            lose();
        return;
    }
    if ((events & EPOLLOUT) != 0 && !flush())
        return lose();
    receive();
}

// False at the end of the connection. MORE tells whether there may be more at once.
bool Client::readSome(bool &more)
{
    static std::array<char, 256 * 1024> buffer;
    const ssize_t count = tls ? SSL_read(tls.get(), buffer.data(), static_cast<int>(buffer.size()))
                              : recv(descriptor, buffer.data(), buffer.size(), 0);
    more = count > 0 && (tls || count == static_cast<ssize_t>(buffer.size()));
    if (count > 0) {
        take(buffer.data(), static_cast<std::size_t>(count));
        return true;
    }
    return tls ? SSL_get_error(tls.get(), static_cast<int>(count)) == SSL_ERROR_WANT_READ
               : count < 0 && errno == EAGAIN;
}

void Client::receive()
{
    bool more = true;
    while (more && descriptor >= 0) {
        if (!readSome(more))
            return lose();
    }
}

void Client::take(const char *data, std::size_t size)
{
    if (!inBody) {
        const std::size_t before = head.size();
        head.append(data, size);
        const std::size_t end = head.find("\r\n\r\n", before > 3 ? before - 3 : 0);
        if (end == std::string::npos)
            return;
        const std::size_t used = end + 4 - before;
        head.resize(end + 4);
        if (!takeHead())
            return;
        data += used;
        size -= used;
    }
    const std::size_t count = std::min(size, bodyLeft);
    if (reply.body.size() < keptOfBody)
        reply.body.append(data, std::min(count, keptOfBody - reply.body.size()));
    bodyLeft -= count;
    if (bodyLeft == 0)
        finishReply();
}

// False for an intermediate reply, which is skipped.
bool Client::takeHead()
{
    reply.status = static_cast<int>(std::strtol(head.c_str() + 9, nullptr, 10));
    reply.etag = valueOf(head, "\r\nETag: ");
    reply.bodyBytes = bodyLeft = std::strtoull(valueOf(head, "\r\nContent-Length: ").c_str(), nullptr, 10);
    head.clear();
    inBody = reply.status >= 200;
    return inBody;
}

void Client::finishReply()
{
    inBody = underWay = false;
    if (asked.empty())
        return;
    const Asked first = std::move(asked.front());
    asked.pop_front();
    reply.milliseconds = secondsSince(first.due) * 1000;
    const Reply whole = std::move(reply);
    first.done(whole);
    if (!underWay)
        sendNext();
}

// The request under way gets no reply; what waits behind it is asked on a new connection.
void Client::lose()
{
    const bool mustTell = underWay || !connected;
    drop();
    if (!mustTell || asked.empty())
        return;
    const Asked first = std::move(asked.front());
    asked.pop_front();
    Reply none;
    none.milliseconds = secondsSince(first.due) * 1000;
    first.done(none);
    if (!underWay)
        sendNext();
}

} // namespace tideloft::bench
