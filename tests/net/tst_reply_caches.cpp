// Which replies may be cached: those to requests of the user who is still signed in.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/reply_caches.h"
#include "tests/support/test_main.h"

#include <QTest>

using tideloft::net::ReplyCaches;

class TestReplyCaches : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsKeptBeforeASignIn();
    void signedInRepliesAreKept();
    void requestsFromBeforeALogOutAreNot();
    void clearingEmptiesAll();
};

void TestReplyCaches::nothingIsKeptBeforeASignIn()
{
    ReplyCaches caches;
    const quint64 before = caches.periodOfRequest();
    QVERIFY(!caches.mayKeep(before));
    caches.open();
    QVERIFY(!caches.mayKeep(before)); // nor when it comes after the sign-in
}

void TestReplyCaches::signedInRepliesAreKept()
{
    ReplyCaches caches;
    caches.open();
    QVERIFY(caches.mayKeep(caches.periodOfRequest()));
}

void TestReplyCaches::requestsFromBeforeALogOutAreNot()
{
    ReplyCaches caches;
    caches.open();
    const quint64 asked = caches.periodOfRequest();
    caches.clear();
    QVERIFY(!caches.mayKeep(asked));
    QVERIFY(!caches.mayKeep(caches.periodOfRequest()));
    caches.open();
    QVERIFY(!caches.mayKeep(asked));
    QVERIFY(caches.mayKeep(caches.periodOfRequest()));
}

void TestReplyCaches::clearingEmptiesAll()
{
    ReplyCaches caches;
    for (auto *cache : {&caches.conversations, &caches.history, &caches.servers}) {
        cache->read("[1,2]");
        cache->read("[1,2]");
        QCOMPARE(cache->parsedElements(), 2);
    }
    caches.clear();
    for (auto *cache : {&caches.conversations, &caches.history, &caches.servers}) {
        cache->read("[1,2]");
        QCOMPARE(cache->parsedElements(), 4);
    }
}

TIDELOFT_TEST_MAIN(TestReplyCaches)
#include "tst_reply_caches.moc"
