// Sessions: how many there may be, and which go.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/sessions.h"
#include "tests/service/store/store_fixture.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestSessions : public QObject
{
    Q_OBJECT

private slots:
    void init() { store.reset(new StoreFixture); }
    void oneTooManyEndsThatWhichRunsOutFirst();
    void oldOnesAreDropped();
    void endedIsKnownAsEnded();

private:
    Database &database() const { return store->database; }
    void fill() const
    {
        for (int i = 0; i < maximumSessions; ++i)
            addSession(database(), QByteArray::number(i), store->alice, 0, 1000 + (i == 7 ? 0 : 50 + i));
    }

    QScopedPointer<StoreFixture> store;
};

void TestSessions::oneTooManyEndsThatWhichRunsOutFirst()
{
    addSession(database(), "of bob", store->bob, 0, 1);
    fill();
    QCOMPARE(sessionCount(database(), 0), maximumSessions + 1);
    StoreCache cache;
    database().use(cache);
    cache.sessions.replace("7", {store->alice.id, u"alice"_s, 1000});
    addSession(database(), "new", store->alice, 0, 5000);
    QCOMPARE(sessionCount(database(), 0), maximumSessions + 1);
    QVERIFY(!sessionOwner(database(), "7"));
    QCOMPARE(cache.sessions.find("7").value().user, 0);
    for (const char *kept : {"0", "99", "new", "of bob"})
        QVERIFY2(sessionOwner(database(), kept), kept);
}

void TestSessions::oldOnesAreDropped()
{
    constexpr qint64 grace = qint64{60} * 24 * 60 * 60 * 1000;
    addSession(database(), "old", store->alice, 0, 100);
    addSession(database(), "new", store->bob, 99 + grace, 200 + grace);
    QVERIFY(sessionOwner(database(), "old"));
    addSession(database(), "newer", store->bob, 100 + grace, 200 + grace);
    QVERIFY(!sessionOwner(database(), "old"));
}

void TestSessions::endedIsKnownAsEnded()
{
    StoreCache cache;
    database().use(cache);
    addSession(database(), "a", store->alice, 0, 100);
    removeSession(database(), "a");
    QCOMPARE(cache.sessions.find("a").value().user, 0);
    QVERIFY(!sessionOwner(database(), "a"));
}

TIDELOFT_TEST_MAIN(TestSessions)
#include "tst_sessions.moc"
