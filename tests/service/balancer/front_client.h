// A person's client in front of a balancer: each request over a connection of its own.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/service/http_reply.h"
#include "tests/service/tls_client.h"

#include <utility>

namespace tideloft::tests
{

class FrontClient
{
public:
    FrontClient(quint16 to, TlsPeer server) : port(to), peer(std::move(server)) {}

    /// Status 0 where there was no reply.
    HttpReply call(const QByteArray &method, const QByteArray &target, const QByteArray &body = {},
                   const QByteArray &type = "application/json") const
    {
        TlsClient client(port, peer);
        HttpReply reply =
            parsedReply(client.exchange(method + ' ' + target + " HTTP/1.1\r\nHost: localhost\r\nCookie: "
                                        + cookie + "\r\nContent-Type: " + type + "\r\nContent-Length: "
                                        + QByteArray::number(body.size()) + "\r\n" + more + "\r\n" + body));
        return reply;
    }
    HttpReply get(const QByteArray &target) const { return call("GET", target); }
    HttpReply post(const QByteArray &target, const QJsonObject &body) const
    {
        return call("POST", target, QJsonDocument(body).toJson());
    }

    int registerAs(const QString &name) const { return post("/api/auth/register", credentials(name)).status; }

    /// The session is kept when there is one.
    int signIn(const QString &name)
    {
        const HttpReply reply = post("/api/auth/login", credentials(name));
        cookie = reply.headers.value("set-cookie").split(';').constFirst();
        return reply.status;
    }

    QByteArray more; ///< lines of the header that each request has too

private:
    static QJsonObject credentials(const QString &name)
    {
        return {{QStringLiteral("username"), name},
                {QStringLiteral("password"), QStringLiteral("a good password")}};
    }

    const quint16 port;
    const TlsPeer peer;
    QByteArray cookie;
};

} // namespace tideloft::tests
