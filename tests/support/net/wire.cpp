// Comparison of heads, and the log of signals.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/net/wire.h"

#include <QMetaMethod>

namespace tideloft::tests
{

QByteArray ownHead(const RecordedRequest &request)
{
    static const QList<QByteArray> toolkitHeaders{"Host", "Connection", "Accept-Encoding", "Accept-Language",
                                                  "User-Agent"};
    QByteArray head;
    for (const QByteArray &line : request.head.split('\n')) {
        if (!toolkitHeaders.contains(line.left(line.indexOf(':'))))
            head += line + '\n';
    }
    return head.chopped(1);
}

QByteArray jsonHead(const QByteArray &requestLine, const net::ApiClient &client, qsizetype length)
{
    QByteArray head = requestLine + " HTTP/1.1\r\nContent-Type: application/json\r\nX-Device-Token: "
                      + client.deviceId().toUtf8() + "\r\nX-Device-Name: TideLoft Desktop\r\n";
    if (length >= 0)
        head += "Content-Length: " + QByteArray::number(length) + "\r\n";
    return head + "\r\n";
}

SignalLog::SignalLog(const net::ApiClient &client)
{
    const QMetaObject &meta = net::ApiClient::staticMetaObject;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index)
        spies.push_back(std::make_unique<QSignalSpy>(&client, meta.method(index)));
}

QList<QByteArray> SignalLog::emitted() const
{
    QList<QByteArray> names;
    for (const auto &spy : spies)
        names += QList<QByteArray>(spy->size(), spy->signal().left(spy->signal().indexOf('(')));
    return names;
}

bool settle(net::ApiClient &client)
{
    QSignalSpy failed(&client, &net::ApiClient::serversFailed);
    client.fetchServer(QStringLiteral("settle"));
    return failed.wait();
}

} // namespace tideloft::tests
