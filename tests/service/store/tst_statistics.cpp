// How much there is.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/accounts.h"
#include "service/store/invitations.h"
#include "service/store/sessions.h"
#include "service/store/statistics.h"
#include "tests/service/store/store_fixture.h"
#include "tests/support/test_main.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestStatistics : public QObject
{
    Q_OBJECT

private slots:
    void emptyDatabaseHasNothing();
    void everythingIsCounted();
    void sizeIsThatOfTheFile();
};

void TestStatistics::emptyDatabaseHasNothing()
{
    const QTemporaryDir folder;
    Store database(folder.filePath(u"test.sqlite"_s));
    const Statistics found = statistics(database, 1);
    QCOMPARE(found.activeUsers, 0);
    QCOMPARE(found.messages, 0);
    QCOMPARE(found.oldestMessage, 0);
}

void TestStatistics::everythingIsCounted()
{
    StoreFixture store;
    store.send(store.alice, store.bob, u"two"_s, 20);
    store.send(store.alice, store.carol, u"one"_s, 10); // a clock went wrong
    disableUser(store.database, store.bob);
    deleteUser(store.database, store.carol);
    addSession(store.database, "a", store.alice, 0, 100);
    addSession(store.database, "b", store.alice, 0, 10);
    addInvitation(store.database, u"erin"_s, 1);
    const Statistics found = statistics(store.database, 50);
    QCOMPARE(found.activeUsers, 1);
    QCOMPARE(found.disabledUsers, 1);
    QCOMPARE(found.deletedUsers, 1);
    QCOMPARE(found.sessions, 1);
    QCOMPARE(found.invitations, 1);
    QCOMPARE(found.messages, 2);
    QCOMPARE(found.oldestMessage, 10);
    QCOMPARE(found.conversations, 3); // of alice two, of bob one
    QVERIFY(found.databaseBytes > 0);
}

void TestStatistics::sizeIsThatOfTheFile()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"test.sqlite"_s);
    Store database(file);
    database.pragma(u"wal_checkpoint(TRUNCATE)"_s);
    QCOMPARE(statistics(database, 1).databaseBytes, QFileInfo(file).size());
}

TIDELOFT_TEST_MAIN(TestStatistics)
#include "tst_statistics.moc"
