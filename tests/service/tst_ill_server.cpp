// A PostgreSQL server that cannot write: the service says so, goes on to answer what only reads, loses
// nothing that it acknowledged, and recovers by itself.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/schema.h"
#include "tests/service/daemon.h"
#include "tests/service/message_bodies.h"
#include "tests/service/postgresql_cluster.h"
#include "tests/service/service_call.h"
#include "tests/service/stored_session.h"
#include "tests/service/variable.h"
#include "tests/support/test_main.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestIllServer : public QObject
{
    Q_OBJECT

private slots:
    void fullDiskIsToldAndLosesNothing();
    void readOnlyServerIsToldAndLosesNothing();

private:
    void start(const PostgresqlCluster &cluster)
    {
        daemon = std::make_unique<Daemon>();
        QVERIFY(daemon->startPlain({u"--database"_s, cluster.url()}));
        Database database(cluster.url());
        alice = storeSession(database, u"alice"_s);
    }
    HttpReply get(const QByteArray &target) const { return call(daemon->port(), "GET", target, alice); }

    /// Of a text that cannot be made smaller.
    HttpReply send()
    {
        QByteArray text(4500, Qt::Uninitialized);
        QRandomGenerator::global()->generate(text.begin(), text.end());
        const QString body = QString::fromLatin1(text.toBase64());
        const HttpReply reply =
            call(daemon->port(), "POST", "/api/chat/send", alice, plainMessage(u"alice"_s, body));
        acknowledged += reply.status == 201 ? 1 : 0;
        return reply;
    }
    static bool isRefusal(const HttpReply &reply)
    {
        return reply.status == 503 && reply.headers.value("retry-after") == "1"
               && reply.message()
                      == u"The service cannot store anything at the moment. Please try again later."_s;
    }
    void recovers()
    {
        QTRY_COMPARE_WITH_TIMEOUT(get("/healthz").status, 200, 30'000);
        QCOMPARE(send().status, 201);
        QCOMPARE(get("/api/chat/history/alice").array().size(), acknowledged);
        QCOMPARE(daemon->stop(SIGTERM), 0);
        QVERIFY(daemon->errors().contains(" problem "));
    }

    std::unique_ptr<Daemon> daemon;
    QByteArray alice;
    int acknowledged = 0;
};

// Room that is in the tables still is used up first. The server runs as a user who may read the library only
// where everybody may.
void TestIllServer::fullDiskIsToldAndLosesNothing()
{
    acknowledged = 0;
    const QTemporaryDir folder;
    const QFile::Permissions everybody = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner
                                         | QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther
                                         | QFile::ExeOther;
    const QString library = folder.filePath(QStringLiteral(FULL_DISK_NAME));
    QVERIFY(QFile::setPermissions(folder.path(), everybody));
    QVERIFY(QFile::copy(QStringLiteral(FULL_DISK_FOLDER "/" FULL_DISK_NAME), library));
    QVERIFY(QFile::setPermissions(library, everybody));
    QFile mark(folder.filePath(u"full"_s));
    std::unique_ptr<PostgresqlCluster> cluster;
    {
        const Variable place("TIDELOFT_FULL_DISK", mark.fileName().toUtf8());
        const Preloaded full(FULL_DISK_NAME, folder.path().toUtf8());
        cluster = std::make_unique<PostgresqlCluster>();
    }
    start(*cluster);
    QCOMPARE(send().status, 201);
    QVERIFY(mark.open(QIODevice::WriteOnly));
    HttpReply reply;
    for (int i = 0; i < 500 && reply.status != 503; ++i)
        reply = send();
    QVERIFY2(isRefusal(reply), reply.body.constData());
    QCOMPARE(get("/api/chat/history/alice").array().size(), acknowledged);
    QVERIFY(mark.remove());
    recovers();
}

// As a server is that has become a standby.
void TestIllServer::readOnlyServerIsToldAndLosesNothing()
{
    acknowledged = 0;
    const PostgresqlCluster cluster;
    start(cluster);
    QCOMPARE(send().status, 201);
    QVERIFY(cluster.run(u"ALTER SYSTEM SET default_transaction_read_only = on"_s));
    QVERIFY(cluster.run(u"SELECT pg_reload_conf()"_s));
    QTRY_COMPARE(get("/healthz").status, 503);
    QVERIFY(!get("/healthz").message().isEmpty());
    QVERIFY(isRefusal(send()));
    QCOMPARE(get("/api/chat/history/alice").array().size(), acknowledged);
    QVERIFY(cluster.run(u"ALTER SYSTEM RESET default_transaction_read_only"_s));
    QVERIFY(cluster.run(u"SELECT pg_reload_conf()"_s));
    recovers();
}

TIDELOFT_TEST_MAIN(TestIllServer)
#include "tst_ill_server.moc"
