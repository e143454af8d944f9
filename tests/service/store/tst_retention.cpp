// Old messages go, a few at a time, and every list is right after each time.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/maintenance.h"
#include "service/store/retention.h"
#include "service/store/store_threads.h"
#include "service/store/versions.h"
#include "tests/service/semaphore.h"
#include "tests/service/store/store_fixture.h"
#include "tests/support/test_main.h"

#include <atomic>
#include <thread>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestRetention : public QObject
{
    Q_OBJECT

private slots:
    void init() { store.reset(new StoreFixture); }
    void onlyOldMessagesGo();
    void oldestGoFirstAndNoMoreThanAsked();
    void conversationEndsWithItsLastMessage();
    void clockThatWasSetBackEndsNoConversation();
    void listsHaveOtherVersionsAfterwards();
    void conversationsThatLoseNothingKeepTheirVersion();
    void quotasAreGivenBack();
    void twoAtOnceRemoveEachMessageOnce();
    void writerDoesItBetweenOtherWork();
    void failingPieceIsTriedAgain();

private:
    Database &database() const { return store->database; }

    QScopedPointer<StoreFixture> store;
};

void TestRetention::onlyOldMessagesGo()
{
    store->send(store->alice, store->bob, u"one"_s, 10);
    store->send(store->bob, store->alice, u"two"_s, 20);
    store->send(store->alice, store->bob, u"three"_s, 30);
    QCOMPARE(removeMessagesBefore(database(), 20, 100), 1);
    QCOMPARE(store->history(store->bob, store->alice), "two three");
    QCOMPARE(store->history(store->alice, store->bob), "two three");
    QCOMPARE(store->conversations(store->alice), "bob:three");
    QCOMPARE(removeMessagesBefore(database(), 20, 100), 0);
    QCOMPARE(problemsOf(database()), QStringList());
}

void TestRetention::oldestGoFirstAndNoMoreThanAsked()
{
    for (int i = 0; i < 5; ++i)
        store->send(store->alice, store->bob, QString::number(i), 10 + i);
    QCOMPARE(removeMessagesBefore(database(), 14, 3), 3);
    QCOMPARE(store->history(store->alice, store->bob), "3 4");
    QCOMPARE(removeMessagesBefore(database(), 14, 3), 1);
    QCOMPARE(store->conversations(store->bob), "alice:4");
}

void TestRetention::conversationEndsWithItsLastMessage()
{
    store->send(store->alice, store->bob, u"one"_s, 10);
    store->send(store->alice, store->carol, u"two"_s, 30);
    store->send(store->bob, store->bob, u"note"_s, 10);
    QCOMPARE(removeMessagesBefore(database(), 20, 100), 2);
    QCOMPARE(store->conversations(store->alice), "carol:two");
    QCOMPARE(store->conversations(store->bob), QByteArray());
    QCOMPARE(historyVersion(database(), store->bob, store->alice.name), 0);
    store->send(store->bob, store->alice, u"again"_s, 40);
    QCOMPARE(store->conversations(store->alice), "bob:again carol:two");
}

void TestRetention::clockThatWasSetBackEndsNoConversation()
{
    store->send(store->alice, store->bob, u"young"_s, 30);
    store->send(store->bob, store->alice, u"old"_s, 10); // later, by a clock that goes wrong
    QCOMPARE(removeMessagesBefore(database(), 20, 100), 1);
    QCOMPARE(store->conversations(store->alice), "bob:young");
    QCOMPARE(store->conversations(store->bob), "alice:young");
    QCOMPARE(store->history(store->bob, store->alice), "young");
}

void TestRetention::listsHaveOtherVersionsAfterwards()
{
    store->send(store->alice, store->bob, u"one"_s, 10);
    store->send(store->alice, store->bob, u"two"_s, 30);
    StoreCache cache;
    database().use(cache);
    const qint64 history = historyVersion(database(), store->bob, store->alice.name);
    const qint64 list = conversationsVersion(database(), store->bob);
    removeMessagesBefore(database(), 20, 100);
    QVERIFY(historyVersion(database(), store->bob, store->alice.name) != history);
    QVERIFY(conversationsVersion(database(), store->bob) != list);
    QCOMPARE(cache.versions.find({store->bob.id, historySubject(u"alice"_s)}).value_or(0),
             historyVersion(database(), store->bob, store->alice.name));
    QCOMPARE(cache.versions.find({store->bob.id, conversationsSubject()}).value_or(0),
             conversationsVersion(database(), store->bob));
}

void TestRetention::conversationsThatLoseNothingKeepTheirVersion()
{
    store->send(store->alice, store->bob, u"one"_s, 10);
    store->send(store->carol, store->bob, u"two"_s, 30);
    const qint64 before = historyVersion(database(), store->carol, store->bob.name);
    removeMessagesBefore(database(), 20, 100);
    QCOMPARE(historyVersion(database(), store->carol, store->bob.name), before);
}

void TestRetention::quotasAreGivenBack()
{
    const auto counted = [this](const QString &column) {
        return database().number(u"SELECT %1 FROM users WHERE name = 'alice'"_s.arg(column));
    };
    store->send(store->alice, store->bob, u"\U0001F44B one"_s, 10);
    store->send(store->alice, store->bob, u"two"_s, 30);
    removeMessagesBefore(database(), 20, 100);
    QCOMPARE(counted(u"message_count"_s), 1);
    QCOMPARE(counted(u"message_bytes"_s), 7); // "two" and two empty lists of keys
    removeMessagesBefore(database(), 40, 100);
    QCOMPARE(counted(u"message_count"_s), 0);
    QCOMPARE(counted(u"message_bytes"_s), 0);
}

// As each of several services does.
void TestRetention::twoAtOnceRemoveEachMessageOnce()
{
    constexpr int old = 60;
    for (int i = 0; i < old; ++i)
        store->send(i % 2 == 0 ? store->alice : store->bob, i % 3 == 0 ? store->carol : store->alice,
                    QString::number(i), 10);
    std::atomic<int> removed = 0;
    std::atomic<int> failures = 0;
    const auto removeAll = [&] {
        Database own(store->place());
        for (int piece = 1; piece != 0;) {
            try {
                piece = removeMessagesBefore(own, 20, 7);
                removed += piece;
            } catch (const StorageError &error) {
                if (!error.isTemporary()) {
                    ++failures;
                    return;
                }
            }
        }
    };
    std::thread first(removeAll);
    std::thread second(removeAll);
    first.join();
    second.join();
    QCOMPARE(failures.load(), 0);
    QCOMPARE(removed.load(), old);
    QCOMPARE(database().number(u"SELECT count(*) FROM messages"_s), 0);
    QCOMPARE(database().number(u"SELECT sum(message_count) FROM users"_s), 0);
    QCOMPARE(database().number(u"SELECT sum(message_bytes) FROM users"_s), 0);
    QCOMPARE(problemsOf(database()), QStringList());
}

void TestRetention::writerDoesItBetweenOtherWork()
{
    for (int i = 0; i < 30; ++i)
        store->send(store->alice, store->bob, QString::number(i), 10);
    StoreSettings settings{store->place()};
    settings.background.piece = [](Database &writer) { return removeMessagesBefore(writer, 20, 4) == 4; };
    settings.background.betweenPieces = settings.background.whenDone = std::chrono::milliseconds(1);
    StoreThreads threads(settings);
    Semaphore done;
    for (int i = 0; i < 10; ++i) {
        threads.write({[&](Database &writer) { setBio(writer, store->bob, u"busy"_s); },
                       [&done](const std::exception_ptr &failure) { done.release(failure ? 0 : 1); }});
    }
    QVERIFY(done.tryAcquire(10, std::chrono::seconds(20)));
    QTRY_COMPARE(store->history(store->alice, store->bob), QByteArray());
    QCOMPARE(store->conversations(store->bob), QByteArray());
}

void TestRetention::failingPieceIsTriedAgain()
{
    StoreSettings settings{store->place()};
    std::atomic<int> tried = 0;
    settings.background.piece = [&tried](Database &) -> bool {
        ++tried;
        throw StorageError("The disk is full.", Trouble::Passing);
    };
    settings.background.whenDone = std::chrono::milliseconds(1);
    const StoreThreads threads(settings);
    QTRY_VERIFY(tried > 2);
}

TIDELOFT_TEST_MAIN(TestRetention)
#include "tst_retention.moc"
