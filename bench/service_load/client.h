// One connection that asks one request after the other, over TCP or TLS.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "bench/service_load/loop.h"

#include <deque>
#include <memory>
#include <string>

#include <openssl/ssl.h>

namespace tideloft::bench
{

struct Reply {
    int status = 0; ///< 0: the connection ended before there was a whole reply
    std::string etag;
    std::string body; ///< its beginning
    std::size_t bodyBytes = 0;
    double milliseconds = 0; ///< since the request was due
};

struct Where {
    std::uint16_t port = 0;
    SSL_CTX *tls = nullptr; ///< null: plain TCP
    std::string from = "127.0.0.1";
};

/// One of very many addresses of this machine. NETWORK, from 1 to 255, keeps those of different loads apart.
inline std::string addressOf(int network, std::size_t number)
{
    return "127." + std::to_string(network) + '.' + std::to_string(number / 250 % 250) + '.'
           + std::to_string(1 + number % 250);
}

/// Connects when there is something to ask, and again when the connection was lost.
class Client final : public Watched
{
public:
    using Done = std::function<void(const Reply &reply)>;

    Client(Loop &owner, Where target);
    Client(const Client &) = delete;
    Client &operator=(const Client &) = delete;
    ~Client() override;

    /// The time is counted from DUE. What is asked meanwhile waits for its turn.
    void ask(std::string request, Done done, Time due = Clock::now());

    std::size_t waiting() const { return asked.size(); }

    /// Bytes on the wire, TLS included, of all connections so far.
    std::uint64_t bytesOnWire() const;

    /// Sends bytes without looking for a reply; false when there is no connection any more.
    bool sendRaw(const std::string &bytes);
    bool isOpen() const { return descriptor >= 0; }
    void connectNow();
    void drop();

    void ready(std::uint32_t events) override;

private:
    struct Asked {
        std::string request;
        Done done;
        Time due;
    };
    void sendNext();
    bool finishConnecting();
    bool flush();
    void receive();
    bool readSome(bool &more);
    void take(const char *data, std::size_t size);
    bool takeHead();
    void finishReply();
    void lose();
    void listen(bool forWriting);

    Loop &loop;
    const Where where;
    int descriptor = -1;
    std::unique_ptr<SSL, decltype(&SSL_free)> tls{nullptr, &SSL_free};
    bool connected = false;
    bool listensForWriting = false;
    bool underWay = false;
    bool inBody = false;
    std::deque<Asked> asked;
    std::string out;
    std::string head;
    std::size_t bodyLeft = 0;
    Reply reply;
    std::uint64_t wireBytes = 0;
};

} // namespace tideloft::bench
