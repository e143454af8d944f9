// A service whose every reply goes on for as long as anybody receives it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/test_service_endpoint.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <memory>

namespace tideloft::tests
{

/// Answers every request with FIRST and then with AGAIN over and over, in a thread of its own: until the
/// client hangs up, or has taken ATMOST bytes. Then it ends the connection.
class FloodingService
{
public:
    FloodingService(QByteArray first, QByteArray again, qint64 atMost)
        : head(std::move(first)),
          piece(std::move(again)),
          most(atMost)
    {
        thread.reset(QThread::create([this] { serve(); }));
        thread->start();
        while (port == 0)
            QThread::yieldCurrentThread();
        setServiceBaseUrl(QStringLiteral("http://127.0.0.1:%1").arg(port.load()));
    }
    ~FloodingService()
    {
        stopping = true;
        thread->wait();
    }
    Q_DISABLE_COPY_MOVE(FloodingService)

    /// How many bytes of its last reply the client's side has taken. Ask when the client is done with it.
    [[nodiscard]] qint64 taken() const { return sent; }

    /// The same of the reply of which the client's side has taken the most.
    [[nodiscard]] qint64 mostTaken() const { return mostSent; }

private:
    void serve()
    {
        QTcpServer server;
        if (!server.listen(QHostAddress::LocalHost))
            qFatal("The flooding service found no port: %s", qPrintable(server.errorString()));
        port = server.serverPort();
        while (!stopping) {
            if (server.waitForNewConnection(20))
                answer(*std::unique_ptr<QTcpSocket>(server.nextPendingConnection()));
        }
    }

    void answer(QTcpSocket &socket)
    {
        if (!socket.waitForReadyRead())
            return;
        sent = 0;
        socket.write(head);
        while (sent < most && !stopping && socket.state() == QAbstractSocket::ConnectedState) {
            if (socket.bytesToWrite() < piece.size())
                socket.write(piece);
            const qint64 before = socket.bytesToWrite();
            socket.waitForBytesWritten(20);
            sent += before - socket.bytesToWrite();
            mostSent = std::max(mostSent.load(), sent.load());
        }
        socket.disconnectFromHost();
        if (socket.state() != QAbstractSocket::UnconnectedState)
            socket.waitForDisconnected(1000);
    }

    const QByteArray head;
    const QByteArray piece;
    const qint64 most;
    std::atomic<qint64> sent = 0;
    std::atomic<qint64> mostSent = 0;
    std::atomic<int> port = 0;
    std::atomic<bool> stopping = false;
    std::unique_ptr<QThread> thread;
};

} // namespace tideloft::tests
