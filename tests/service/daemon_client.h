// Requests to a service that runs as a process of its own, without TLS.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/service/daemon.h"
#include "tests/service/service_call.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tideloft::tests
{

class DaemonClient
{
public:
    explicit DaemonClient(const Daemon &service) : daemon(service) {}

    HttpReply call(const QByteArray &method, const QByteArray &target, const QByteArray &body = {}) const
    {
        HttpClient client(daemon.port());
        return tests::call(client, method, target, cookie, body);
    }
    HttpReply post(const QByteArray &target, const QJsonObject &body) const
    {
        return call("POST", target, QJsonDocument(body).toJson());
    }
    HttpReply get(const QByteArray &target) const { return call("GET", target); }

    int registerAs(const QString &name, const QString &password = usualPassword()) const
    {
        return post("/api/auth/register", credentials(name, password)).status;
    }

    /// The session is kept when there is one.
    HttpReply signIn(const QString &name, const QString &password = usualPassword())
    {
        const HttpReply reply = post("/api/auth/login", credentials(name, password));
        if (reply.status == 200)
            cookie = reply.headers.value("set-cookie").split(';').constFirst();
        return reply;
    }

    static QString usualPassword() { return QStringLiteral("a good password"); }
    static QString message(const HttpReply &reply)
    {
        return QJsonDocument::fromJson(reply.body)[QStringLiteral("message")].toString();
    }
    static QJsonArray array(const HttpReply &reply) { return QJsonDocument::fromJson(reply.body).array(); }

private:
    static QJsonObject credentials(const QString &name, const QString &password)
    {
        return {{QStringLiteral("username"), name}, {QStringLiteral("password"), password}};
    }

    const Daemon &daemon;
    QByteArray cookie;
};

} // namespace tideloft::tests
