// The service is killed again and again under writers that send again what got no reply.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/figures.h"
#include "bench/service_load/client.h"
#include "bench/service_load/latencies.h"
#include "bench/service_load/processes.h"
#include "bench/service_load/rows.h"
#include "bench/service_load/seed.h"
#include "bench/service_load/stored.h"

#include <random>

using namespace Qt::StringLiterals;

namespace tideloft::bench
{

namespace
{

struct Written {
    QSet<QString> acknowledged;
    std::size_t repeated = 0;
    std::size_t refused = 0;
    std::uint64_t lastNumber = 0;
};

// Sends one message after the other, and each until it is acknowledged.
class Writer
{
public:
    Writer(Loop &owner, const Where &where, const SeededUser &who, Written &seen)
        : loop(owner),
          user(who),
          written(seen),
          client(owner, where)
    {
    }

    void next()
    {
        number = ++written.lastNumber;
        send();
    }

    void send()
    {
        client.ask(sendRequest(user, number), [this](const Reply &reply) { look(reply); });
    }

private:
    void look(const Reply &reply)
    {
        if (reply.status == 201) {
            written.acknowledged.insert(QString::fromStdString(nonceText(number)));
            return next();
        }
        written.repeated += reply.status == 0 ? 1 : 0;
        written.refused += reply.status == 0 ? 0 : 1;
        loop.at(later(0.005), [this] { send(); }); // the service is just starting again
    }

    Loop &loop;
    const SeededUser &user;
    Written &written;
    Client client;
    std::uint64_t number = 0;
};

// Kills and starts; returns after how many seconds there was an answer again.
double killOnce(ServiceProcess &service)
{
    service.kill();
    const Time begin = Clock::now();
    service.start();
    Loop loop;
    Client client(loop, {service.port()});
    std::function<void()> ask = [&] {
        client.ask("GET /healthz HTTP/1.1\r\nHost: h\r\n\r\n", [&](const Reply &reply) {
            if (reply.status == 200)
                return loop.stop();
            loop.at(later(0.001), ask);
        });
    };
    ask();
    loop.run(10);
    return secondsSince(begin);
}

/// What the kills came to.
struct Kills {
    int left = 0;
    int damaged = 0;    ///< times that integrity_check found something
    double slowest = 0; ///< seconds until there was an answer again
};

// The check of the whole database takes longer than a kill, so only some kills are followed by one.
void killAgain(Loop &loop, ServiceProcess &service, const QString &database, Kills &kills)
{
    static std::mt19937 generator(1);
    kills.slowest = std::max(kills.slowest, killOnce(service));
    if (--kills.left % 25 == 0) {
        service.kill();
        kills.damaged += isWhole(database) ? 0 : 1;
        service.start();
    }
    const double pause = std::uniform_real_distribution<double>(0.02, 0.4)(generator);
    loop.at(later(pause), [&] { kills.left > 0 ? killAgain(loop, service, database, kills) : loop.stop(); });
}

void reportKills(int count, const Written &written, const StoredCheck &check, const Kills &kills)
{
    report(QByteArray::number(count) + " times kill -9 under 32 writers that send again what got no reply",
           QByteArray::number(check.lost) + " lost, " + QByteArray::number(check.doubled) + " doubled, "
               + QByteArray::number(kills.damaged) + " damaged, answering after "
               + rounded(kills.slowest * 1000, 0) + " ms at most ("
               + QByteArray::number(written.acknowledged.size()) + " acknowledged, "
               + QByteArray::number(quint64(written.repeated)) + " sent again)",
           "0 lost, 0 doubled, 0 damaged, within 1 s",
           kills.left == 0 && check.lost == 0 && check.doubled == 0 && kills.damaged == 0
               && kills.slowest < 1);
}

} // namespace

void measureKills(bool full)
{
    const int count = full ? 300 : 5;
    const Folder folder;
    const QString database = folder.path(u"service.sqlite"_s);
    const std::vector<SeededUser> users = seed(database, 32, 2);
    ServiceProcess service(folder, ServiceProcess::Transport::Plain, {u"--quiet"_s});
    service.start();
    Written written;
    Loop loop;
    std::vector<std::unique_ptr<Writer>> writers;
    writers.reserve(users.size());
    for (const SeededUser &user : users)
        writers.push_back(std::make_unique<Writer>(loop, Where{service.port()}, user, written));
    for (const auto &writer : writers)
        writer->next();
    Kills kills{count};
    loop.at(later(0.5), [&] { killAgain(loop, service, database, kills); });
    loop.run(full ? 1200 : 60);
    service.kill();
    const StoredCheck check = checkStored(database, written.acknowledged);
    kills.damaged += check.isWhole ? 0 : 1;
    reportKills(count, written, check, kills);
}

} // namespace tideloft::bench
