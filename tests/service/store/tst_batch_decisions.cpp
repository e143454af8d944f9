// Messages that are stored together: each finds what those before have changed.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/batch_decisions.h"
#include "tests/support/test_main.h"

#include <deque>
#include <limits>

using namespace Qt::StringLiterals;
using namespace tideloft::service;

namespace
{

constexpr qint64 unbounded = std::numeric_limits<qint64>::max();
constexpr MessageQuota noBounds{unbounded, unbounded, unbounded};

} // namespace

class TestBatchDecisions : public QObject
{
    Q_OBJECT

private slots:
    void init() { asked.clear(); }
    void positionIsBehindAllOfBoth();
    void lastMessageIsThatOfBothSides();
    void nonceAndTextOnceForEachRecipient();
    void messagesAndBytesCount();
    void conversationsCountOnceForWhoBeginsThem();
    void begunIsAskedOnceForEachSender();
    void whatIsRefusedChangesNothing();

private:
    static BatchDecisions::Parties people();
    BatchDecisions decisions()
    {
        return {people(), [this](const User &user) {
                    asked << user.id;
                    return qint64{0};
                }};
    }
    MessageToStore &message(qint64 from, qint64 to, const MessageQuota &quota = noBounds,
                            const QString &nonce = {})
    {
        made.push_back({{from, {}}, {to, {}}, {u"1234"_s, nonce, {}, {}, false, 1}, quota});
        return made.back();
    }
    Stored taken(BatchDecisions &by, MessageToStore &each, const Before &before = {false, true})
    {
        by.take(each, before);
        return each.stored;
    }

    std::deque<MessageToStore> made;
    QList<qint64> asked;
};

BatchDecisions::Parties TestBatchDecisions::people()
{
    BatchDecisions::Parties found;
    for (const qint64 id : {1, 2, 3}) {
        found[id].user.id = id;
        found[id].state = UserState::Active;
        found[id].lastPosition = 10 * id;
    }
    found[0].state = UserState::Deleted;
    return found;
}

void TestBatchDecisions::positionIsBehindAllOfBoth()
{
    BatchDecisions batch = decisions();
    taken(batch, message(1, 2));
    taken(batch, message(3, 1));
    taken(batch, message(2, 2));
    taken(batch, message(2, 1));
    QList<qint64> positions;
    for (const auto &accepted : batch.accepted())
        positions << accepted.position;
    QCOMPARE(positions, (QList<qint64>{21, 31, 22, 32}));
}

void TestBatchDecisions::lastMessageIsThatOfBothSides()
{
    BatchDecisions batch = decisions();
    taken(batch, message(1, 2));
    taken(batch, message(2, 1));
    taken(batch, message(3, 3));
    const auto &all = batch.conversations();
    QCOMPARE(all.size(), std::size_t{3});
    QCOMPARE(all.at({1, 2}).position, 22);
    QCOMPARE(all.at({1, 2}).sender, 2);
    QCOMPARE(all.at({2, 1}).position, 22);
    QVERIFY(all.at({1, 2}).isBegun);
    QVERIFY(!all.at({2, 1}).isBegun);
    QVERIFY(all.at({3, 3}).isBegun);
}

void TestBatchDecisions::nonceAndTextOnceForEachRecipient()
{
    BatchDecisions batch = decisions();
    QCOMPARE(taken(batch, message(1, 2, noBounds, u"n"_s)), Stored::Now);
    QCOMPARE(taken(batch, message(1, 2, noBounds, u"n"_s)), Stored::Before);
    QCOMPARE(taken(batch, message(1, 3, noBounds, u"n"_s)), Stored::Now);
    QCOMPARE(taken(batch, message(2, 1, noBounds, u"n"_s)), Stored::Now);
    QCOMPARE(taken(batch, message(1, 2)), Stored::Now);
    QCOMPARE(taken(batch, message(1, 2)), Stored::Now); // without a nonce both may be meant
    QCOMPARE(taken(batch, message(1, 2), {true, true}), Stored::Before);
}

void TestBatchDecisions::messagesAndBytesCount()
{
    BatchDecisions batch = decisions();
    QCOMPARE(taken(batch, message(1, 2, {1, unbounded, unbounded})), Stored::Now);
    QCOMPARE(taken(batch, message(1, 2, {1, unbounded, unbounded})), Stored::TooManyMessages);
    QCOMPARE(taken(batch, message(1, 2, {unbounded, 7, unbounded})), Stored::TooManyBytes);
    QCOMPARE(taken(batch, message(1, 2, {unbounded, 8, unbounded})), Stored::Now);
    QCOMPARE(batch.parties().at(1).newMessages, 2);
    QCOMPARE(batch.parties().at(1).newBytes, 8);
    QCOMPARE(batch.parties().at(2).newMessages, 0);
    QVERIFY(batch.parties().at(2).isChanged);
    QVERIFY(!batch.parties().at(3).isChanged);
}

void TestBatchDecisions::conversationsCountOnceForWhoBeginsThem()
{
    const MessageQuota one{unbounded, unbounded, 1};
    BatchDecisions batch = decisions();
    QCOMPARE(taken(batch, message(1, 2, one), {false, false}), Stored::Now);
    QCOMPARE(taken(batch, message(1, 2, one), {false, false}), Stored::Now);
    QCOMPARE(taken(batch, message(1, 3, one), {false, false}), Stored::TooManyConversations);
    QCOMPARE(taken(batch, message(3, 1, one), {false, false}), Stored::Now);
    QCOMPARE(taken(batch, message(1, 3, one), {false, false}), Stored::Now); // an answer
}

void TestBatchDecisions::begunIsAskedOnceForEachSender()
{
    BatchDecisions batch = decisions();
    taken(batch, message(1, 2));
    QCOMPARE(asked, QList<qint64>());
    taken(batch, message(1, 3), {false, false});
    taken(batch, message(1, 1), {false, false});
    taken(batch, message(2, 3), {false, false});
    QCOMPARE(asked, (QList<qint64>{1, 2}));
}

void TestBatchDecisions::whatIsRefusedChangesNothing()
{
    BatchDecisions batch = decisions();
    QCOMPARE(taken(batch, message(1, 0)), Stored::NoRecipient);
    QCOMPARE(taken(batch, message(0, 1)), Stored::NoSender);
    QVERIFY(batch.accepted().empty());
    QVERIFY(batch.conversations().empty());
    for (const auto &[id, party] : batch.parties())
        QVERIFY(!party.isChanged);
}

TIDELOFT_TEST_MAIN(TestBatchDecisions)
#include "tst_batch_decisions.moc"
