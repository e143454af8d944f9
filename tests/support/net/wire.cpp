// Comparison of heads, and the log of signals.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/net/wire.h"

#include <QMetaMethod>

#include <algorithm>

namespace tideloft::tests
{

namespace
{

// NAME as tests write it: from 6.8 on the toolkit sends names in small letters, and HTTP knows no difference.
QByteArray usualName(const QByteArray &name)
{
    static const QList<QByteArray> ownHeaders{"Content-Type", "X-Device-Token", "X-Device-Name",
                                              "Content-Length", "MIME-Version"};
    const auto own = std::find_if(ownHeaders.begin(), ownHeaders.end(), [&](const QByteArray &known) {
        return known.compare(name, Qt::CaseInsensitive) == 0;
    });
    return own == ownHeaders.end() ? name : *own;
}

} // namespace

QByteArray ownHead(const RecordedRequest &request)
{
    static const QList<QByteArray> toolkitHeaders{"host", "connection", "accept-encoding", "accept-language",
                                                  "user-agent"};
    QByteArray head;
    for (const QByteArray &line : request.head.split('\n')) {
        const QByteArray name = line.left(line.indexOf(':'));
        if (!toolkitHeaders.contains(name.toLower()))
            head += usualName(name) + line.mid(name.size()) + '\n';
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
