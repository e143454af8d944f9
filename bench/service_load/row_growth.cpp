// What a poll and a send cost in a large database, beside a small one.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/figures.h"
#include "bench/service_load/closed_loop.h"
#include "bench/service_load/compared.h"
#include "bench/service_load/grown.h"
#include "bench/service_load/processes.h"
#include "bench/service_load/rows.h"
#include "service/store/schema.h"
#include "tests/service/postgresql_cluster.h"

#include <random>

using namespace Qt::StringLiterals;

namespace tideloft::bench
{

namespace
{

// A service on a database with so many users, and one request after the other for one after the other of
// them.
class GrownService
{
public:
    GrownService(const QString &at, int users)
        : place(at.isEmpty() ? folder.path(u"service.sqlite"_s) : at),
          seeded(grow(place, users)),
          service(folder, ServiceProcess::Transport::Plain, {u"--quiet"_s, u"--database"_s, place})
    {
        service.start();
    }

    double millisecondsOfAPoll(double seconds)
    {
        return measure(
            seconds,
            [this](int) {
                return ++asked % 2 == 0 ? historyRequest(anybody()) : conversationsRequest(anybody());
            },
            200);
    }

    double millisecondsOfASend(double seconds)
    {
        return measure(
            seconds, [this](int) { return sendRequest(anybody(), ++sent); }, 201);
    }

    /// Of the whole database, in GB.
    double size() const
    {
        service::Database database(place, service::Database::Access::ReadOnly);
        return static_cast<double>(database.engine().extent(database).bytes) / 1e9;
    }

private:
    const SeededUser &anybody()
    {
        return seeded[std::uniform_int_distribution<std::size_t>(0, seeded.size() - 1)(generator)];
    }
    double measure(double seconds, const std::function<std::string(int)> &next, int status) const
    {
        return 1000
               / repliesASecond(
                   {{service.port()},
                    1,
                    next,
                    [status](const Reply &reply) { return reply.status == status && reply.bodyBytes > 10; }},
                   seconds);
    }

    const Folder folder;
    const QString place;
    const std::vector<SeededUser> seeded;
    ServiceProcess service;
    std::mt19937 generator{1};
    std::uint64_t asked = 0;
    std::uint64_t sent = 0;
};

QByteArray manyOf(int users)
{
    return QByteArray::number(qint64{users} * messagesOfAUser) + " messages and " + QByteArray::number(users)
           + " users";
}

void reportGrowth(const QByteArray &what, const QByteArray &of, const Compared &compared)
{
    reportRatio(what + ' ' + of, compared.ratio, 1.5,
                rounded(compared.own, 3) + " ms, smaller " + rounded(compared.floor, 3) + " ms, "
                    + roundsText());
}

void compareGrown(GrownService &large, GrownService &small, const QByteArray &of, double seconds)
{
    reportGrowth("time of a poll", of,
                 compare([&] { return large.millisecondsOfAPoll(seconds); },
                         [&] { return small.millisecondsOfAPoll(seconds); }));
    reportGrowth("time of a send", of,
                 compare([&] { return large.millisecondsOfASend(seconds); },
                         [&] { return small.millisecondsOfASend(seconds); }));
}

QByteArray titleOf(int users, int fewUsers, const GrownService &large, const QByteArray &engine)
{
    return "with " + manyOf(users) + " (" + rounded(large.size()) + " GB) vs " + manyOf(fewUsers) + ", "
           + engine;
}

// A small database has plans of its own, so there are two.
constexpr int fewUsers = 100;
constexpr int moreUsers = 1'000;
constexpr int manyUsers = 100'000;
constexpr int manyInAMoment = 5'000;

} // namespace

void measureGrowth(bool full)
{
    const int users = full ? manyUsers : manyInAMoment;
    const QStringList settings{u"shared_buffers=2GB"_s, u"maintenance_work_mem=512MB"_s,
                               u"wal_level=minimal"_s,  u"max_wal_senders=0"_s,
                               u"wal_compression=on"_s, u"max_wal_size=4GB"_s};
    const tests::PostgresqlCluster few(settings);
    const tests::PostgresqlCluster more(settings);
    const tests::PostgresqlCluster many(settings);
    GrownService small(few.url(), fewUsers);
    GrownService middle(more.url(), moreUsers);
    GrownService large(many.url(), users);
    compareGrown(large, small, titleOf(users, fewUsers, large, "PostgreSQL"), full ? 5 : 1);
    compareGrown(large, middle, titleOf(users, moreUsers, large, "PostgreSQL"), full ? 5 : 1);
}

void measureGrowthOfAFile(bool full)
{
    const int users = full ? manyUsers : manyInAMoment;
    GrownService small({}, fewUsers);
    GrownService middle({}, moreUsers);
    GrownService large({}, users);
    compareGrown(large, small, titleOf(users, fewUsers, large, "SQLite"), full ? 5 : 1);
    compareGrown(large, middle, titleOf(users, moreUsers, large, "SQLite"), full ? 5 : 1);
}

} // namespace tideloft::bench
