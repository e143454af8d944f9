// Whose turn it is, and how much may wait.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/threads/fair_queue.h"
#include "tests/support/test_main.h"

#include <string>

using Queue = tideloft::service::FairQueue<std::string, int>;

class TestFairQueue : public QObject
{
    Q_OBJECT

private slots:
    void oneOwnerKeepsTheOrder();
    void ownersTakeTurns();
    void whoComesBackIsBehindWhoWaits();
    void boundOfAll();
    void boundOfOneOwner();

private:
    static bool push(Queue &queue, const std::string &owner, int item) { return queue.push(owner, item); }
    static QList<int> takeAll(Queue &queue)
    {
        QList<int> items;
        while (const std::optional<int> item = queue.take())
            items << *item;
        return items;
    }
};

void TestFairQueue::oneOwnerKeepsTheOrder()
{
    Queue queue(9, 9);
    QVERIFY(!queue.take());
    for (int i = 1; i <= 3; ++i)
        QVERIFY(push(queue, "a", i));
    QCOMPARE(queue.size(), std::size_t{3});
    QCOMPARE(takeAll(queue), (QList<int>{1, 2, 3}));
    QCOMPARE(queue.size(), std::size_t{0});
}

void TestFairQueue::ownersTakeTurns()
{
    Queue queue(9, 9);
    for (int i = 1; i <= 4; ++i)
        push(queue, "much", i);
    push(queue, "little", 10);
    push(queue, "other", 20);
    push(queue, "other", 21);
    QCOMPARE(takeAll(queue), (QList<int>{1, 10, 20, 2, 21, 3, 4}));
}

void TestFairQueue::whoComesBackIsBehindWhoWaits()
{
    Queue queue(9, 9);
    push(queue, "a", 1);
    push(queue, "b", 2);
    QCOMPARE(queue.take(), 1);
    push(queue, "a", 3);
    QCOMPARE(takeAll(queue), (QList<int>{2, 3}));
}

void TestFairQueue::boundOfAll()
{
    Queue queue(2, 2);
    QVERIFY(push(queue, "a", 1));
    QVERIFY(push(queue, "b", 2));
    QVERIFY(!push(queue, "c", 3));
    queue.take();
    QVERIFY(push(queue, "c", 3));
    QCOMPARE(takeAll(queue), (QList<int>{2, 3}));
}

void TestFairQueue::boundOfOneOwner()
{
    Queue queue(9, 2);
    QVERIFY(push(queue, "a", 1));
    QVERIFY(push(queue, "a", 2));
    QVERIFY(!push(queue, "a", 3));
    QVERIFY(push(queue, "b", 4));
    QCOMPARE(takeAll(queue), (QList<int>{1, 4, 2}));
    QVERIFY(push(queue, "a", 5)); // nothing of it waits any more
}

TIDELOFT_TEST_MAIN(TestFairQueue)
#include "tst_fair_queue.moc"
