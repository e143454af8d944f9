// Forgetting of old messages while clients poll and send.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/figures.h"
#include "bench/service_load/pollers.h"
#include "bench/service_load/processes.h"
#include "bench/service_load/rows.h"

#include "service/api/api.h"
#include "service/api/json_reply.h"
#include "service/http/server.h"
#include "service/store/schema.h"

#include <cstdio>
#include <memory>
#include <thread>

using namespace Qt::StringLiterals;

namespace tideloft::bench
{

namespace
{

constexpr int days = 30;

/// The service in this process: the program looks for old messages only ten minutes after its start.
class ForgetfulService
{
public:
    explicit ForgetfulService(const QString &file)
    {
        service::StoreSettings store{file};
        store.background.whenDone = std::chrono::seconds(1);
        service::ApiSettings settings;
        settings.keepMessagesDays = days;
        api = std::make_unique<service::Api>(store, settings);
        service::ServerSettings listening;
        listening.port = 0;
        listening.refuse = &service::errorResponse;
        listening.limits.connectionsOfOnePeer = listening.limits.connections;
        listening.admit = [this](const service::Request &head) { return api->admit(head); };
        server = std::make_unique<service::HttpServer>(
            listening, [this](const service::Request &request) { return api->handle(request); });
        thread = std::thread([this] { server->run(); });
    }
    Q_DISABLE_COPY_MOVE(ForgetfulService)
    ~ForgetfulService()
    {
        server->stop();
        thread.join();
        server.reset();
    }

    std::uint16_t port() const { return server->port(); }

private:
    std::unique_ptr<service::Api> api;
    std::unique_ptr<service::HttpServer> server;
    std::thread thread;
};

// All that was written before now is too old then, and what is sent meanwhile is not.
void makeOld(const QString &file)
{
    service::Store database(file);
    database.run(u"UPDATE messages SET created_at = created_at - ?"_s,
                 {qint64{days + 10} * 24 * 60 * 60 * 1000});
}

qint64 messagesIn(const QString &file)
{
    service::Store database(file);
    return database.number(u"SELECT count(*) FROM messages"_s);
}

} // namespace

void measureRetention(bool full)
{
    const int clients = full ? 200 : 50;
    const double seconds = full ? 60 : 5;
    const Folder folder;
    const QString file = folder.path(u"service.sqlite"_s);
    const std::vector<SeededUser> users = seed(file, clients, full ? 1000 : 200);
    makeOld(file);
    const qint64 before = messagesIn(file);
    PollResults results;
    double elapsed = 0;
    {
        const ForgetfulService service(file);
        Loop loop;
        const auto pollers = startPollers(loop, {service.port()}, users, {3, true, 0.01, 2}, results, 3);
        const Time begin = Clock::now();
        loop.run(seconds);
        elapsed = secondsSince(begin);
    }
    const qint64 gone = before - messagesIn(file);
    const double p99 = results.latencies.percentile(0.99);
    report(QByteArray::number(clients)
               + " clients poll every 3 s, 1 % sends, while old messages are forgotten",
           QByteArray::number(results.errors) + " errors, p99 " + rounded(p99) + " ms of "
               + QByteArray::number(quint64(results.latencies.count())) + ", "
               + rounded(static_cast<double>(gone) / elapsed, 0) + " messages/s forgotten (in pieces of 50)",
           "no error, p99 under 50 ms, at least 100 messages/s", // 8 million a day
           results.errors == 0 && p99 < 50 && static_cast<double>(gone) / elapsed >= 100);
    for (const QByteArray &example : results.examples)
        std::fprintf(stderr, "error: %s\n", example.constData());
}

} // namespace tideloft::bench
