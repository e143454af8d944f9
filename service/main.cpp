// Entry point of the companion service: opens the database and the port, and serves until it is told to stop.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/api.h"
#include "service/api/json_reply.h"
#include "service/http/server.h"
#include "service/options.h"

#include <QCoreApplication>
#include <QStandardPaths>

#include <cstdio>

#include <sys/stat.h>

using namespace tideloft::service;
using namespace Qt::StringLiterals;

namespace
{

void print(FILE *stream, const QString &text)
{
    std::fputs(text.toUtf8().constData(), stream);
    std::fflush(stream);
}

QString databaseFile(const Options &options)
{
    if (!options.database.isEmpty())
        return options.database;
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + u"/tideloftd.sqlite"_s;
}

ServerSettings serverSettings(const Options &options)
{
    ServerSettings settings;
    settings.address = options.listen;
    settings.port = options.port;
    settings.certificateFile = options.certificateFile;
    settings.keyFile = options.keyFile;
    if (!options.quiet)
        settings.log = [](const QByteArray &line) { std::fprintf(stderr, "%s\n", line.constData()); };
    return settings;
}

QString origin(const Options &options, std::uint16_t port)
{
    const QString host = options.listen.contains(u':') ? u"[%1]"_s.arg(options.listen) : options.listen;
    return u"%1://%2:%3"_s.arg(options.certificateFile.isEmpty() ? u"http"_s : u"https"_s, host).arg(port);
}

void serve(const Options &options)
{
    ApiSettings apiSettings;
    apiSettings.secureCookies = !options.certificateFile.isEmpty();
    ServerSettings settings = serverSettings(options);
    settings.transfers = apiSettings.transfers = transferBudget(settings.limits);
    Api api({databaseFile(options)}, apiSettings);
    settings.refuse = &errorResponse;
    settings.admit = [&api](const Request &head) { return api.admit(head); };
    HttpServer server(settings, [&api](const Request &request) { return api.handle(request); });
    server.stopOnSignals();
    print(stdout, u"listening on %1\n"_s.arg(origin(options, server.port())));
    server.run();
}

} // namespace

int main(int argc, char **argv)
{
    umask(S_IRWXG | S_IRWXO); // whatever is written is nobody else's to read
    const QCoreApplication application(argc, argv);
    QCoreApplication::setOrganizationName(u"TideLoft"_s);
    QCoreApplication::setApplicationName(u"tideloftd"_s);
    const Command command = parseCommandLine(QCoreApplication::arguments());
    if (!command.serve) {
        print(command.exitCode == 0 ? stdout : stderr, command.text);
        return command.exitCode;
    }
    try {
        serve(*command.serve);
    } catch (const std::exception &error) {
        print(stderr, u"tideloftd: %1\n"_s.arg(QString::fromUtf8(error.what())));
        return 1;
    }
    return 0;
}
