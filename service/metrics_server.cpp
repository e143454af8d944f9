// Collecting the figures of one moment.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/metrics_server.h"

#include "service/api/json_reply.h"

#include <QFileInfo>

#include <utility>

namespace tideloft::service
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::chrono::milliseconds timeLimit{500}; // the database must not keep the figures back

ServerSettings settingsFor(std::uint16_t port)
{
    ServerSettings settings;
    settings.port = port;
    settings.limits.connections = 16;
    settings.refuse = &errorResponse;
    return settings;
}

Response page(const Counters &counters, const ServiceState &state)
{
    Response response;
    response.contentType = MetricsText::contentType;
    response.body = metricsPage(counters, state);
    return response;
}

} // namespace

MetricsServer::MetricsServer(std::uint16_t port, const Counters &counters, Api &endpoints,
                             const HttpServer &observed, QString place)
    : counted(counters),
      api(endpoints),
      service(observed),
      database(std::move(place)),
      server(settingsFor(port), [this](const Request &request) { return router.handle(request); })
{
    router.add("GET", "/metrics", [this](const Request &) { return answer(); });
    thread = std::thread([this] { server.run(); });
}

MetricsServer::~MetricsServer()
{
    server.stop();
    thread.join();
}

// The database may answer when this server is gone, so what it is given knows only what outlives both.
Reply MetricsServer::answer() const
{
    const ServiceState now = state();
    const auto withSessions = [&counters = counted, &endpoints = api, now](const Finish<Response> &finish) {
        const bool accepted =
            endpoints.countSessions([&counters, now, finish](const std::optional<qint64> &sessions) {
                ServiceState complete = now;
                complete.sessions = sessions;
                finish(page(counters, complete));
            });
        if (!accepted)
            finish(page(counters, now));
    };
    return Later<Response>{withSessions, timeLimit, page(counted, now)};
}

ServiceState MetricsServer::state() const
{
    ServiceState now;
    now.connections = service.connections();
    now.waitingReads = api.queues().reads;
    now.waitingWrites = api.queues().writes;
    now.waitingHashes = api.queues().hashes;
    now.databaseBytes = QFileInfo(database).size();
    now.journalBytes = QFileInfo(database + u"-wal"_s).size();
    now.certificateEnd = service.certificateEnd();
    return now;
}

} // namespace tideloft::service
