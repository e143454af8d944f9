// Sends to a service on PostgreSQL, beside what the server itself can insert.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/figures.h"
#include "bench/service_load/closed_loop.h"
#include "bench/service_load/compared.h"
#include "bench/service_load/processes.h"
#include "bench/service_load/rows.h"
#include "bench/service_load/seed.h"
#include "tests/service/postgresql_cluster.h"

#include <QProcess>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tideloft::bench
{

namespace
{

// One row a transaction, of the columns and the size of a message. The nonce is another one each time.
QByteArray insertScript()
{
    const QByteArray keys = QByteArray(393, 'k');
    return "\\set nonce random(1000000000000000, 9000000000000000)\n"
           "INSERT INTO inserted (sender_id, recipient_id, text, iv, recipient_keys, sender_keys, encrypted,"
           " created_at, position) VALUES (1, 2, '"
           + QByteArray(128, 'c') + "', :nonce, '" + keys + "', '" + keys + "', 1, 1760000000000, 1);\n";
}

// Transactions a second of 64 connections to the same server.
double insertsASecond(const tests::PostgresqlCluster &cluster, const QString &script, double seconds)
{
    QProcess pgbench;
    pgbench.start(tests::PostgresqlCluster::program(u"pgbench"_s),
                  {u"--no-vacuum"_s, u"--client=64"_s, u"--jobs=2"_s, u"--protocol=prepared"_s,
                   u"--time=%1"_s.arg(seconds), u"--file="_s + script, u"--host=127.0.0.1"_s,
                   u"--port=%1"_s.arg(cluster.port()), u"--username=tideloft"_s, u"postgres"_s});
    pgbench.waitForFinished(-1);
    static const QRegularExpression rate(u"tps = ([0-9.]+)"_s);
    const QRegularExpressionMatch found = rate.match(QString::fromUtf8(pgbench.readAllStandardOutput()));
    if (!found.hasMatch())
        qFatal("pgbench: %s", pgbench.readAllStandardError().constData());
    return found.captured(1).toDouble();
}

// Nothing is kept in memory of a shared database, so each asks the server.
double unchangedPollsASecond(const Where &where, const std::vector<SeededUser> &users, double seconds)
{
    std::vector<std::string> requests;
    requests.reserve(users.size());
    for (const SeededUser &user : users)
        requests.push_back(historyRequest(user, replyTo(where, historyRequest(user)).etag));
    return repliesASecond({where, static_cast<int>(requests.size()),
                           [&](int i) { return requests[static_cast<std::size_t>(i)]; },
                           [](const Reply &reply) { return reply.status == 304; }},
                          seconds);
}

} // namespace

void measureSharedSends(bool full)
{
    const Folder folder;
    tests::PostgresqlCluster cluster(QStringList{});
    const std::vector<SeededUser> users = seed(cluster.url(), 64, 2);
    if (!cluster.run(u"CREATE TABLE inserted (LIKE messages INCLUDING ALL)"_s))
        qFatal("No table could be made.");
    const QString script = folder.path(u"insert.sql"_s);
    writeFile(script, insertScript());
    ServiceProcess service(folder, ServiceProcess::Transport::Plain, {u"--database"_s, cluster.url()});
    service.start();
    std::uint64_t number = 0;
    const double seconds = full ? 10 : 2;
    reportCompared("durable sends of 64 writers on PostgreSQL vs pgbench inserting as large rows",
                   compare([&] { return sendsASecond({service.port()}, users, number, seconds); },
                           [&] { return insertsASecond(cluster, script, seconds); }),
                   "pgbench", 0.5);
    inform("unchanged polls of 64 connections on PostgreSQL",
           rounded(unchangedPollsASecond({service.port()}, users, seconds), 0) + "/s");
}

} // namespace tideloft::bench
