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

#include <QDirIterator>
#include <QFile>

#include <unistd.h>

#include <random>
#include <utility>

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
    /// On a file in the folder.
    GrownService(const Folder &home, int users)
        : GrownService(home.path(u"service.sqlite"_s), home.path(u"."_s), users)
    {
    }
    GrownService(const tests::PostgresqlCluster &cluster, int users)
        : GrownService(cluster.url(), cluster.data(), users)
    {
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
    GrownService(QString at, QString files, int users)
        : place(std::move(at)),
          filesOfThePlace(std::move(files)),
          seeded(grow(place, users)),
          service(folder, ServiceProcess::Transport::Plain, {u"--quiet"_s, u"--database"_s, place})
    {
        ::sync(); // the disk must not be busy with these rows when something is measured
        service.start();
    }
    const SeededUser &anybody()
    {
        return seeded[std::uniform_int_distribution<std::size_t>(0, seeded.size() - 1)(generator)];
    }
    // So that no request waits for the disk: some systems drop a file from memory when nobody has read the
    // file for some seconds.
    void readFiles() const
    {
        QByteArray piece(qsizetype{1024} * 1024, Qt::Uninitialized);
        QDirIterator files(filesOfThePlace, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
                continue; // the server has removed it meanwhile
            while (file.read(piece.data(), piece.size()) > 0) {
            }
        }
    }
    double measure(double seconds, const std::function<std::string(int)> &next, int status) const
    {
        readFiles();
        const auto check = [status](const Reply &reply) {
            return reply.status == status && reply.bodyBytes > 10;
        };
        const Where where{service.port()};
        return 1000 / repliesASecond({where, 1, next, check}, seconds);
    }

    const Folder folder;
    const QString place;
    const QString filesOfThePlace;
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
    GrownService small(few, fewUsers);
    GrownService middle(more, moreUsers);
    GrownService large(many, users);
    compareGrown(large, small, titleOf(users, fewUsers, large, "PostgreSQL"), full ? 5 : 1);
    compareGrown(large, middle, titleOf(users, moreUsers, large, "PostgreSQL"), full ? 5 : 1);
}

void measureGrowthOfAFile(bool full)
{
    const int users = full ? manyUsers : manyInAMoment;
    const Folder few;
    const Folder more;
    const Folder many;
    GrownService small(few, fewUsers);
    GrownService middle(more, moreUsers);
    GrownService large(many, users);
    compareGrown(large, small, titleOf(users, fewUsers, large, "SQLite"), full ? 5 : 1);
    compareGrown(large, middle, titleOf(users, moreUsers, large, "SQLite"), full ? 5 : 1);
}

} // namespace tideloft::bench
