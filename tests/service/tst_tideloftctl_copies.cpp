// Backups of a service that runs, and putting them back.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/control_program.h"
#include "tests/service/daemon_client.h"
#include "tests/service/message_bodies.h"
#include "tests/service/postgresql_cluster.h"
#include "tests/support/test_main.h"

#include <QDir>
#include <QFileInfo>
#include <QUuid>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestTideloftctlCopies : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void backupUnderLoadHoldsWhatWasAcknowledged();
    void backupIsOfOwnerOnlyAndReplacesNothing();
    void restoreWaitsForNobody();
    void restoredServiceKnowsWhatWasBackedUp();
    void restoreOfAnotherMachineMakesTheDatabase();
    void filesBelongToTheOwnerOfTheDatabase();
    void damagedBackupChangesNothing();
    void damageIsTold();
    void statisticsAreTold();
    void messageTakesSomeTwoKilobytes();
    void everythingMovesToAServerAndBack();
    void copyWantsWhatIsThereAndNobodyElse();

private:
    Ended run(const QString &line) const { return control(daemon->databaseFile(), line); }
    QString copy() const { return folder->filePath(u"copy.sqlite"_s); }
    int send(const QString &text) const
    {
        return alice->post("/api/chat/send", plainMessage(u"alice"_s, text)).status;
    }
    int sentMessages() const
    {
        return int(DaemonClient::array(alice->get("/api/chat/history/alice")).size());
    }

    QScopedPointer<QTemporaryDir> folder;
    QScopedPointer<Daemon> daemon;
    QScopedPointer<DaemonClient> alice;
};

void TestTideloftctlCopies::init()
{
    folder.reset(new QTemporaryDir);
    daemon.reset(new Daemon);
    QVERIFY(daemon->startPlain());
    alice.reset(new DaemonClient(*daemon));
    QCOMPARE(alice->registerAs(u"alice"_s), 201);
    QCOMPARE(alice->signIn(u"alice"_s).status, 200);
}

void TestTideloftctlCopies::backupUnderLoadHoldsWhatWasAcknowledged()
{
    for (int i = 0; i < 50; ++i)
        QCOMPARE(send(QString(5000, u'x')), 201);
    QProcess backup;
    backup.start(QStringLiteral(TIDELOFTCTL),
                 controlArguments(daemon->databaseFile(), u"backup "_s + copy()));
    int meanwhile = 0;
    do {
        QCOMPARE(send(u"meanwhile"_s), 201);
        ++meanwhile;
    } while (!backup.waitForFinished(0));
    const Ended ended = endOf(backup);
    QCOMPARE(ended.code, 0);
    QCOMPARE(control(copy(), u"check"_s).code, 0);
    const QByteArray counted = control(copy(), u"stats"_s).output;
    const int messages =
        QRegularExpression(u"Messages +(\\d+)"_s).match(QString::fromLatin1(counted)).captured(1).toInt();
    QVERIFY2(messages >= 50 && messages <= 50 + meanwhile, counted.constData());
}

void TestTideloftctlCopies::backupIsOfOwnerOnlyAndReplacesNothing()
{
    QCOMPARE(run(u"backup "_s + copy()).code, 0);
    QCOMPARE(QFile::permissions(copy()) & (QFile::ReadGroup | QFile::ReadOther), 0);
    const Ended again = run(u"backup "_s + copy());
    QCOMPARE(again.code, 1);
    QVERIFY(again.errors.contains("exists already"));
    QCOMPARE(QDir(folder->path()).entryList(QDir::Files), QStringList{u"copy.sqlite"_s});
}

void TestTideloftctlCopies::restoreWaitsForNobody()
{
    QCOMPARE(run(u"backup "_s + copy()).code, 0);
    QCOMPARE(send(u"later"_s), 201);
    const Ended refused = run(u"restore "_s + copy());
    QCOMPARE(refused.code, 1);
    QVERIFY2(refused.errors.contains("is in use by another process"), refused.errors.constData());
    QCOMPARE(sentMessages(), 1);
}

void TestTideloftctlCopies::restoredServiceKnowsWhatWasBackedUp()
{
    QCOMPARE(send(u"before"_s), 201);
    QCOMPARE(run(u"backup "_s + copy()).code, 0);
    QCOMPARE(send(u"after"_s), 201);
    QCOMPARE(daemon->stop(SIGKILL),
             -1); // what it leaves beside its database must not be taken for the new one's
    const Ended restored = run(u"restore "_s + copy());
    QVERIFY2(restored.code == 0, restored.errors.constData());
    const QString kept = QString::fromUtf8(restored.output).section(u"before is "_s, 1).trimmed().chopped(1);
    QVERIFY(daemon->startPlain());
    QCOMPARE(sentMessages(), 1);
    QCOMPARE(control(kept, u"check"_s).code, 0);
    QVERIFY(control(kept, u"stats"_s).output.simplified().contains("Messages 2 "));
}

void TestTideloftctlCopies::restoreOfAnotherMachineMakesTheDatabase()
{
    QCOMPARE(run(u"backup "_s + copy()).code, 0);
    const QString database = folder->filePath(u"new/test.sqlite"_s);
    QCOMPARE(control(database, u"restore "_s + copy()).code, 0);
    QCOMPARE(control(database, u"check"_s).code, 0);
    QVERIFY(control(database, u"user list"_s).output.contains("\nalice"));
}

// Root looks after a database that belongs to the user of the service.
void TestTideloftctlCopies::filesBelongToTheOwnerOfTheDatabase()
{
    if (geteuid() != 0)
        return; // nobody else may give files away
    QCOMPARE(run(u"backup "_s + copy()).code, 0);
    QCOMPARE(daemon->stop(SIGTERM), 0);
    const QString place = QFileInfo(daemon->databaseFile()).absolutePath();
    const QDir database(place);
    for (const QString &file : database.entryList(QDir::Files) + QStringList{u"."_s})
        QCOMPARE(::chown(database.filePath(file).toUtf8().constData(), 12345, 12345), 0);
    QVERIFY(QFile::remove(daemon->databaseFile() + u".lock"_s));
    QCOMPARE(run(u"user list"_s).code, 0);
    QCOMPARE(run(u"restore "_s + copy()).code, 0);
    for (const QString &file : database.entryList(QDir::Files)) {
        struct stat status {
        };
        QCOMPARE(::stat(database.filePath(file).toUtf8().constData(), &status), 0);
        QVERIFY2(status.st_uid == 12345 && status.st_gid == 12345, qPrintable(file));
    }
}

void TestTideloftctlCopies::damagedBackupChangesNothing()
{
    QCOMPARE(run(u"backup "_s + copy()).code, 0);
    QFile file(copy());
    QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(4096));
    QCOMPARE(file.write(QByteArray(4096, 'x')), 4096);
    file.close();
    QCOMPARE(daemon->stop(SIGTERM), 0);
    const Ended refused = run(u"restore "_s + copy());
    QCOMPARE(refused.code, 1);
    QVERIFY(refused.errors.contains(copy().toUtf8()));
    QVERIFY(daemon->startPlain());
    QCOMPARE(alice->get("/api/me").status, 200);
}

void TestTideloftctlCopies::damageIsTold()
{
    const Ended sound = run(u"check"_s);
    QCOMPARE(sound.code, 0);
    QVERIFY(sound.output.endsWith(" is sound.\n"));
    QCOMPARE(run(u"backup "_s + copy()).code, 0);
    QFile file(copy());
    QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(8192));
    QCOMPARE(file.write(QByteArray(4096, 'x')), 4096);
    file.close();
    const Ended damaged = control(copy(), u"check"_s);
    QCOMPARE(damaged.code, 1);
    QVERIFY(!damaged.errors.isEmpty());
}

void TestTideloftctlCopies::statisticsAreTold()
{
    QCOMPARE(send(u"one"_s), 201);
    const QByteArray told = run(u"stats"_s).output.simplified();
    QVERIFY2(told.startsWith("Users 1 "), told.constData());
    QVERIFY(told.contains(" Messages 1 Oldest message 20"));
}

// The figure stands in docs/self-hosting.md. A text of 100 letters is sealed for two devices and the sender's
// own.
void TestTideloftctlCopies::messageTakesSomeTwoKilobytes()
{
    constexpr int count = 300;
    const QString device = QUuid::createUuid().toString(QUuid::WithoutBraces);
    const QString before = folder->filePath(u"before.sqlite"_s);
    QCOMPARE(run(u"backup "_s + before).code, 0);
    for (int i = 0; i < count; ++i) {
        QJsonObject body = numberedMessage(u"alice"_s, i);
        body[u"text"_s] = base64(116, 't');
        body[u"recipientKeys"_s] = QJsonArray{wrappedKey(device), wrappedKey(device)};
        body[u"senderKeys"_s] = QJsonArray{wrappedKey(device)};
        QCOMPARE(alice->post("/api/chat/send", body).status, 201);
    }
    QCOMPARE(run(u"backup "_s + copy()).code, 0);
    const qint64 each = (QFileInfo(copy()).size() - QFileInfo(before).size()) / count;
    QVERIFY2(each > 1500 && each < 2500, qPrintable(QString::number(each)));
}

void TestTideloftctlCopies::everythingMovesToAServerAndBack()
{
    QCOMPARE(send(u"one"_s), 201);
    QCOMPARE(daemon->stop(SIGTERM), 0);
    PostgresqlCluster cluster;
    const QString server = cluster.newPlace();
    const auto moved = [](const QString &from, const QString &to, const QString &more = {}) {
        return control({}, u"copy "_s + from + u' ' + to + more);
    };
    const Ended there = moved(daemon->databaseFile(), server);
    QVERIFY2(there.code == 0, there.errors.constData());
    QVERIFY2(there.output.simplified().contains(" messages 1 "), there.output.constData());
    QVERIFY(daemon->startPlain({u"--database"_s, server}));
    QCOMPARE(sentMessages(), 1); // with the session of before
    QCOMPARE(send(u"two"_s), 201);
    QCOMPARE(daemon->stop(SIGTERM), 0);
    const Ended unsure = moved(server, daemon->databaseFile());
    QCOMPARE(unsure.code, 1);
    QVERIFY(unsure.errors.contains("--yes"));
    const Ended back = moved(server, daemon->databaseFile(), u" --yes"_s);
    QVERIFY2(back.code == 0, back.errors.constData());
    QVERIFY(daemon->startPlain());
    QCOMPARE(sentMessages(), 2);
    QCOMPARE(run(u"check"_s).code, 0);
}

void TestTideloftctlCopies::copyWantsWhatIsThereAndNobodyElse()
{
    const QString missing = folder->filePath(u"missing.sqlite"_s);
    QVERIFY(control({}, u"copy "_s + missing + u' ' + copy()).errors.contains("There is no database"));
    QVERIFY(!QFile::exists(missing));
    const Ended running = control({}, u"copy "_s + daemon->databaseFile() + u' ' + copy());
    QVERIFY2(running.errors.contains("is in use by another process"), running.errors.constData());
    QVERIFY(!QFile::exists(copy()));
}

TIDELOFT_TEST_MAIN(TestTideloftctlCopies)
#include "tst_tideloftctl_copies.moc"
