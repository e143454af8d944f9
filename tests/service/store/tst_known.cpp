// What is kept in memory of the database never falls behind it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/groups.h"
#include "service/store/messages.h"
#include "service/store/pictures.h"
#include "service/store/schema.h"
#include "service/store/sessions.h"
#include "service/store/store_threads.h"
#include "service/store/versions.h"
#include "tests/service/semaphore.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using tideloft::tests::Semaphore;

class TestKnown : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        folder.reset(new QTemporaryDir);
        database.reset(new Store(folder->filePath(u"test.sqlite"_s)));
        database->keep(known);
        known.forgetAll();
        addUser(*database, alice.name, "hash", 0);
        addUser(*database, bob.name, "hash", 0);
    }
    void cleanup() { database.reset(); }
    void committedIsNewerThanLearnt();
    void forgottenIsNotLearntAgain();
    void everyMessageChangesBothSides();
    void repeatedMessageChangesNothing();
    void plainMessageMayComeTwice();
    void quotasHold();
    void groupsChangeForTheirMembers();
    void rolledBackIsNotTold();
    void endedSessionIsNobodys();
    void otherProcessMakesEverythingForgotten();

private:
    qint64 knownVersion(const User &user, const QString &subject) const
    {
        return known.versions.find({user.id, subject}).value_or(0);
    }
    static StoredMessage sealed(const QString &iv = u"nonce"_s, const QString &text = u"text"_s)
    {
        return {text, iv, u"[]"_s, u"[]"_s, true, 5};
    }

    bool store(const User &from, const User &to, const StoredMessage &message)
    {
        return storeMessage(*database, from, to, message, {99, 999, 9}) == Stored::Now;
    }

    const User alice{1, u"alice"_s};
    const User bob{2, u"bob"_s};
    QScopedPointer<QTemporaryDir> folder;
    KnownState known;
    QScopedPointer<Store> database;
};

void TestKnown::committedIsNewerThanLearnt()
{
    const VersionKey key{1, u"x"_s};
    known.versions.learn(key, 5, known.versions.generation());
    QCOMPARE(known.versions.find(key), 5);
    known.versions.learn(key, 6, known.versions.generation()); // only the writer may say that it is another
    QCOMPARE(known.versions.find(key), 5);
    known.versions.replace(key, 7);
    QCOMPARE(known.versions.find(key), 7);
}

void TestKnown::forgottenIsNotLearntAgain()
{
    const VersionKey key{1, u"x"_s};
    const quint64 lookedAt = known.versions.generation();
    known.forgetAll();
    known.versions.learn(key, 5, lookedAt);
    QVERIFY(!known.versions.find(key));
    known.versions.learn(key, 5, known.versions.generation());
    QVERIFY(known.versions.find(key));
}

void TestKnown::everyMessageChangesBothSides()
{
    QVERIFY(store(alice, bob, sealed()));
    const QList<qint64> before{
        knownVersion(alice, conversationsSubject()), knownVersion(bob, conversationsSubject()),
        knownVersion(alice, historySubject(u"bob"_s)), knownVersion(bob, historySubject(u"alice"_s))};
    QCOMPARE(before,
             (QList<qint64>{conversationsVersion(*database, alice), conversationsVersion(*database, bob),
                            historyVersion(*database, alice, bob), historyVersion(*database, bob, alice)}));
    QCOMPARE(QSet<qint64>(before.begin(), before.end()).size(), 4); // nobody learns from one about another
    QVERIFY(store(bob, alice, sealed()));
    QVERIFY(knownVersion(alice, conversationsSubject()) != before[0]);
    QVERIFY(knownVersion(bob, conversationsSubject()) != before[1]);
    QVERIFY(knownVersion(alice, historySubject(u"bob"_s)) != before[2]);
    QVERIFY(knownVersion(bob, historySubject(u"alice"_s)) != before[3]);
}

void TestKnown::repeatedMessageChangesNothing()
{
    QVERIFY(store(alice, bob, sealed()));
    const qint64 version = knownVersion(alice, historySubject(u"bob"_s));
    QVERIFY(!store(alice, bob, sealed()));
    QCOMPARE(knownVersion(alice, historySubject(u"bob"_s)), version);
    QCOMPARE(database->number(u"SELECT message_count FROM users WHERE id = 1"_s), 1);
    // Anything else that differs is another message.
    QVERIFY(store(bob, alice, sealed()));
    QVERIFY(store(alice, alice, sealed()));
    QVERIFY(store(alice, bob, sealed(u"other nonce"_s)));
    QVERIFY(store(alice, bob, sealed(u"nonce"_s, u"other text"_s)));
    QCOMPARE(database->number(u"SELECT count(*) FROM messages"_s), 5);
}

void TestKnown::plainMessageMayComeTwice()
{
    QVERIFY(store(alice, bob, sealed({}, u"hej"_s)));
    QVERIFY(store(alice, bob, sealed({}, u"hej"_s)));
    QCOMPARE(database->number(u"SELECT count(*) FROM messages"_s), 2);
}

void TestKnown::quotasHold()
{
    const auto send = [this](const User &to, const QString &iv, const MessageQuota &quota) {
        return storeMessage(*database, alice, to, sealed(iv), quota);
    };
    const qint64 size = 10; // "n1", "text", "[]" and "[]"
    QCOMPARE(send(bob, u"n1"_s, {1, size, 0}), Stored::TooManyConversations);
    QCOMPARE(send(bob, u"n1"_s, {0, size, 1}), Stored::TooManyMessages);
    QCOMPARE(send(bob, u"n1"_s, {1, size - 1, 1}), Stored::TooManyBytes);
    QCOMPARE(database->number(u"SELECT count(*) FROM messages"_s), 0);
    QCOMPARE(send(bob, u"n1"_s, {1, size, 1}), Stored::Now);
    QCOMPARE(send(bob, u"n1"_s, {1, size, 1}), Stored::Before); // is no further message
    QCOMPARE(send(bob, u"n2"_s, {1, 999, 1}), Stored::TooManyMessages);
    QCOMPARE(send(bob, u"n2"_s, {2, 2 * size - 1, 1}), Stored::TooManyBytes);
    QCOMPARE(send(alice, u"n2"_s, {2, 999, 1}), Stored::TooManyConversations);
    QCOMPARE(send(bob, u"n2"_s, {2, 999, 1}), Stored::Now);
}

void TestKnown::groupsChangeForTheirMembers()
{
    QVERIFY(addGroup(*database, alice, {u"id"_s, u"Chess"_s, {}, {}}, 0));
    const qint64 made = knownVersion(alice, groupsSubject());
    QCOMPARE(made, groupsVersion(*database, alice));
    replaceIcon(*database, 1, u"name"_s, {"image/png", "png"});
    QVERIFY(knownVersion(alice, groupsSubject()) != made);
    QCOMPARE(knownVersion(alice, groupsSubject()), groupsVersion(*database, alice));
    QCOMPARE(knownVersion(bob, groupsSubject()), 0);
}

void TestKnown::rolledBackIsNotTold()
{
    Transaction whole(*database);
    {
        const Transaction part(*database);
        store(alice, bob, sealed());
    }
    QVERIFY(store(alice, alice, sealed()));
    QCOMPARE(knownVersion(alice, historySubject(u"alice"_s)), 0); // not before it is committed
    whole.commit();
    QVERIFY(knownVersion(alice, historySubject(u"alice"_s)) != 0);
    QCOMPARE(knownVersion(bob, conversationsSubject()), 0);
}

void TestKnown::endedSessionIsNobodys()
{
    addSession(*database, "hash", alice, 0, 10);
    const std::optional<KnownSession> owner = sessionOwner(*database, "hash");
    QVERIFY(owner);
    QCOMPARE(owner->expiresAt, 10);
    known.sessions.learn("hash", *owner, known.sessions.generation());
    removeSession(*database, "hash");
    QCOMPARE(known.sessions.find("hash")->user, 0);
    known.sessions.learn("hash", *owner, known.sessions.generation()); // by a reader that is late
    QCOMPARE(known.sessions.find("hash")->user, 0);
}

void TestKnown::otherProcessMakesEverythingForgotten()
{
    StoreThreads store({folder->filePath(u"test.sqlite"_s)});
    const VersionKey key{1, u"x"_s};
    store.known().versions.replace(key, 5);
    Semaphore done;
    store.write({[](Database &writer) { addUser(writer, u"carol"_s, "hash", 0); },
                 [&](const std::exception_ptr &) { done.release(); }});
    done.acquire();
    QVERIFY(store.known().versions.find(key)); // what the service writes itself is told one by one
    addUser(*database, u"dave"_s, "hash", 0);
    QTRY_VERIFY(!store.known().versions.find(key));
}

TIDELOFT_TEST_MAIN(TestKnown)
#include "tst_known.moc"
