// Everything goes from a file to a server and back, and the copy works like the first.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/accounts.h"
#include "service/store/copy.h"
#include "service/store/device_keys.h"
#include "service/store/groups.h"
#include "service/store/invitations.h"
#include "service/store/pictures.h"
#include "service/store/sessions.h"
#include "tests/service/postgresql_cluster.h"
#include "tests/service/store/store_fixture.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestCopy : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void everythingGoesThereAndBack();
    void copyWorksLikeTheFirst();
    void repeatedCopyReplacesTheLast();
    void brokenCopyChangesNothing();

private:
    QString filePlace(const QString &name) const { return store->path(name); }
    static QStringList rowsOf(const QList<CopiedTable> &tables)
    {
        QStringList all;
        for (const CopiedTable &table : tables)
            all << u"%1 %2"_s.arg(table.name).arg(table.rows);
        return all;
    }

    QScopedPointer<StoreFixture> store;
    QString server;
};

void TestCopy::init()
{
    store.reset(new StoreFixture);
    server = PostgresqlCluster::ofThisProcess().newPlace();
    Database &first = store->database;
    for (int i = 0; i < 450; ++i) // more than two pieces
        store->send(i % 2 == 0 ? store->alice : store->bob, store->carol, u"%1 \U0001F44B"_s.arg(i), i);
    store->send(store->alice, store->alice, QString(u"zero "_s + QChar(0) + u" \uFDD0 it's \\x"_s), 9);
    addSession(first, QByteArray("\x00\xff\x27", 3), store->alice, 0, 100);
    storeDeviceKey(first, store->alice, {u"d1"_s, u"Desk"_s, u"key"_s}, 1);
    replaceAvatar(first, store->alice, u"avatar"_s, {"image/png", QByteArray("\x89PNG\x00\\'", 7)});
    addGroup(first, store->alice, {u"g"_s, u"Chess"_s, {}, {}}, 1);
    replaceIcon(first, *findGroupRow(first, store->alice, u"g"_s), u"icon"_s, {"image/gif", "gif"});
    addInvitation(first, u"zoe"_s, 1);
    disableUser(first, store->bob);
}

void TestCopy::everythingGoesThereAndBack()
{
    Store middle(server);
    const QStringList there = rowsOf(copyEverything(store->database, middle));
    QCOMPARE(there, (QStringList{u"users 3"_s, u"name_ends 13"_s, u"sessions 1"_s, u"device_keys 1"_s,
                                 u"chat_groups 1"_s, u"group_members 1"_s, u"pictures 2"_s, u"messages 451"_s,
                                 u"conversations 5"_s, u"invitations 1"_s, u"facts 0"_s}));
    Store last(filePlace(u"last.sqlite"_s));
    QCOMPARE(rowsOf(copyEverything(middle, last)), there);
    QVERIFY(last.run(u"SELECT 1 FROM pictures WHERE user_id IS NULL AND name = 'icon'"_s).next());
    QCOMPARE(findPicture(last, u"avatar"_s)->content, QByteArray("\x89PNG\x00\\'", 7));
    QVERIFY(sessionOwner(last, QByteArray("\x00\xff\x27", 3)));
    QCOMPARE(stateOf(last, store->bob), UserState::Disabled);
}

void TestCopy::copyWorksLikeTheFirst()
{
    Store copy(server);
    copyEverything(store->database, copy);
    const auto texts = [this](Database &database) {
        QByteArrayList all;
        visitHistory(database, store->carol, store->alice, 9999, [&all](const MessageRow &row) {
            all << row.text;
            return true;
        });
        return all;
    };
    QCOMPARE(texts(copy), texts(store->database));
    constexpr qint64 any = std::numeric_limits<qint64>::max();
    QCOMPARE(storeMessage(copy, store->alice, store->carol, {u"new"_s, {}, u"[]"_s, u"[]"_s, false, 1},
                          {any, any, any}),
             Stored::Now);
    QCOMPARE(texts(copy).constFirst(), "new");
    QVERIFY(addUser(copy, u"dave"_s, "hash", 1));
    QVERIFY(addGroup(copy, store->alice, {u"h"_s, u"Go"_s, {}, {}}, 1));
    replaceAvatar(copy, store->carol, u"other"_s, {"image/png", "png"});
}

void TestCopy::repeatedCopyReplacesTheLast()
{
    Store copy(server);
    QVERIFY(!holdsSomething(copy));
    copyEverything(store->database, copy);
    QVERIFY(holdsSomething(copy));
    addUser(copy, u"dave"_s, "hash", 1);
    store->add(u"erin"_s);
    copyEverything(store->database, copy);
    QVERIFY(findUser(copy, u"erin"_s));
    QVERIFY(!findUser(copy, u"dave"_s));
}

void TestCopy::brokenCopyChangesNothing()
{
    Store copy(server);
    addUser(copy, u"dave"_s, "hash", 1);
    copy.run(u"ALTER TABLE pictures ADD CONSTRAINT small CHECK (length(content) < 5)"_s);
    QVERIFY_THROWS_EXCEPTION(StorageError, copyEverything(store->database, copy));
    QVERIFY(findUser(copy, u"dave"_s));
    QVERIFY(!findUser(copy, u"alice"_s));
}

TIDELOFT_TEST_MAIN(TestCopy)
#include "tst_copy.moc"
