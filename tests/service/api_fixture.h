// All endpoints over a database of their own, called without a socket; cheap passwords, and a clock to turn.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/api/api.h"
#include "service/api/json_reply.h"
#include "service/store/schema.h"
#include "tests/service/chosen_storage.h"
#include "tests/service/semaphore.h"

#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTimeZone>

#include <atomic>
#include <memory>

namespace tideloft::tests
{

class ApiFixture
{
public:
    /// CHANGE is made to the settings of the service.
    explicit ApiFixture(const std::function<void(service::ApiSettings &)> &change = {})
        : database(place()),
          api(storage(), settings(change))
    {
    }

    QString place() const { return chosen.place(directory.filePath(QStringLiteral("test.sqlite"))); }

    service::Response call(const QByteArray &method, const QByteArray &target, const QByteArray &body = {},
                           const QByteArray &cookie = {}) const
    {
        return finish(api.handle({method, target, "application/json", cookie, body}));
    }

    service::Response post(const QByteArray &target, const QJsonObject &body,
                           const QByteArray &cookie = {}) const
    {
        return call("POST", target, QJsonDocument(body).toJson(), cookie); // indented, as the client sends it
    }

    service::Response get(const QByteArray &target, const QByteArray &cookie) const
    {
        return call("GET", target, {}, cookie);
    }

    /// Makes an account, signs in, and returns the Cookie header of the session.
    QByteArray signUp(const QString &name) const
    {
        const QJsonObject body{{QStringLiteral("username"), name},
                               {QStringLiteral("password"), QStringLiteral("a good password")}};
        post("/api/auth/register", body);
        return cookieOf(post("/api/auth/login", body));
    }

    static QByteArray cookieOf(const service::Response &response)
    {
        return setCookieOf(response).split(';').constFirst();
    }

    static QByteArray setCookieOf(const service::Response &response)
    {
        for (const auto &[name, value] : response.headers) {
            if (name == "Set-Cookie")
                return value;
        }
        return {};
    }

    /// Begins what comes later; the response is there once the semaphore is free.
    struct Begun {
        Semaphore finished;
        service::Response response;
    };
    static std::shared_ptr<Begun> begin(const service::Reply &reply)
    {
        auto begun = std::make_shared<Begun>();
        const auto finish = [begun](const service::Response &response) {
            begun->response = response;
            begun->finished.release();
        };
        if (const auto *later = std::get_if<service::Later<service::Response>>(&reply))
            later->start(finish);
        else
            finish(std::get<service::Response>(reply));
        return begun;
    }

    static service::Response finish(const service::Reply &reply)
    {
        const std::shared_ptr<Begun> begun = begin(reply);
        begun->finished.acquire();
        return begun->response;
    }

    static QJsonObject object(const service::Response &response)
    {
        return QJsonDocument::fromJson(response.body).object();
    }

    static QJsonArray array(const service::Response &response)
    {
        return QJsonDocument::fromJson(response.body).array();
    }

    static QString message(const service::Response &response)
    {
        return object(response).value(QStringLiteral("message")).toString();
    }

    QTemporaryDir directory;
    ChosenStorage chosen;
    QDateTime now = QDateTime(QDate(2026, 5, 4), QTime(10, 0, 0, 7), QTimeZone::utc()).toUTC();
    std::atomic<qint64> jump = 0; ///< days by which the computer's clock is wrong
    service::Store database;      ///< a connection of the test's own
    service::Api api;

private:
    service::StoreSettings storage() const
    {
        service::StoreSettings wanted{place()};
        wanted.background.whenDone = std::chrono::milliseconds(10);
        return wanted;
    }

    service::ApiSettings settings(const std::function<void(service::ApiSettings &)> &change)
    {
        service::ApiSettings wanted;
        wanted.scryptCost = {16, 8, 1};
        wanted.signInsPerMinute = 0;
        wanted.registrationsPerMinute = 0;
        wanted.now = [this] { return now.addDays(jump); };
        wanted.steadyNow = [this] { return now.toMSecsSinceEpoch(); };
        if (change)
            change(wanted);
        return wanted;
    }
};

} // namespace tideloft::tests
