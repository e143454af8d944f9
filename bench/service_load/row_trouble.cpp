// Sends while the database cannot be written.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/figures.h"
#include "bench/service_load/client.h"
#include "bench/service_load/latencies.h"
#include "bench/service_load/processes.h"
#include "bench/service_load/rows.h"
#include "bench/service_load/seed.h"
#include "bench/service_load/stored.h"

#include "service/store/schema.h"

#include <QFile>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tideloft::bench
{

namespace
{

/// What became of the sends of one phase.
struct Phase {
    int stored = 0;
    int refused = 0; ///< with 503 and a message
    int other = 0;
    double slowest = 0; ///< milliseconds
};

// Sends a new message every 50 ms from each of eight users, whatever became of the one before.
class Senders
{
public:
    Senders(Loop &owner, std::uint16_t port, const std::vector<SeededUser> &who) : loop(owner), users(who)
    {
        for (std::size_t i = 0; i < users.size(); ++i)
            clients.push_back(std::make_unique<Client>(loop, Where{port}));
    }

    Phase runFor(double seconds)
    {
        phase = {};
        for (std::size_t i = 0; i < clients.size(); ++i)
            send(i);
        loop.run(seconds);
        return phase;
    }

    QSet<QString> acknowledged;

private:
    void send(std::size_t index)
    {
        if (clients[index]->waiting() == 0) {
            const std::uint64_t number = ++lastNumber;
            clients[index]->ask(sendRequest(users[index], number),
                                [this, number](const Reply &reply) { look(reply, number); });
        }
        loop.at(later(0.05), [this, index] { send(index); });
    }

    void look(const Reply &reply, std::uint64_t number)
    {
        if (reply.status == 201)
            acknowledged.insert(QString::fromStdString(nonceText(number)));
        const bool isRefused = reply.status == 503 && reply.body.find("\"message\":") != std::string::npos;
        phase.stored += reply.status == 201 ? 1 : 0;
        phase.refused += isRefused ? 1 : 0;
        phase.other += reply.status != 201 && !isRefused ? 1 : 0;
        phase.slowest = std::max(phase.slowest, reply.milliseconds);
    }

    Loop &loop;
    const std::vector<SeededUser> &users;
    std::vector<std::unique_ptr<Client>> clients;
    Phase phase;
    std::uint64_t lastNumber = 0;
};

void allowFileSize(const ServiceProcess &service, rlim_t bytes)
{
    const rlimit limit{bytes, RLIM_INFINITY};
    prlimit(service.processId(), RLIMIT_FSIZE, &limit, nullptr);
}

// The file system refuses to write, also to who has opened the file before. False where that takes other
// rights or another file system.
bool makeImmutable(const QString &path, bool immutable)
{
    const int file = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    long flags = 0;
    bool done = file >= 0 && ioctl(file, FS_IOC_GETFLAGS, &flags) == 0;
    flags = immutable ? flags | FS_IMMUTABLE_FL : flags & ~static_cast<long>(FS_IMMUTABLE_FL);
    done = done && ioctl(file, FS_IOC_SETFLAGS, &flags) == 0;
    close(file);
    return done;
}

QByteArray textOf(const Phase &phase)
{
    return QByteArray::number(phase.refused) + " refused with 503 and a message, "
           + QByteArray::number(phase.stored) + " stored, " + QByteArray::number(phase.other)
           + " other, slowest " + rounded(phase.slowest, 0) + " ms";
}

/// Something that keeps the database from being written, and can be made and ended.
using Trouble = std::function<void(bool begin)>;

void measureOne(Senders &senders, const QByteArray &figure, const Trouble &trouble, double seconds)
{
    const Phase before = senders.runFor(1);
    trouble(true);
    const Phase during = senders.runFor(seconds);
    trouble(false);
    senders.runFor(1); // what was begun meanwhile may still be refused
    const Phase after = senders.runFor(1);
    report("sends for " + rounded(seconds, 0) + " s while " + figure,
           textOf(during) + "; then " + textOf(after), "503 with a message, then stored again",
           before.stored > 0 && during.refused > 0 && during.other == 0 && after.stored > 0
               && after.refused == 0 && after.other == 0);
}

// Another connection that begins to write, and does not end.
Trouble heldBy(const QString &database)
{
    const auto other = std::make_shared<std::unique_ptr<service::Store>>();
    const auto held = std::make_shared<std::unique_ptr<service::Transaction>>();
    return [database, other, held](bool begin) {
        held->reset();
        other->reset(begin ? new service::Store(database) : nullptr);
        if (begin)
            *held = std::make_unique<service::Transaction>(**other);
    };
}

} // namespace

void measureTrouble(bool full)
{
    const double seconds = full ? 10 : 2;
    const Folder folder;
    const QString database = folder.path(u"service.sqlite"_s);
    const std::vector<SeededUser> users = seed(database, 8, 2);
    ServiceProcess service(folder, ServiceProcess::Transport::Plain, {u"--quiet"_s});
    service.start();
    Loop loop;
    Senders senders(loop, service.port(), users);
    measureOne(
        senders, "the disk is full", [&](bool is) { allowFileSize(service, is ? 1 : RLIM_INFINITY); },
        seconds);
    measureOne(senders, "another process holds the database", heldBy(database), seconds);
    const auto immutable = [&](bool is) {
        return makeImmutable(database, is) && makeImmutable(database + u"-wal"_s, is);
    };
    if (immutable(true) && immutable(false))
        measureOne(senders, "the files may only be read", immutable, seconds);
    else
        inform("sends while the files may only be read", "not measured: only root can make them so");
    service.stop();
    const StoredCheck check = checkStored(database, senders.acknowledged);
    report("acknowledged messages after these troubles",
           QByteArray::number(check.lost) + " lost, " + QByteArray::number(check.doubled) + " doubled of "
               + QByteArray::number(senders.acknowledged.size()) + (check.isWhole ? "" : ", damaged"),
           "0 lost, 0 doubled", check.lost == 0 && check.doubled == 0 && check.isWhole);
}

} // namespace tideloft::bench
