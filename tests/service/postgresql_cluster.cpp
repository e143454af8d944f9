// Starting and ending of PostgreSQL servers.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/postgresql_cluster.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTest>

#include <csignal>
#include <memory>

#include <grp.h>
#include <netinet/in.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tideloft::tests
{

using namespace Qt::StringLiterals;

namespace
{

constexpr uid_t nobody = 65534;

quint16 freePort()
{
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    socklen_t size = sizeof address;
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto *general = reinterpret_cast<sockaddr *>(&address);
    if (::bind(socket, general, size) != 0 || ::getsockname(socket, general, &size) != 0)
        qFatal("There is no free port.");
    ::close(socket);
    return ntohs(address.sin_port);
}

// It refuses to run as root, and must not outlive a test that was killed.
void prepare(QProcess &process)
{
    process.setChildProcessModifier([] {
        if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(nobody) != 0 || setuid(nobody) != 0))
            _exit(1);
        prctl(PR_SET_PDEATHSIG, SIGQUIT);
    });
}

} // namespace

PostgresqlCluster::PostgresqlCluster(QStringList more, Beginning beginning)
    : settings(std::move(more)),
      usedPort(freePort())
{
    if (geteuid() == 0 && ::chown(qPrintable(folder.path()), nobody, nobody) != 0)
        qFatal("The folder of the server cannot be given away.");
    if (beginning == Beginning::Bare)
        return;
    runTool(u"initdb"_s, {u"--auth=trust"_s, u"--no-sync"_s, u"--username=tideloft"_s, u"--encoding=UTF8"_s,
                          u"--locale=C.UTF-8"_s, u"-D"_s, data()});
    start();
}

PostgresqlCluster::~PostgresqlCluster()
{
    stop(SIGQUIT);
}

PostgresqlCluster &PostgresqlCluster::ofThisProcess()
{
    static std::unique_ptr<PostgresqlCluster> cluster;
    if (!cluster) {
        cluster = std::make_unique<PostgresqlCluster>();
        qAddPostRoutine([] { cluster.reset(); });
    }
    return *cluster;
}

void PostgresqlCluster::follow(const PostgresqlCluster &primary)
{
    runTool(u"pg_basebackup"_s, {u"-h"_s, u"127.0.0.1"_s, u"-p"_s, QString::number(primary.port()), u"-U"_s,
                                 u"tideloft"_s, u"-R"_s, u"--checkpoint=fast"_s, u"-D"_s, data()});
    start();
}

void PostgresqlCluster::runTool(const QString &name, const QStringList &arguments) const
{
    QProcess tool;
    prepare(tool);
    tool.start(program(name), arguments);
    if (!tool.waitForFinished(120'000) || tool.exitCode() != 0)
        qFatal("%s: %s", qPrintable(name), tool.readAllStandardError().constData());
}

void PostgresqlCluster::start()
{
    QStringList arguments{u"-D"_s, data()};
    for (const QString &setting :
         settings
             + QStringList{u"listen_addresses=127.0.0.1"_s, u"port=%1"_s.arg(usedPort),
                           u"unix_socket_directories="_s + folder.path(), u"max_connections=300"_s})
        arguments << u"-c"_s << setting;
    prepare(process);
    process.setStandardErrorFile(folder.filePath(u"log"_s), QIODevice::Append);
    process.start(program(u"postgres"_s), arguments);
    if (!QTest::qWaitFor([this] { return run(u"SELECT 1"_s); }, 60'000))
        qFatal("PostgreSQL does not come up: see %s", qPrintable(folder.path()));
}

void PostgresqlCluster::stop(int signal)
{
    if (process.state() == QProcess::NotRunning)
        return;
    ::kill(static_cast<pid_t>(process.processId()), signal);
    process.waitForFinished();
}

QString PostgresqlCluster::newPlace()
{
    const QString schema = u"place%1"_s.arg(++places);
    if (!run(u"CREATE SCHEMA "_s + schema))
        qFatal("A schema could not be made.");
    return url() + u"?options=-csearch_path%3D"_s + schema;
}

QString PostgresqlCluster::program(const QString &name)
{
    const QDir versions(u"/usr/lib/postgresql"_s);
    QString found;
    for (const QString &version : versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        if (QFile::exists(versions.filePath(version + u"/bin/postgres"_s))) // not its client programs alone
            found = versions.filePath(version + u"/bin/"_s + name);
    }
    return found;
}

QString PostgresqlCluster::url() const
{
    return u"postgresql://tideloft@127.0.0.1:%1/postgres"_s.arg(usedPort);
}

QString PostgresqlCluster::logged(const QString &place)
{
    return place + u"%20-clog_statement%3Dall"_s;
}

qsizetype PostgresqlCluster::statements() const
{
    return log().count("LOG:  statement: ");
}

QByteArray PostgresqlCluster::log() const
{
    QFile file(folder.filePath(u"log"_s));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool PostgresqlCluster::run(const QString &statement) const
{
    const QString name = u"owner"_s;
    bool done = false;
    {
        QSqlDatabase connection = QSqlDatabase::addDatabase(u"QPSQL"_s, name);
        connection.setHostName(u"127.0.0.1"_s);
        connection.setPort(usedPort);
        connection.setUserName(u"tideloft"_s);
        connection.setDatabaseName(u"postgres"_s);
        done = connection.open() && QSqlQuery(connection).exec(statement);
    }
    QSqlDatabase::removeDatabase(name);
    return done;
}

} // namespace tideloft::tests
