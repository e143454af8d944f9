// The service beside nginx, which does nothing but send bytes, and beside the disk.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/figures.h"
#include "bench/service_load/closed_loop.h"
#include "bench/service_load/compared.h"
#include "bench/service_load/processes.h"
#include "bench/service_load/rows.h"
#include "bench/service_load/seed.h"

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tideloft::bench
{

namespace
{

// How often a second so much can be appended to a file and brought to the disk.
double syncsASecond(const QString &path, double seconds)
{
    const int file =
        open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    const QByteArray page(4096, 'x');
    int count = 0;
    const Time begin = Clock::now();
    while (secondsSince(begin) < seconds) {
        if (::write(file, page.constData(), static_cast<std::size_t>(page.size())) != page.size()
            || fdatasync(file) != 0)
            qFatal("Could not write %s", qPrintable(path));
        ++count;
    }
    const double rate = count / secondsSince(begin);
    close(file);
    return rate;
}

} // namespace

void measureSaturation(bool full)
{
    const Folder folder;
    const std::vector<SeededUser> users = seed(folder.path(u"service.sqlite"_s), 32, 100);
    QDir().mkdir(folder.path(u"www"_s));
    writeFile(folder.path(u"www/empty"_s), {});
    ServiceProcess service(folder, ServiceProcess::Transport::Plain);
    service.start();
    const Nginx nginx(folder);
    std::vector<std::string> requests;
    requests.reserve(users.size());
    for (const SeededUser &user : users)
        requests.push_back(historyRequest(user, replyTo({service.port()}, historyRequest(user)).etag));
    const std::string empty = getRequest(users[0], "/empty");
    const ClosedLoop own{{service.port()},
                         32,
                         [&](int i) { return requests[static_cast<std::size_t>(i)]; },
                         [](const Reply &reply) { return reply.status == 304; }};
    const ClosedLoop floor{{nginx.port()},
                           32,
                           [&](int) { return empty; },
                           [](const Reply &reply) { return reply.status == 200; }};
    const double seconds = full ? 5 : 1;
    reportCompared(
        "unchanged polls at saturation, 32 connections, vs nginx serving an empty file",
        compare([&] { return repliesASecond(own, seconds); }, [&] { return repliesASecond(floor, seconds); }),
        "nginx", 0.3);
}

void measureHistory(bool full)
{
    const Folder folder;
    const std::vector<SeededUser> users = seed(folder.path(u"service.sqlite"_s), 16, 500);
    ServiceProcess service(folder, ServiceProcess::Transport::Plain);
    service.start();
    const std::size_t size = replyTo({service.port()}, historyRequest(users[0])).bodyBytes;
    QDir().mkdir(folder.path(u"www"_s));
    writeFile(folder.path(u"www/history"_s), QByteArray(static_cast<qsizetype>(size), 'x'));
    const Nginx nginx(folder);
    const auto isWhole = [size](const Reply &reply) {
        return reply.status == 200 && reply.bodyBytes == size;
    };
    const ClosedLoop own{{service.port()},
                         16,
                         [&](int i) { return historyRequest(users[static_cast<std::size_t>(i)]); },
                         isWhole};
    const ClosedLoop floor{
        {nginx.port()}, 16, [&](int) { return getRequest(users[0], "/history"); }, isWhole};
    const double seconds = full ? 5 : 1;
    reportCompared(
        "a history of 500 messages (" + rounded(static_cast<double>(size) / 1000, 0)
            + " kB), 16 connections, vs nginx serving as many bytes from a file",
        compare([&] { return repliesASecond(own, seconds); }, [&] { return repliesASecond(floor, seconds); }),
        "nginx", 0.15);
}

void measureSends(bool full)
{
    const Folder folder;
    const std::vector<SeededUser> users = seed(folder.path(u"service.sqlite"_s), 64, 2);
    ServiceProcess service(folder, ServiceProcess::Transport::Plain);
    service.start();
    std::uint64_t number = 0;
    const double seconds = full ? 5 : 1;
    reportCompared("durable sends of 64 writers vs appending 4 KiB and fdatasync",
                   compare([&] { return sendsASecond({service.port()}, users, number, seconds); },
                           [&] { return syncsASecond(folder.path(u"sync"_s), seconds); }),
                   "the disk", 4);
}

} // namespace tideloft::bench
