// All endpoints behind a real port, on a thread of their own, and a client that speaks to them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api.h"
#include "service/api/json_reply.h"
#include "service/http/server.h"
#include "tests/service/chosen_storage.h"
#include "tests/service/http_client.h"
#include "tests/service/http_reply.h"
#include "tests/service/semaphore.h"

#include <QTemporaryDir>

#include <memory>
#include <thread>

namespace tideloft::tests
{

class ApiServer
{
public:
    /// Without limits on attempts, and with passwords that are hashed in no time.
    static service::ApiSettings usualSettings()
    {
        service::ApiSettings settings;
        settings.scryptCost = {16, 8, 1};
        settings.secureCookies = false;
        settings.signInsPerMinute = 0;
        settings.registrationsPerMinute = 0;
        return settings;
    }
    explicit ApiServer(service::ApiSettings settings = usualSettings())
        : apiSettings(std::move(settings)),
          thread([this] { run(); })
    {
        ready.acquire();
    }
    Q_DISABLE_COPY_MOVE(ApiServer)
    ~ApiServer()
    {
        server->stop();
        thread.join();
    }

    quint16 port() const { return server->port(); }

    HttpReply call(const QByteArray &method, const QByteArray &target, const QByteArray &cookie,
                   const QByteArray &body = {}, const QByteArray &contentType = "application/json",
                   const QByteArray &moreHeaders = {}) const
    {
        HttpClient client(port());
        const QByteArray length = QByteArray::number(body.size());
        return parsedReply(client.exchange(method + ' ' + target + " HTTP/1.1\r\nHost: h\r\nCookie: " + cookie
                                           + "\r\nContent-Type: " + contentType + "\r\nContent-Length: "
                                           + length + "\r\n" + moreHeaders + "\r\n" + body));
    }
    HttpReply get(const QByteArray &target, const QByteArray &cookie) const
    {
        return call("GET", target, cookie);
    }
    HttpReply post(const QByteArray &target, const QJsonObject &body, const QByteArray &cookie = {}) const
    {
        return call("POST", target, cookie, QJsonDocument(body).toJson());
    }

    /// Makes an account, signs in, and returns the Cookie header of the session.
    QByteArray signUp(const QString &name) const
    {
        const QJsonObject user{{QStringLiteral("username"), name},
                               {QStringLiteral("password"), QStringLiteral("a good password")}};
        post("/api/auth/register", user);
        return post("/api/auth/login", user).headers.value("set-cookie").split(';').constFirst();
    }

private:
    void run()
    {
        service::Api api({chosen.place(folder.filePath(QStringLiteral("test.sqlite")))}, apiSettings);
        service::ServerSettings settings;
        settings.port = 0;
        settings.refuse = &service::errorResponse;
        settings.admit = [&api](const service::Request &head) { return api.admit(head); };
        server = std::make_unique<service::HttpServer>(
            settings, [&api](const service::Request &request) { return api.handle(request); });
        ready.release();
        server->run();
    }

    const service::ApiSettings apiSettings;
    QTemporaryDir folder;
    const ChosenStorage chosen;
    Semaphore ready;
    std::unique_ptr<service::HttpServer> server;
    std::thread thread;
};

} // namespace tideloft::tests
