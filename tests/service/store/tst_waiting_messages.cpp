// Messages that wait for the writer of a shared database: all are stored with as few statements as one.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/messages.h"
#include "service/store/schema.h"
#include "service/store/users.h"
#include "tests/service/cutting_relay.h"
#include "tests/service/postgresql_cluster.h"
#include "tests/service/store/gate.h"
#include "tests/service/store/written_change.h"
#include "tests/support/test_main.h"

#include <QRandomGenerator>

#include <limits>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestWaitingMessages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { cluster = std::make_unique<PostgresqlCluster>(); }
    void init();
    void cleanup() { database.reset(); }
    void cleanupTestCase() { cluster.reset(); }
    void messagesThatWaitAreAskedForAsOne();
    void largeMessagesGoByThemselves();
    void brokenMessageLeavesTheOthers();
    void lostCommitIsFoundForEachMessage_data();
    void lostCommitIsFoundForEachMessage();

private:
    using Messages = std::vector<MessageToStore>;
    /// Stores the messages by the one writer of STORE, who finds all of them at once. FIRST is called before.
    static QList<bool> storeWaiting(
        StoreThreads &store, Messages &waiting, const std::function<void()> &first = [] {});
    StoreSettings oneWriter(const QString &place) const
    {
        StoreSettings settings{place};
        settings.writers = 1;
        return settings;
    }
    Messages fivePlainMessages() const
    {
        constexpr qint64 any = std::numeric_limits<qint64>::max();
        return Messages(5, {users[0], users[1], {u"x"_s, {}, u"[]"_s, u"[]"_s, false, 1}, {any, any, any}});
    }

    /// How many statements PostgreSQL gets to store the messages.
    qsizetype statementsFor(StoreThreads &store, Messages messages) const;

    std::unique_ptr<PostgresqlCluster> cluster;
    std::unique_ptr<Store> database;
    QList<User> users;
};

void TestWaitingMessages::init()
{
    database = std::make_unique<Store>(cluster->newPlace());
    users.clear();
    for (const QString &name : {u"alice"_s, u"bob"_s}) {
        addUser(*database, name, "hash", 1);
        users << *findUser(*database, name);
    }
}

QList<bool> TestWaitingMessages::storeWaiting(StoreThreads &store, Messages &waiting,
                                              const std::function<void()> &first)
{
    Gate gate;
    store.write({gate.change(), [](const std::exception_ptr &) {}, {}, true}); // without a commit of its own
    gate.awaitWriter();
    std::vector<std::shared_ptr<WriteOutcome>> outcomes;
    for (MessageToStore &each : waiting) {
        const std::shared_ptr<MessageToStore> message(&each, [](MessageToStore *) {});
        outcomes.push_back(write(
            store, [message](Database &database) { storeMessage(database, *message); }, message));
    }
    first();
    gate.open();
    QList<bool> stored;
    for (const auto &outcome : outcomes)
        stored << isStored(outcome);
    return stored;
}

qsizetype TestWaitingMessages::statementsFor(StoreThreads &store, Messages messages) const
{
    qsizetype before = 0;
    const QList<bool> stored = storeWaiting(store, messages, [&] { before = cluster->statements(); });
    return stored.contains(false) ? -1 : cluster->statements() - before;
}

void TestWaitingMessages::messagesThatWaitAreAskedForAsOne()
{
    StoreThreads store(oneWriter(PostgresqlCluster::logged(database->place())));
    QVERIFY(statementsFor(store, fivePlainMessages()) > 0); // the first time statements are prepared
    QCOMPARE(statementsFor(store, fivePlainMessages()), 5); // begin, lock, look back, store, commit
    Messages many = fivePlainMessages();
    many.resize(30, many.front());
    QCOMPARE(statementsFor(store, many), 5);
}

void TestWaitingMessages::largeMessagesGoByThemselves()
{
    StoreThreads store(oneWriter(PostgresqlCluster::logged(database->place())));
    Messages large = fivePlainMessages();
    for (MessageToStore &each : large)
        each.message.text = QString(300'000, u'x');
    QVERIFY(statementsFor(store, large) > 20);
    QCOMPARE(database->number(u"SELECT count(*) FROM messages"_s), 5);
}

// A nonce of this length fits into no index.
void TestWaitingMessages::brokenMessageLeavesTheOthers()
{
    Messages messages = fivePlainMessages();
    QByteArray bytes(9000, Qt::Uninitialized);
    QRandomGenerator random(1);
    for (char &byte : bytes)
        byte = static_cast<char>(random.bounded(256));
    messages[2].message.iv = QString::fromLatin1(bytes.toBase64());
    StoreThreads store(oneWriter(database->place()));
    QCOMPARE(storeWaiting(store, messages), (QList<bool>{true, true, false, true, true}));
    QCOMPARE(database->number(u"SELECT count(*) FROM messages"_s), 4);
    QCOMPARE(database->number(u"SELECT message_count FROM users WHERE id = ?"_s, {users[0].id}), 4);
}

void TestWaitingMessages::lostCommitIsFoundForEachMessage_data()
{
    QTest::addColumn<int>("where");
    QTest::newRow("cut before the commit") << static_cast<int>(CuttingRelay::Cut::BeforeCommit);
    QTest::newRow("cut with the commit") << static_cast<int>(CuttingRelay::Cut::WithCommit);
    QTest::newRow("cut after the commit") << static_cast<int>(CuttingRelay::Cut::AfterCommit);
}

// Five that are the same in everything are five messages.
void TestWaitingMessages::lostCommitIsFoundForEachMessage()
{
    QFETCH(const int, where);
    CuttingRelay relay(cluster->port());
    const QString port = u":%1/"_s.arg(cluster->port());
    StoreSettings settings = oneWriter(database->place().replace(port, u":%1/"_s.arg(relay.port())));
    settings.longestDoubt = std::chrono::seconds(30);
    StoreThreads store(settings);
    Messages messages = fivePlainMessages();
    Messages warmUp = fivePlainMessages();
    storeWaiting(store, warmUp);
    QCOMPARE(storeWaiting(store, messages, [&] { relay.cutNext(static_cast<CuttingRelay::Cut>(where)); }),
             QList<bool>(5, true));
    QCOMPARE(relay.cuts(), 1);
    QCOMPARE(database->number(u"SELECT count(*) FROM messages"_s), 10);
}

TIDELOFT_TEST_MAIN(TestWaitingMessages)
#include "tst_waiting_messages.moc"
