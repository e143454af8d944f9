// Stands between a service and PostgreSQL, and cuts connections at their commit.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <atomic>
#include <thread>
#include <vector>

namespace tideloft::tests
{

class CuttingRelay
{
public:
    enum class Cut {
        BeforeCommit, ///< the server never hears of it
        WithCommit,   ///< the server hears of it while the connection ends
        AfterCommit,  ///< the server has done it, and its answer is lost
    };

    explicit CuttingRelay(quint16 server);
    ~CuttingRelay();
    CuttingRelay(const CuttingRelay &) = delete;
    CuttingRelay &operator=(const CuttingRelay &) = delete;

    quint16 port() const { return ownPort; }

    /// Cuts the next connection that commits, once. ANDALL ends all others too, and nobody gets through until
    /// the relay is opened again.
    void cutNext(Cut where, bool andAll = false);
    void open() { closed = false; }
    int cuts() const { return done; }

private:
    void accept();
    void relay(int client);
    bool passOn(int client, int server);
    bool cut(const QByteArray &message, int server);

    const quint16 serverPort;
    int listener = -1;
    quint16 ownPort = 0;
    std::atomic<bool> over = false;
    std::atomic<bool> closed = false;
    std::atomic<bool> cutsAll = false;
    std::atomic<int> armed = -1; ///< the next cut, or none
    std::atomic<int> done = 0;
    std::vector<std::thread> relays;
    std::thread acceptor;
};

} // namespace tideloft::tests
