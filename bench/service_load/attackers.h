// Clients that mean no good: slow ones, ones that send nonsense, ones that guess passwords.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "bench/service_load/client.h"
#include "bench/service_load/seed.h"

#include <map>
#include <random>

namespace tideloft::bench
{

/// Begins something and goes on with a byte every half second, until the service has had enough; then it
/// comes again.
class SlowClient final : public Watched
{
public:
    enum class Kind { Header, Body, NeverReads };

    SlowClient(Loop &owner, Kind wanted, std::uint16_t target, std::string address, const SeededUser &user);
    SlowClient(const SlowClient &) = delete;
    SlowClient &operator=(const SlowClient &) = delete;
    ~SlowClient() override;

    void ready(std::uint32_t events) override;

    void comeNoMore() { comesAgain = false; }
    bool isConnected() const { return descriptor >= 0; }

    /// The most seconds for which the service held a connection.
    double longest() const { return longestHeld; }

private:
    void goOn();
    void connectAgain();

    Loop &loop;
    const std::uint16_t port;
    const std::string from;
    const std::string first;
    bool comesAgain = true;
    bool saidFirst = false;
    int descriptor = -1;
    Time begin;
    double longestHeld = 0;
};

/// Sends so many malformed requests at a fixed rate, a connection each, over a few connections at a time.
class Nonsense
{
public:
    Nonsense(Loop &owner, std::uint16_t target, std::size_t count) : loop(owner), port(target), left(count) {}

    void start(int connections, double aSecond);
    std::size_t answered() const { return replies; }
    std::size_t sent() const { return begun; }
    bool isDone() const { return left == 0 && running == 0; }

private:
    void next(std::size_t lane, Time due);
    std::string request();

    Loop &loop;
    const std::uint16_t port;
    std::size_t left;
    std::size_t begun = 0;
    std::size_t replies = 0;
    std::size_t running = 0;
    double pause = 0; ///< seconds between two requests of a lane
    std::vector<std::unique_ptr<Client>> lanes;
    std::mt19937 generator{1};
};

/// Tries to sign in at a fixed rate, from an address and to an account of its own each time.
class Guesses
{
public:
    Guesses(Loop &owner, std::uint16_t target, double aSecond) : loop(owner), port(target), pause(1 / aSecond)
    {
    }

    void start(Time due);
    std::size_t begun() const { return clients.size(); }
    const std::map<int, int> &statuses() const { return seen; }

private:
    Loop &loop;
    const std::uint16_t port;
    const double pause;
    std::map<int, int> seen;
    std::vector<std::unique_ptr<Client>> clients;
};

} // namespace tideloft::bench
