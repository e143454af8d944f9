// Clients that poll two services on one PostgreSQL server, behind the balancer as the package configures it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/service_load/polling.h"
#include "bench/service_load/rows.h"
#include "tests/service/balancer/balancer.h"
#include "tests/service/postgresql_cluster.h"

using namespace Qt::StringLiterals;

namespace tideloft::bench
{

namespace
{

void measureBehindBalancer(bool full, bool withTags)
{
    const int clients = full ? 1000 : 100;
    const Folder one;
    const Folder two;
    const tests::PostgresqlCluster cluster(QStringList{});
    const std::vector<SeededUser> users = seed(cluster.url(), clients, 100);
    tests::Haproxy balancer;
    const QStringList options = balancer.serviceOptions()
                                << u"--proxy-protocol"_s << u"--database"_s << cluster.url();
    ServiceProcess first(one, ServiceProcess::Transport::Plain, options);
    ServiceProcess second(two, ServiceProcess::Transport::Plain, options);
    first.start();
    second.start();
    if (!balancer.start({first.port(), second.port()}))
        qFatal("HAProxy does not come up.");
    const ClientContext tls = newClientContext();
    PollSettings settings;
    settings.withTags = withTags;
    settings.sendShare = 0.01;
    settings.apart = true; // the balancer counts the connections of each address
    Polling polling =
        pollFor(full ? 600 : 6, {balancer.endedPort, tls.get()}, users, settings, {&first, &second});
    reportPolling(QByteArray::number(clients) + " clients poll histories of 100 messages every 3 s "
                      + (withTags ? "with" : "without")
                      + " If-None-Match, 1 % sends, 2 services on one PostgreSQL behind HAProxy, TLS",
                  polling, 100, 0);
}

} // namespace

void measureShared(bool full)
{
    measureBehindBalancer(full, false);
}

void measureSharedUnchanged(bool full)
{
    measureBehindBalancer(full, true);
}

} // namespace tideloft::bench
