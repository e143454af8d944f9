// A service whose every reply is cut off in its body.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/test_service_endpoint.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <atomic>
#include <memory>

namespace tideloft::tests
{

/// Answers every request with the same bytes, and ends the connection a moment after them: in a thread of its
/// own, so that the client may hear of the end at any point of its work on the bytes.
class CuttingService
{
public:
    explicit CuttingService(QByteArray answer) : bytes(std::move(answer))
    {
        thread.reset(QThread::create([this] { serve(); }));
        thread->start();
        while (port == 0)
            QThread::yieldCurrentThread();
        setServiceBaseUrl(QStringLiteral("http://127.0.0.1:%1").arg(port.load()));
    }
    ~CuttingService()
    {
        stopping = true;
        thread->wait();
    }
    Q_DISABLE_COPY_MOVE(CuttingService)

private:
    void serve()
    {
        QTcpServer server;
        if (!server.listen(QHostAddress::LocalHost))
            qFatal("The cutting service found no port: %s", qPrintable(server.errorString()));
        port = server.serverPort();
        while (!stopping) {
            if (server.waitForNewConnection(20))
                answer(*std::unique_ptr<QTcpSocket>(server.nextPendingConnection()));
        }
    }

    void answer(QTcpSocket &socket) const
    {
        if (!socket.waitForReadyRead())
            return;
        socket.write(bytes);
        socket.waitForBytesWritten();
        QThread::usleep(100);
        socket.disconnectFromHost();
        if (socket.state() != QAbstractSocket::UnconnectedState)
            socket.waitForDisconnected();
    }

    const QByteArray bytes;
    std::atomic<int> port = 0;
    std::atomic<bool> stopping = false;
    std::unique_ptr<QThread> thread;
};

} // namespace tideloft::tests
