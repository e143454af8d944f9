// What attackers send.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/service_load/attackers.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tideloft::bench
{

namespace
{

std::string beginningOf(SlowClient::Kind kind, const SeededUser &user)
{
    if (kind == SlowClient::Kind::Header)
        return "GET /healthz HTTP/1.1\r\nHost: h\r\nX-Slow: ";
    if (kind == SlowClient::Kind::Body)
        return "POST /api/profile/avatar/upload HTTP/1.1\r\nHost: h\r\nCookie: " + user.cookie
               + "\r\nContent-Type: multipart/form-data; boundary=b\r\nContent-Length: 5000000\r\n\r\n--b";
    std::string many;
    for (int i = 0; i < 20; ++i)
        many += historyRequest(user);
    return many;
}

int connectedSocket(std::uint16_t port, const std::string &from)
{
    const int descriptor = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    const int small = 4096; // what is not read stays with the service
    setsockopt(descriptor, SOL_SOCKET, SO_RCVBUF, &small, sizeof small);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    inet_pton(AF_INET, from.c_str(), &address.sin_addr);
    (void)bind(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address);
    inet_pton(AF_INET, "127.0.0.1", &address.sin_addr);
    address.sin_port = htons(port);
    (void)connect(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address);
    return descriptor;
}

} // namespace

SlowClient::SlowClient(Loop &owner, Kind wanted, std::uint16_t target, std::string address,
                       const SeededUser &user)
    : loop(owner),
      port(target),
      from(std::move(address)),
      first(beginningOf(wanted, user))
{
    connectAgain();
    loop.at(later(0.5), [this] { goOn(); });
}

SlowClient::~SlowClient()
{
    if (descriptor >= 0)
        close(descriptor);
}

// No event is asked for. The loop reports the end of the connection all the same.
void SlowClient::connectAgain()
{
    descriptor = connectedSocket(port, from);
    begin = Clock::now();
    saidFirst = false;
    loop.add(descriptor, 0, *this);
}

// A byte to a connection that the service has closed brings a reset.
void SlowClient::goOn()
{
    if (descriptor < 0 && comesAgain) {
        connectAgain();
    } else if (descriptor >= 0) {
        const std::string text = saidFirst ? "a" : first;
        static_cast<void>(send(descriptor, text.data(), text.size(), MSG_NOSIGNAL));
        saidFirst = true;
    }
    loop.at(later(0.5), [this] { goOn(); });
}

void SlowClient::ready(std::uint32_t events)
{
    if (descriptor < 0 || (events & (EPOLLHUP | EPOLLERR)) == 0)
        return;
    longestHeld = std::max(longestHeld, secondsSince(begin));
    close(descriptor);
    descriptor = -1;
}

void Nonsense::start(int connections, double aSecond)
{
    lanes.resize(static_cast<std::size_t>(connections));
    running = lanes.size();
    pause = connections / aSecond;
    for (std::size_t i = 0; i < lanes.size(); ++i)
        next(i, later(static_cast<double>(i) / aSecond));
}

void Nonsense::next(std::size_t lane, Time due)
{
    if (left == 0) {
        --running;
        return;
    }
    --left;
    loop.at(due, [this, lane, due] {
        lanes[lane] = std::make_unique<Client>(loop, Where{port, nullptr, addressOf(3, begun++)});
        lanes[lane]->ask(request(), [this, lane, due](const Reply &reply) {
            replies += reply.status >= 400 ? 1 : 0;
            next(lane, std::max(later(pause, due), Clock::now()));
        });
    });
}

std::string Nonsense::request()
{
    static const std::string host = "Host: h\r\n";
    static const std::vector<std::string> shapes{
        "GET / HTTP/1.1\r\n\r\n",
        "GET / HTTP/9.9\r\n" + host + "\r\n",
        "GET http://elsewhere/ HTTP/1.1\r\n" + host + "\r\n",
        "GET / HTTP/1.1\r\n" + host + host + "\r\n",
        "GET / HTTP/1.1\r\n" + host + "no colon\r\n\r\n",
        "GET / HTTP/1.1\r\n" + host + " folded: x\r\n\r\n",
        "GET / HTTP/1.1\nHost: h\n\n",
        "G\x01T / HTTP/1.1\r\n" + host + "\r\n",
        "POST /api/auth/login HTTP/1.1\r\n" + host + "Content-Length: -1\r\n\r\n",
        "POST /api/auth/login HTTP/1.1\r\n" + host + "Content-Length: 1\r\nContent-Length: 2\r\n\r\nab",
        "POST /api/auth/login HTTP/1.1\r\n" + host
            + "Content-Length: 4\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n",
        "POST /api/auth/login HTTP/1.1\r\n" + host
            + "Transfer-Encoding: chunked\r\n\r\nFFFFFFFFFFFFFFFFF\r\n",
        "POST /api/auth/login HTTP/1.1\r\n" + host + "Transfer-Encoding: chunked, gzip\r\n\r\n",
        "POST /api/auth/login HTTP/1.1\r\n" + host + "Content-Length: 99999999999999999999\r\n\r\n",
        "GET / HTTP/1.1\r\n" + host + "X: " + std::string(17 * 1024, 'x') + "\r\n\r\n",
        "POST /api/auth/login HTTP/1.1\r\n" + host
            + "Content-Type: application/json\r\nContent-Length: 9\r\n\r\n[[[[[[[[[",
    };
    const std::size_t choice = std::uniform_int_distribution<std::size_t>(0, shapes.size())(generator);
    if (choice < shapes.size())
        return shapes[choice];
    std::string garbage;
    for (int i = 0; i < 64; ++i)
        garbage += static_cast<char>(std::uniform_int_distribution<int>(0, 255)(generator));
    return garbage + "\r\n\r\n";
}

void Guesses::start(Time due)
{
    loop.at(due, [this, due] {
        const std::string number = std::to_string(clients.size());
        clients.push_back(std::make_unique<Client>(loop, Where{port, nullptr, addressOf(4, clients.size())}));
        Client &client = *clients.back();
        client.ask(postRequest("/api/auth/login", "a=b",
                               R"({"username":"guess)" + number + R"(","password":"a guess"})"),
                   [this, &client](const Reply &reply) {
                       ++seen[reply.status];
                       loop.at(Clock::now(), [&client] { client.drop(); });
                   });
        start(later(pause, due));
    });
}

} // namespace tideloft::bench
