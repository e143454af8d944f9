// What becomes of an account, and of what others have from it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/accounts.h"
#include "service/store/device_keys.h"
#include "service/store/groups.h"
#include "service/store/maintenance.h"
#include "service/store/pictures.h"
#include "service/store/sessions.h"
#include "service/store/versions.h"
#include "tests/service/store/store_fixture.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestStoredAccounts : public QObject
{
    Q_OBJECT

private slots:
    void init() { store.reset(new StoreFixture); }
    void disabledIsSignedOutAndKeepsEverything();
    void newPasswordSignsOut();
    void endedSessionsAreForgottenInMemory();
    void deletedLeavesNothingOfItsOwn();
    void deletedLeavesWhatOthersHave();
    void messagesGoWithTheLastWhoHasThem();
    void othersWriteBetweenThePiecesOfADeletion();
    void brokenOffDeletionIsBegunAgain();
    void brokenOffDeletionLeavesNoConversationWithoutMessage();
    void nameOfADeletedAccountIsKept();
    void groupWithOthersStays();
    void accountsAreListed();

private:
    Database &database() const { return store->database; }
    qint64 rows(const QString &table) const { return database().number(u"SELECT count(*) FROM "_s + table); }

    QScopedPointer<StoreFixture> store;
};

void TestStoredAccounts::disabledIsSignedOutAndKeepsEverything()
{
    addSession(database(), "a", store->alice, 0, 100);
    addSession(database(), "b", store->bob, 0, 100);
    store->send(store->alice, store->bob, u"one"_s, 5);
    disableUser(database(), store->alice);
    QCOMPARE(stateOf(database(), store->alice), UserState::Disabled);
    QVERIFY(!sessionOwner(database(), "a"));
    QVERIFY(sessionOwner(database(), "b"));
    QCOMPARE(store->history(store->alice, store->bob), "one");
    QVERIFY(findUser(database(), u"alice"_s));
    enableUser(database(), store->alice);
    QCOMPARE(stateOf(database(), store->alice), UserState::Active);
    QCOMPARE(lockCredentials(database(), store->alice).hash, "hash");
}

void TestStoredAccounts::newPasswordSignsOut()
{
    addSession(database(), "a", store->alice, 0, 100);
    setPassword(database(), store->alice, "other");
    QCOMPARE(lockCredentials(database(), store->alice).hash, "other");
    QCOMPARE(lockCredentials(database(), store->bob).hash, "hash");
    QVERIFY(!sessionOwner(database(), "a"));
}

void TestStoredAccounts::endedSessionsAreForgottenInMemory()
{
    StoreCache cache;
    database().use(cache);
    addSession(database(), "a", store->alice, 0, 100);
    addSession(database(), "b", store->alice, 0, 100);
    cache.sessions.replace("a", {store->alice.id, u"alice"_s, 100});
    QCOMPARE(endSessions(database(), store->alice), 2);
    QVERIFY(!cache.sessions.find("a"));
}

void TestStoredAccounts::deletedLeavesNothingOfItsOwn()
{
    addSession(database(), "a", store->alice, 0, 100);
    storeDeviceKey(database(), store->alice, {u"d1"_s, u"Desk"_s, u"key"_s}, 1);
    replaceAvatar(database(), store->alice, u"avatar"_s, {"image/png", "png"});
    addGroup(database(), store->alice, {u"g"_s, u"Chess"_s, {}, {}}, 1);
    replaceIcon(database(), *findGroupRow(database(), store->alice, u"g"_s), u"icon"_s, {"image/png", "png"});
    setBio(database(), store->alice, u"I sail."_s);
    store->send(store->alice, store->alice, u"note"_s, 2);
    deleteUser(database(), store->alice);
    for (const QString &table : {u"sessions"_s, u"device_keys"_s, u"pictures"_s, u"chat_groups"_s,
                                 u"group_members"_s, u"messages"_s, u"conversations"_s})
        QVERIFY2(rows(table) == 0, qPrintable(table));
    QCOMPARE(profileOf(database(), store->alice).bio, QString());
    QCOMPARE(lockCredentials(database(), store->alice).hash, QByteArray());
    QCOMPARE(problemsOf(database()), QStringList());
}

void TestStoredAccounts::deletedLeavesWhatOthersHave()
{
    store->send(store->alice, store->bob, u"one"_s, 2);
    store->send(store->bob, store->alice, u"two"_s, 3);
    const qint64 before = historyVersion(database(), store->bob, store->alice.name);
    deleteUser(database(), store->alice);
    QCOMPARE(store->history(store->bob, store->alice), "one two");
    QCOMPARE(store->conversations(store->bob), "alice:two");
    QCOMPARE(historyVersion(database(), store->bob, store->alice.name),
             before); // nothing has changed for bob
    QVERIFY(!findUser(database(), u"alice"_s));
    QCOMPARE(findUserOrDeleted(database(), u"Alice"_s)->id, store->alice.id);
    QCOMPARE(findNames(database(), u"alice"_s, store->bob, 9), QStringList());
}

void TestStoredAccounts::messagesGoWithTheLastWhoHasThem()
{
    store->send(store->alice, store->bob, u"one"_s, 2);
    store->send(store->bob, store->alice, u"two"_s, 3);
    store->send(store->bob, store->carol, u"three"_s, 3);
    deleteUser(database(), store->alice);
    QCOMPARE(rows(u"messages"_s), 3);
    deleteUser(database(), store->bob);
    QCOMPARE(rows(u"messages"_s), 1);
    QCOMPARE(store->conversations(store->carol), "bob:three");
}

void TestStoredAccounts::othersWriteBetweenThePiecesOfADeletion()
{
    for (int i = 0; i < 250; ++i)
        store->send(store->alice, store->alice, QString::number(i), 2);
    Store other(store->place());
    int pieces = 0;
    deleteUser(database(), store->alice, [&] {
        setBio(other, store->bob, QString::number(++pieces));
        QCOMPARE(stateOf(other, store->alice), UserState::Disabled);
    });
    QVERIFY(pieces >= 2);
    QCOMPARE(profileOf(database(), store->bob).bio, QString::number(pieces));
    QCOMPARE(rows(u"messages"_s), 0);
    QCOMPARE(stateOf(database(), store->alice), UserState::Deleted);
}

void TestStoredAccounts::brokenOffDeletionIsBegunAgain()
{
    for (int i = 0; i < 150; ++i)
        store->send(store->alice, store->alice, QString::number(i), 2);
    QVERIFY_THROWS_EXCEPTION(
        std::runtime_error, deleteUser(database(), store->alice, [] { throw std::runtime_error("killed"); }));
    QVERIFY(rows(u"messages"_s) > 0);
    const std::optional<User> again = findUser(database(), u"alice"_s);
    QVERIFY(again);
    deleteUser(database(), *again);
    QCOMPARE(rows(u"messages"_s), 0);
    QVERIFY(!findUser(database(), u"alice"_s));
}

// The last message of the two is in the first piece, and others before it are not.
void TestStoredAccounts::brokenOffDeletionLeavesNoConversationWithoutMessage()
{
    for (int i = 0; i < 150; ++i)
        store->send(store->alice, store->bob, QString::number(i), 2);
    store->send(store->bob, store->alice, u"last"_s, 3);
    deleteUser(database(), store->bob);
    QVERIFY_THROWS_EXCEPTION(
        std::runtime_error, deleteUser(database(), store->alice, [] { throw std::runtime_error("killed"); }));
    QVERIFY(rows(u"messages"_s) > 0);
    QCOMPARE(problemsOf(database()), QStringList());
}

void TestStoredAccounts::nameOfADeletedAccountIsKept()
{
    deleteUser(database(), store->alice);
    QVERIFY(!addUser(database(), u"alice"_s, "hash", 9));
}

void TestStoredAccounts::groupWithOthersStays()
{
    addGroup(database(), store->alice, {u"g"_s, u"Chess"_s, {}, {}}, 1);
    database().run(u"INSERT INTO group_members (user_id, group_id) SELECT ?, group_id FROM group_members"_s,
                   {store->bob.id});
    deleteUser(database(), store->alice);
    QCOMPARE(groupsOf(database(), store->bob).size(), 1);
    QCOMPARE(groupsOf(database(), store->alice).size(), 0);
}

void TestStoredAccounts::accountsAreListed()
{
    addSession(database(), "a", store->alice, 0, 100);
    addSession(database(), "b", store->alice, 0, 10); // has run out
    storeDeviceKey(database(), store->alice, {u"d1"_s, u"Desk"_s, u"key"_s}, 1);
    store->send(store->alice, store->bob, u"one"_s, 2);
    disableUser(database(), store->bob);
    QStringList listed;
    visitAccounts(database(), 50, [&listed](const Account &account) {
        listed << u"%1 %2 %3 %4 %5 %6"_s.arg(account.name)
                      .arg(int(account.state))
                      .arg(account.createdAt)
                      .arg(account.messages)
                      .arg(account.devices)
                      .arg(account.sessions);
    });
    QCOMPARE(listed, (QStringList{u"alice 0 1 1 1 1"_s, u"bob 1 1 0 0 0"_s, u"carol 0 1 0 0 0"_s}));
}

TIDELOFT_TEST_MAIN(TestStoredAccounts)
#include "tst_accounts.moc"
