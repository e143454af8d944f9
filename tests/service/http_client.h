// A client that sends exactly the bytes it is given, over a real socket.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QHostAddress>
#include <QTcpSocket>

#include <utility>

namespace tideloft::tests
{

/// What passes over a socket, whoever connects it.
template <typename Socket> class HttpExchange
{
public:
    bool isConnected() const { return socket.state() == QAbstractSocket::ConnectedState; }
    void send(const QByteArray &bytes)
    {
        socket.write(bytes);
        socket.flush();
    }

    /// Reads until the text has come or the connection is closed.
    QByteArray readUntil(const QByteArray &text)
    {
        while (!received.contains(text) && socket.waitForReadyRead())
            received += socket.readAll();
        return received;
    }

    /// One whole reply with a Content-Length; what came after it is kept for the next.
    QByteArray readReply()
    {
        readUntil("\r\n\r\n");
        const qsizetype end = received.indexOf("\r\n\r\n");
        const QByteArray head = received.left(end).toLower(); // as some balancers write it
        const qsizetype field = head.indexOf("content-length: ");
        const qsizetype length = field < 0 ? 0 : head.mid(field + 16).split('\r').constFirst().toLongLong();
        while (end >= 0 && received.size() < end + 4 + length && socket.waitForReadyRead())
            received += socket.readAll();
        const QByteArray reply = end < 0 ? received : received.left(end + 4 + length);
        received.remove(0, reply.size());
        return reply;
    }

    /// Everything until the server closes; what came is lost when it does not.
    QByteArray readAll()
    {
        while (socket.waitForReadyRead())
            received += socket.readAll();
        const bool closed = socket.state() == QAbstractSocket::UnconnectedState;
        return closed ? std::exchange(received, {}) : QByteArray("still open");
    }

    QByteArray exchange(const QByteArray &bytes)
    {
        send(bytes);
        return readReply();
    }

    Socket socket;

private:
    QByteArray received;
};

class HttpClient : public HttpExchange<QTcpSocket>
{
public:
    explicit HttpClient(quint16 port, const QHostAddress &from = {})
    {
        if (!from.isNull())
            socket.bind(from);
        socket.connectToHost(QStringLiteral("127.0.0.1"), port);
        socket.waitForConnected();
    }
};

inline int statusOf(const QByteArray &reply)
{
    return reply.mid(9, 3).toInt();
}

} // namespace tideloft::tests
