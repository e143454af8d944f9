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

class TestStoreCache : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        folder.reset(new QTemporaryDir);
        database.reset(new Store(folder->filePath(u"test.sqlite"_s)));
        database->use(cache);
        cache.forgetAll();
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
    qint64 cachedVersion(const User &user, const QString &subject) const
    {
        return cache.versions.find({user.id, subject}).value_or(0);
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
    StoreCache cache;
    QScopedPointer<Store> database;
};

void TestStoreCache::committedIsNewerThanLearnt()
{
    const VersionKey key{1, u"x"_s};
    cache.versions.learn(key, 5, cache.versions.generation());
    QCOMPARE(cache.versions.find(key), 5);
    cache.versions.learn(key, 6, cache.versions.generation()); // only the writer may say that it is another
    QCOMPARE(cache.versions.find(key), 5);
    cache.versions.replace(key, 7);
    QCOMPARE(cache.versions.find(key), 7);
}

void TestStoreCache::forgottenIsNotLearntAgain()
{
    const VersionKey key{1, u"x"_s};
    const quint64 lookedAt = cache.versions.generation();
    cache.forgetAll();
    cache.versions.learn(key, 5, lookedAt);
    QVERIFY(!cache.versions.find(key));
    cache.versions.learn(key, 5, cache.versions.generation());
    QVERIFY(cache.versions.find(key));
}

void TestStoreCache::everyMessageChangesBothSides()
{
    QVERIFY(store(alice, bob, sealed()));
    const QList<qint64> before{
        cachedVersion(alice, conversationsSubject()), cachedVersion(bob, conversationsSubject()),
        cachedVersion(alice, historySubject(u"bob"_s)), cachedVersion(bob, historySubject(u"alice"_s))};
    QCOMPARE(before,
             (QList<qint64>{conversationsVersion(*database, alice), conversationsVersion(*database, bob),
                            historyVersion(*database, alice, bob.name),
                            historyVersion(*database, bob, alice.name)}));
    QCOMPARE(QSet<qint64>(before.begin(), before.end()).size(), 4); // nobody learns from one about another
    QVERIFY(store(bob, alice, sealed()));
    QVERIFY(cachedVersion(alice, conversationsSubject()) != before[0]);
    QVERIFY(cachedVersion(bob, conversationsSubject()) != before[1]);
    QVERIFY(cachedVersion(alice, historySubject(u"bob"_s)) != before[2]);
    QVERIFY(cachedVersion(bob, historySubject(u"alice"_s)) != before[3]);
}

void TestStoreCache::repeatedMessageChangesNothing()
{
    QVERIFY(store(alice, bob, sealed()));
    const qint64 version = cachedVersion(alice, historySubject(u"bob"_s));
    QVERIFY(!store(alice, bob, sealed()));
    QCOMPARE(cachedVersion(alice, historySubject(u"bob"_s)), version);
    QCOMPARE(database->number(u"SELECT message_count FROM users WHERE id = 1"_s), 1);
    // Anything else that differs is another message.
    QVERIFY(store(bob, alice, sealed()));
    QVERIFY(store(alice, alice, sealed()));
    QVERIFY(store(alice, bob, sealed(u"other nonce"_s)));
    QVERIFY(store(alice, bob, sealed(u"nonce"_s, u"other text"_s)));
    QCOMPARE(database->number(u"SELECT count(*) FROM messages"_s), 5);
}

void TestStoreCache::plainMessageMayComeTwice()
{
    QVERIFY(store(alice, bob, sealed({}, u"hej"_s)));
    QVERIFY(store(alice, bob, sealed({}, u"hej"_s)));
    QCOMPARE(database->number(u"SELECT count(*) FROM messages"_s), 2);
}

void TestStoreCache::quotasHold()
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

void TestStoreCache::groupsChangeForTheirMembers()
{
    QVERIFY(addGroup(*database, alice, {u"id"_s, u"Chess"_s, {}, {}}, 0));
    const qint64 made = cachedVersion(alice, groupsSubject());
    QCOMPARE(made, groupsVersion(*database, alice));
    replaceIcon(*database, 1, u"name"_s, {"image/png", "png"});
    QVERIFY(cachedVersion(alice, groupsSubject()) != made);
    QCOMPARE(cachedVersion(alice, groupsSubject()), groupsVersion(*database, alice));
    QCOMPARE(cachedVersion(bob, groupsSubject()), 0);
}

void TestStoreCache::rolledBackIsNotTold()
{
    Transaction whole(*database);
    {
        const Transaction part(*database);
        store(alice, bob, sealed());
    }
    QVERIFY(store(alice, alice, sealed()));
    QCOMPARE(cachedVersion(alice, historySubject(u"alice"_s)), 0); // not before it is committed
    whole.commit();
    QVERIFY(cachedVersion(alice, historySubject(u"alice"_s)) != 0);
    QCOMPARE(cachedVersion(bob, conversationsSubject()), 0);
}

void TestStoreCache::endedSessionIsNobodys()
{
    addSession(*database, "hash", alice, 0, 10);
    const std::optional<CachedSession> owner = sessionOwner(*database, "hash");
    QVERIFY(owner);
    QCOMPARE(owner->expiresAt, 10);
    cache.sessions.learn("hash", *owner, cache.sessions.generation());
    removeSession(*database, "hash");
    QCOMPARE(cache.sessions.find("hash")->user, 0);
    cache.sessions.learn("hash", *owner, cache.sessions.generation()); // by a reader that is late
    QCOMPARE(cache.sessions.find("hash")->user, 0);
}

void TestStoreCache::otherProcessMakesEverythingForgotten()
{
    StoreThreads store({folder->filePath(u"test.sqlite"_s)});
    const VersionKey key{1, u"x"_s};
    store.cache().versions.replace(key, 5);
    Semaphore done;
    store.write({[](Database &writer) { addUser(writer, u"carol"_s, "hash", 0); },
                 [&](const std::exception_ptr &) { done.release(); }});
    done.acquire();
    QVERIFY(store.cache().versions.find(key)); // what the service writes itself is told one by one
    addUser(*database, u"dave"_s, "hash", 0);
    QTRY_VERIFY(!store.cache().versions.find(key));
}

TIDELOFT_TEST_MAIN(TestStoreCache)
#include "tst_store_cache.moc"
