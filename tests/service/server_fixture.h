// A server on a thread of its own, with limits that a test need not wait for.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "service/http/server.h"
#include "tests/service/raw_requests.h"

#include <mutex>

#include <thread>

namespace tideloft::tests
{

/// Refusals as the whole service writes them.
inline service::Response refusalInJson(const service::Refusal &refusal)
{
    return service::refusalResponse(refusal, "application/json; charset=utf-8",
                                    replyWith({{QStringLiteral("message"), refusal.message}}).body);
}

class ServerFixture
{
public:
    using AdmissionRule = std::function<service::Admitted(const service::Request &head)>;

    explicit ServerFixture(
        service::Handler handler, const service::ServerLimits &limits = {},
        const AdmissionRule &admit = [](const auto &) { return service::Admission(); })
        : ServerFixture(std::move(handler), limited(limits, admit))
    {
    }
    ServerFixture(service::Handler handler, service::ServerSettings settings)
        : server(completed(std::move(settings)), std::move(handler)),
          thread([this] { server.run(); })
    {
    }
    Q_DISABLE_COPY_MOVE(ServerFixture)
    ~ServerFixture() { stop(); }

    void stop()
    {
        server.stop();
        if (thread.joinable())
            thread.join();
    }

    quint16 port() const { return server.port(); }

    QList<QByteArray> log()
    {
        const std::lock_guard lock(mutex);
        return lines;
    }

private:
    static service::ServerSettings limited(const service::ServerLimits &limits, const AdmissionRule &admit)
    {
        service::ServerSettings wanted;
        wanted.limits = limits;
        wanted.admit = admit;
        return wanted;
    }
    service::ServerSettings completed(service::ServerSettings wanted)
    {
        wanted.port = 0;
        wanted.refuse = &refusalInJson;
        wanted.log = [this](service::LogLevel, std::uint64_t, const QByteArray &line) {
            const std::lock_guard lock(mutex);
            lines << line;
        };
        return wanted;
    }

    std::mutex mutex;
    QList<QByteArray> lines;
    service::HttpServer server;
    std::thread thread;
};

} // namespace tideloft::tests
