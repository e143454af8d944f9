// A thread for each connection.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/cutting_relay.h"

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tideloft::tests
{

namespace
{

constexpr int turn = 50; // ms until the end is noticed

sockaddr_in loopback(quint16 port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return address;
}

int connectTo(quint16 port)
{
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = loopback(port);
    if (::connect(socket, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0)
        return socket;
    ::close(socket);
    return -1;
}

QByteArray receive(int socket)
{
    QByteArray bytes(65536, Qt::Uninitialized);
    const ssize_t size = ::recv(socket, bytes.data(), static_cast<std::size_t>(bytes.size()), 0);
    return bytes.first(size > 0 ? static_cast<qsizetype>(size) : 0);
}

bool sendAll(int socket, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t size =
            ::send(socket, bytes.data(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
        if (size <= 0)
            return false;
        bytes = bytes.sliced(size);
    }
    return true;
}

} // namespace

CuttingRelay::CuttingRelay(quint16 server)
    : serverPort(server),
      listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    auto *general = reinterpret_cast<sockaddr *>(&address);
    if (::bind(listener, general, size) != 0 || ::listen(listener, 64) != 0
        || ::getsockname(listener, general, &size) != 0)
        qFatal("The relay finds no port.");
    ownPort = ntohs(address.sin_port);
    acceptor = std::thread([this] { accept(); });
}

CuttingRelay::~CuttingRelay()
{
    over = true;
    acceptor.join();
    for (std::thread &each : relays)
        each.join();
    ::close(listener);
}

void CuttingRelay::cutNext(Cut where, bool andAll)
{
    cutsAll = andAll;
    armed = static_cast<int>(where);
}

void CuttingRelay::accept()
{
    while (!over) {
        pollfd waiting{listener, POLLIN, 0};
        if (::poll(&waiting, 1, turn) <= 0)
            continue;
        const int client = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (client >= 0)
            relays.emplace_back([this, client] { relay(client); });
    }
}

void CuttingRelay::relay(int client)
{
    const int server = closed ? -1 : connectTo(serverPort);
    while (server >= 0 && !over && !closed && passOn(client, server)) {
    }
    ::close(client);
    if (server >= 0)
        ::close(server);
}

// False when the connection is over.
bool CuttingRelay::passOn(int client, int server)
{
    pollfd waiting[]{{client, POLLIN, 0}, {server, POLLIN, 0}};
    if (::poll(waiting, 2, turn) <= 0)
        return true;
    if (waiting[0].revents != 0) {
        const QByteArray message = receive(client);
        if (message.isEmpty() || cut(message, server) || !sendAll(server, message))
            return false;
    }
    if (waiting[1].revents == 0)
        return true;
    const QByteArray answer = receive(server);
    return !answer.isEmpty() && sendAll(client, answer);
}

// A statement that is not prepared comes as a message of its own: "Q", four bytes of length, and its text.
bool CuttingRelay::cut(const QByteArray &message, int server)
{
    if (!message.startsWith('Q') || message.mid(5) != QByteArray("COMMIT\0", 7))
        return false;
    const int where = armed.exchange(-1);
    if (where < 0)
        return false;
    if (where != static_cast<int>(Cut::BeforeCommit))
        sendAll(server, message);
    if (where == static_cast<int>(Cut::AfterCommit))
        receive(server);
    closed = cutsAll.load();
    ++done;
    return true;
}

} // namespace tideloft::tests
