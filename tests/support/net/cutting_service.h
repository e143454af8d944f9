// A service whose every reply is cut off in its body.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/test_service_endpoint.h"

#include <QEventLoop>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <future>
#include <memory>

namespace tideloft::tests
{

/// Answers every request with the same bytes, and ends the connection a moment after them: in a thread of its
/// own, so that the client may hear of the end at any point of its work on the bytes. The client may also
/// open a connection that it then does not need: nobody waits for a request there.
class CuttingService
{
public:
    explicit CuttingService(QByteArray answer) : bytes(std::move(answer))
    {
        thread.reset(QThread::create([this] { serve(); }));
        thread->start();
        setServiceBaseUrl(QStringLiteral("http://127.0.0.1:%1").arg(port.get_future().get()));
    }
    ~CuttingService()
    {
        thread->quit();
        thread->wait();
    }
    Q_DISABLE_COPY_MOVE(CuttingService)

private:
    void serve()
    {
        QTcpServer server;
        if (!server.listen(QHostAddress::LocalHost))
            qFatal("The cutting service found no port: %s", qPrintable(server.errorString()));
        QObject::connect(&server, &QTcpServer::newConnection, &server, [this, &server] {
            while (QTcpSocket *socket = server.nextPendingConnection())
                QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { answer(*socket); });
        });
        QEventLoop loop;
        port.set_value(server.serverPort());
        loop.exec();
    }

    void answer(QTcpSocket &socket) const
    {
        if (socket.state() != QAbstractSocket::ConnectedState)
            return; // more of a request that is answered
        socket.write(bytes);
        socket.flush();
        QThread::usleep(100);
        socket.disconnectFromHost();
    }

    const QByteArray bytes;
    std::promise<quint16> port;
    std::unique_ptr<QThread> thread;
};

} // namespace tideloft::tests
