// Messages that are stored together, beside the same messages stored one after the other.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/accounts.h"
#include "service/store/message_batch.h"
#include "service/store/messages.h"
#include "service/store/schema.h"
#include "service/store/users.h"
#include "tests/service/postgresql_cluster.h"
#include "tests/support/test_main.h"

#include <algorithm>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

namespace
{

constexpr qint64 anyNumber = std::numeric_limits<qint64>::max();
constexpr MessageQuota noQuota{anyNumber, anyNumber, anyNumber};

struct Table {
    QString rows;
    int columns;
};

// Everything that messages change, but for random numbers.
const QList<Table> tables{
    {u"SELECT sender_id, recipient_id, position, text, iv, recipient_keys, sender_keys, encrypted, created_at"
     " FROM messages ORDER BY 1, 2, 3"_s,
     9},
    {u"SELECT user_id, peer_id, begun, position, text FROM conversations JOIN messages ON id = "
     u"last_message_id"
     " ORDER BY 1, 2"_s,
     5},
    {u"SELECT id, state, message_count, message_bytes, last_position FROM users ORDER BY 1"_s, 5}};

} // namespace

class TestMessageBatch : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { cluster = std::make_unique<PostgresqlCluster>(); }
    void init();
    void cleanup();
    void cleanupTestCase() { cluster.reset(); }
    void randomMessages_data();
    void randomMessages();
    void everySignIsKept_data();
    void everySignIsKept();
    void oneThatComesTwiceInABatchIsKeptOnce();
    void conversationsOfABatchCountForTheNext();
    void numbersAreThoseOfTheMessages();
    void recipientIsFoundByName();
    void versionsChange();
    void nothingIsChangedByRefusedOnes();

private:
    using Messages = std::vector<MessageToStore>;
    /// The same messages both ways; true when what became of them, and all that is stored then, is equal.
    bool sameBothWays(Messages messages);
    static QStringList contentOf(Store &database);
    std::vector<Stored> storeTogether(Messages &messages);

    std::unique_ptr<PostgresqlCluster> cluster;
    std::unique_ptr<Store> together;
    std::unique_ptr<Store> oneByOne;
    QList<User> users;
};

void TestMessageBatch::init()
{
    together = std::make_unique<Store>(cluster->newPlace());
    oneByOne = std::make_unique<Store>(cluster->newPlace());
    users.clear();
    for (const QString &name : {u"alice"_s, u"bob"_s, u"carol"_s, u"dave"_s, u"erin"_s, u"frank"_s}) {
        addUser(*oneByOne, name, "hash", 1);
        addUser(*together, name, "hash", 1);
        users << *findUser(*together, name);
        QCOMPARE(findUser(*oneByOne, name)->id, users.last().id);
    }
}

void TestMessageBatch::cleanup()
{
    together.reset();
    oneByOne.reset();
}

QStringList TestMessageBatch::contentOf(Store &database)
{
    QStringList lines;
    for (const Table &table : tables) {
        Rows rows = database.run(table.rows);
        while (rows.next()) {
            QStringList line;
            for (int column = 0; column < table.columns; ++column)
                line << rows.value(column).toString();
            lines << line.join(u'|');
        }
    }
    return lines;
}

std::vector<Stored> TestMessageBatch::storeTogether(Messages &messages)
{
    std::vector<MessageToStore *> batch;
    for (MessageToStore &each : messages)
        batch.push_back(&each);
    storeMessages(*together, batch);
    std::vector<Stored> results;
    for (const MessageToStore &each : messages)
        results.push_back(each.stored);
    return results;
}

bool TestMessageBatch::sameBothWays(Messages messages)
{
    std::vector<Stored> expected;
    for (MessageToStore each : messages) {
        storeMessage(*oneByOne, each);
        expected.push_back(each.stored);
    }
    return storeTogether(messages) == expected && contentOf(*together) == contentOf(*oneByOne);
}

void TestMessageBatch::randomMessages_data()
{
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= 20; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

// Few users, nonces and texts, and small quotas: many come twice, and many are refused.
void TestMessageBatch::randomMessages()
{
    QFETCH(unsigned, seed);
    std::mt19937 random(seed);
    const auto below = [&random](unsigned end) { return static_cast<int>(random() % end); };
    for (int round = 0; round < 12; ++round) {
        if (round == 6) {
            for (Store *database : {together.get(), oneByOne.get()}) {
                disableUser(*database, users[4]);
                deleteUser(*database, users[5]);
            }
        }
        Messages messages;
        for (int i = below(20) + 1; i > 0; --i) {
            const StoredMessage message{u"text %1"_s.arg(below(4)),
                                        below(3) == 0 ? QString() : QString::number(below(5)),
                                        u"[1]"_s,
                                        u"[2]"_s,
                                        below(2) == 0,
                                        1'000 + round};
            const MessageQuota quota{10 + below(60), 200 + below(1500), 1 + below(6)};
            const User &recipient = users[below(6)];
            messages.push_back({users[below(6)], {below(2) * recipient.id, recipient.name}, message, quota});
        }
        QVERIFY2(sameBothWays(messages), qPrintable(u"round %1"_s.arg(round)));
    }
    QVERIFY(contentOf(*together).size() > 20);
}

void TestMessageBatch::everySignIsKept_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("zero") << QString(u"a"_s + QChar(0) + u"b"_s);
    QTest::newRow("the sign that stands for zero") << u"\uFDD0 \uFDD00 \uFDD01"_s;
    QTest::newRow("quotes and slashes") << u"it's \\' \"x\" \\x41 \\\\ ? $1 :a"_s;
    QTest::newRow("an array") << u"{\"a\",b,NULL}"_s;
    QTest::newRow("the word for nothing") << u"NULL"_s;
    QTest::newRow("half of an emoji") << QString(QChar(0xD83D));
    QTest::newRow("emoji and lines") << u"\U0001F44B\n\r\t x "_s;
}

void TestMessageBatch::everySignIsKept()
{
    QFETCH(QString, text);
    const StoredMessage message{text, u"n"_s + text, u"k"_s + text, u"s"_s + text, true, 1};
    const StoredMessage plain{text, {}, u"[]"_s, u"[]"_s, false, 2};
    QVERIFY(sameBothWays({{users[0], users[1], message, noQuota}, {users[1], users[0], plain, noQuota}}));
    QVERIFY(sameBothWays({{users[0], users[1], message, noQuota}, {users[2], users[0], plain, noQuota}}));
    QCOMPARE(together->number(u"SELECT count(*) FROM messages"_s), 3); // the nonce came again
}

void TestMessageBatch::oneThatComesTwiceInABatchIsKeptOnce()
{
    const StoredMessage sealed{u"x"_s, u"nonce"_s, u"[]"_s, u"[]"_s, true, 1};
    const StoredMessage plain{u"x"_s, {}, u"[]"_s, u"[]"_s, false, 1};
    Messages messages{{users[0], users[1], sealed, noQuota}, {users[0], users[1], sealed, noQuota},
                      {users[0], users[1], plain, noQuota},  {users[0], users[1], plain, noQuota},
                      {users[0], users[2], sealed, noQuota}, {users[1], users[0], sealed, noQuota}};
    QCOMPARE(storeTogether(messages),
             (std::vector{Stored::Now, Stored::Before, Stored::Now, Stored::Now, Stored::Now, Stored::Now}));
    QCOMPARE(together->number(u"SELECT count(*) FROM messages"_s), 5);
}

void TestMessageBatch::conversationsOfABatchCountForTheNext()
{
    const StoredMessage message{u"x"_s, {}, u"[]"_s, u"[]"_s, false, 1};
    const MessageQuota one{anyNumber, anyNumber, 1};
    Messages messages{{users[0], users[1], message, one},
                      {users[0], users[1], message, one},
                      {users[0], users[2], message, one},
                      {users[3], users[0], message, one},
                      {users[0], users[3], message, one}}; // which dave has begun
    QCOMPARE(storeTogether(messages),
             (std::vector{Stored::Now, Stored::Now, Stored::TooManyConversations, Stored::Now, Stored::Now}));
}

void TestMessageBatch::numbersAreThoseOfTheMessages()
{
    Messages messages;
    for (int i = 0; i < 9; ++i)
        messages.push_back({users[i % 3],
                            users[(i + i / 3) % 3],
                            {QString::number(i), {}, u"[]"_s, u"[]"_s, false, 1},
                            noQuota});
    storeTogether(messages);
    for (int i = 0; i < 9; ++i) {
        const MessageToStore &each = messages[static_cast<std::size_t>(i)];
        QCOMPARE(together->number(u"SELECT CAST(text AS BIGINT) FROM messages WHERE id = ?"_s, {each.tried}),
                 i);
        qint64 tried = each.tried;
        QCOMPARE(storeMessage(*together, each.sender, each.recipient, each.message, noQuota, &tried),
                 Stored::Before);
    }
}

void TestMessageBatch::recipientIsFoundByName()
{
    deleteUser(*together, users[2]);
    const StoredMessage message{u"x"_s, {}, u"[]"_s, u"[]"_s, false, 1};
    Messages messages{{users[0], {0, u"bob"_s}, message, noQuota},
                      {users[0], {0, u"carol"_s}, message, noQuota},
                      {users[0], {0, u"nobody"_s}, message, noQuota},
                      {users[1], {0, u"bob"_s}, message, noQuota}};
    QCOMPARE(storeTogether(messages),
             (std::vector{Stored::Now, Stored::NoRecipient, Stored::NoRecipient, Stored::Now}));
    QCOMPARE(together->number(u"SELECT count(*) FROM messages WHERE recipient_id = ?"_s, {users[1].id}), 2);
}

void TestMessageBatch::versionsChange()
{
    const StoredMessage message{u"x"_s, {}, u"[]"_s, u"[]"_s, false, 1};
    const auto versions = [this] {
        QStringList all;
        for (const QString &statement : {u"SELECT conversations_version FROM users ORDER BY id"_s,
                                         u"SELECT version FROM conversations ORDER BY user_id, peer_id"_s}) {
            Rows rows = together->run(statement);
            while (rows.next())
                all << rows.value(0).toString();
        }
        return all;
    };
    Messages first{{users[0], users[1], message, noQuota}, {users[2], users[3], message, noQuota}};
    storeTogether(first);
    const QStringList before = versions();
    Messages second{{users[0], users[1], message, noQuota}};
    storeTogether(second);
    const QStringList after = versions();
    QCOMPARE(after.size(), 10); // of six users and four conversations
    for (const qsizetype changed : {0, 1, 6, 7})
        QVERIFY(after[changed] != before[changed]);
    for (const qsizetype same : {2, 3, 4, 5, 8, 9})
        QCOMPARE(after[same], before[same]);
}

void TestMessageBatch::nothingIsChangedByRefusedOnes()
{
    disableUser(*together, users[0]);
    const QStringList before = contentOf(*together);
    Messages messages{
        {users[0], users[1], {u"x"_s, {}, u"[]"_s, u"[]"_s, false, 1}, noQuota},
        {users[1], users[0], {u"x"_s, {}, u"[]"_s, u"[]"_s, false, 1}, {0, anyNumber, anyNumber}}};
    QCOMPARE(storeTogether(messages), (std::vector{Stored::NoSender, Stored::TooManyMessages}));
    QCOMPARE(contentOf(*together), before);
}

TIDELOFT_TEST_MAIN(TestMessageBatch)
#include "tst_message_batch.moc"
