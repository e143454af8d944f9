// Entry point of the companion service: opens the database and the port, and serves until it is told to stop.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/api.h"
#include "service/api/json_reply.h"
#include "service/http/server.h"
#include "service/log.h"
#include "service/metrics_server.h"
#include "service/options.h"
#include "service/start_check.h"
#include "service/store/engines.h"
#include "service/system/process.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <thread>

using namespace tideloft::service;
using namespace Qt::StringLiterals;

namespace
{

void print(FILE *stream, const QString &text)
{
    std::fputs(text.toUtf8().constData(), stream);
    std::fflush(stream);
}

ServerSettings serverSettings(const Options &options, Counters &counters,
                              const std::shared_ptr<LogOutput> &output)
{
    ServerSettings settings;
    settings.address = options.listen;
    settings.port = options.port;
    settings.certificateFile = options.certificateFile;
    settings.keyFile = options.keyFile;
    settings.trustedProxies = options.trustedProxies;
    settings.proxyProtocol = options.proxyProtocol;
    settings.limits.connections = static_cast<std::size_t>(options.connections);
    settings.limits.connectionsOfOnePeer = static_cast<std::size_t>(options.connectionsPerAddress);
    settings.answered = [&counters](const QByteArray &method, const Response &response,
                                    std::chrono::nanoseconds duration) {
        counters.requestFinished(method, response.route, response.status, duration);
    };
    settings.log = [output](LogLevel level, std::uint64_t request, const QByteArray &line) {
        output->write(level, request, line);
    };
    return settings;
}

ApiSettings apiSettings(const Options &options)
{
    ApiSettings settings;
    settings.secureCookies = !options.certificateFile.isEmpty();
    settings.historyLimit = options.historyLimit;
    settings.signInsPerMinute = options.signInsPerMinute;
    settings.registrationsPerMinute = options.registrationsPerMinute;
    settings.registration = options.registration;
    settings.keepMessagesDays = options.keepMessages;
    settings.quota = {options.quotaMessages, inBytes(options.quotaMegabytes), options.quotaConversations};
    settings.pictureBytes = inBytes(options.quotaPictureMegabytes);
    settings.hashingThreads = std::max(1U, std::thread::hardware_concurrency() / 2);
    return settings;
}

QString origin(const Options &options, std::uint16_t port)
{
    const QString host = options.listen.contains(u':') ? u"[%1]"_s.arg(options.listen) : options.listen;
    return u"%1://%2:%3"_s.arg(options.certificateFile.isEmpty() ? u"http"_s : u"https"_s, host).arg(port);
}

void serve(const Options &options)
{
    allowManyFiles();
    keepNoLargeMemory();
    outliveFailedWrites();
    const auto output = std::make_shared<LogOutput>(standardError, options.quiet);
    const ToolkitMessages toolkitMessages(output);
    Counters counters;
    ServerSettings settings = serverSettings(options, counters, output);
    ApiSettings forApi = apiSettings(options);
    settings.transfers = forApi.transfers = transferBudget(settings.limits);
    const QString place = databasePlace(options);
    StoreSettings store{place};
    store.committed = [&counters](std::chrono::nanoseconds duration) { counters.commitFinished(duration); };
    Api api(store, forApi);
    settings.refuse = &errorResponse;
    settings.admit = [&api](const Request &head) { return api.admit(head); };
    HttpServer server(settings, [&api](const Request &request) { return api.handle(request); });
    server.stopOnSignals();
    std::optional<MetricsServer> metrics;
    if (options.metricsPort >= 0)
        metrics.emplace(static_cast<std::uint16_t>(options.metricsPort), counters, api, server,
                        engineFor(place)->file());
    print(stdout, u"listening on %1\n"_s.arg(origin(options, server.port())));
    if (metrics)
        print(stdout, u"metrics on http://127.0.0.1:%1/metrics\n"_s.arg(metrics->port()));
    server.run();
}

int tellOfCheck(const Options &options)
{
    const StartCheck check = checkStart(options, databasePlace(options));
    for (const QString &warning : check.warnings)
        print(stderr, u"tideloftd: warning: %1\n"_s.arg(warning));
    for (const QString &problem : check.problems)
        print(stderr, u"tideloftd: %1\n"_s.arg(problem));
    if (check.problems.isEmpty())
        print(stdout, u"The service could start like this.\n"_s);
    return check.problems.isEmpty() ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    keepFilesForOwner();
    outliveEarlyRenewals();
    const QCoreApplication application(argc, argv);
    QCoreApplication::setOrganizationName(u"TideLoft"_s);
    QCoreApplication::setApplicationName(u"tideloftd"_s);
    const Command command = parseCommandLine(QCoreApplication::arguments());
    if (!command.serve) {
        print(command.exitCode == 0 ? stdout : stderr, command.text);
        return command.exitCode;
    }
    if (command.checkOnly)
        return tellOfCheck(*command.serve);
    try {
        serve(*command.serve);
    } catch (const std::exception &error) {
        print(stderr, u"tideloftd: %1\n"_s.arg(QString::fromUtf8(error.what())));
        return 1;
    }
    return 0;
}
