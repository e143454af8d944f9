// What waits to be stored: what goes together, who takes what, and the end.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/write_queue.h"
#include "tests/support/test_main.h"

#include <thread>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace std::chrono_literals;

using Takers = WriteQueue::Takers;

class TestWriteQueue : public QObject
{
    Q_OBJECT

private slots:
    void oneTakesEverythingTogether();
    void oneTakesNoMoreThanACommitMayHold();
    void severalTakeOneByOne();
    void severalTakeMessagesTogether();
    void onlyOneHasMessages();
    void messagesWaitInTheirTurn();
    void whoWaitsGetsTheMessagesThatAreLeft();
    void whoIsDoneGoesOnWithTheNextMessages();
    void whoIsDoneTakesWhatIsOlder();
    void whoIsDoneLeavesTheLane();
    void tooManyAreRefused();
    void everythingIsTakenInItsOrder();
    void closedQueueIsEmptied();
    void closedQueueLeavesMessagesToWhoHasThem();

private:
    // A number that done() tells, and for a message that it is one.
    WriteTask other(int number)
    {
        return {{}, [this, number](const std::exception_ptr &) { told << number; }};
    }
    WriteTask message(int number)
    {
        WriteTask task = other(number);
        task.message = std::make_shared<MessageToStore>();
        return task;
    }
    QList<int> numbersOf(const Batch &batch)
    {
        told.clear();
        for (const WriteTask &task : batch)
            task.done(nullptr);
        return told;
    }
    QList<int> taken(WriteQueue &queue)
    {
        const auto found = queue.take(0ms);
        return found ? numbersOf(found->batch) : QList<int>{-1};
    }

    QList<int> told;
};

void TestWriteQueue::oneTakesEverythingTogether()
{
    WriteQueue queue(9, Takers::One);
    queue.push(other(1));
    queue.push(message(2));
    queue.push(other(3));
    QCOMPARE(taken(queue), (QList{1, 2, 3}));
    QCOMPARE(taken(queue), QList<int>());
}

void TestWriteQueue::oneTakesNoMoreThanACommitMayHold()
{
    WriteQueue queue(999, Takers::One);
    for (int i = 0; i < 300; ++i)
        queue.push(message(i));
    QCOMPARE(taken(queue).size(), 256);
    QCOMPARE(taken(queue).size(), 44);
}

void TestWriteQueue::severalTakeOneByOne()
{
    WriteQueue queue(9, Takers::Several);
    queue.push(other(1));
    queue.push(other(2));
    QCOMPARE(taken(queue), QList{1});
    QCOMPARE(taken(queue), QList{2});
}

void TestWriteQueue::severalTakeMessagesTogether()
{
    WriteQueue queue(999, Takers::Several);
    for (int i = 0; i < 70; ++i)
        queue.push(message(i));
    QList<int> first;
    for (int i = 0; i < 64; ++i)
        first << i;
    QCOMPARE(taken(queue), first);
    QCOMPARE(taken(queue), (QList{64, 65, 66, 67, 68, 69}));
}

void TestWriteQueue::onlyOneHasMessages()
{
    WriteQueue queue(9, Takers::Several);
    queue.push(message(1));
    {
        const auto held = queue.take(0ms);
        QCOMPARE(held->batch.size(), std::size_t{1});
        queue.push(message(2));
        queue.push(other(3));
        queue.push(message(4));
        QCOMPARE(taken(queue), QList{3});
        QCOMPARE(taken(queue), QList<int>());
        QCOMPARE(queue.size(), std::size_t{2});
    }
    QCOMPARE(taken(queue), (QList{2, 4}));
}

void TestWriteQueue::messagesWaitInTheirTurn()
{
    WriteQueue queue(9, Takers::Several);
    queue.push(other(1));
    queue.push(message(2));
    queue.push(other(3));
    QCOMPARE(taken(queue), QList{1});
    QCOMPARE(taken(queue), QList{2});
    QCOMPARE(taken(queue), QList{3});
}

// A thread waits for anything at all while another has messages.
void TestWriteQueue::whoWaitsGetsTheMessagesThatAreLeft()
{
    WriteQueue queue(9, Takers::Several);
    queue.push(message(1));
    std::optional<WriteQueue::Taken> held(queue.take(0ms));
    queue.push(message(2));
    std::size_t found = 0;
    std::thread waiting([&] { found = queue.take(1h)->batch.size(); });
    held.reset();
    waiting.join();
    QCOMPARE(found, std::size_t{1});
}

void TestWriteQueue::whoIsDoneGoesOnWithTheNextMessages()
{
    WriteQueue queue(9, Takers::Several);
    queue.push(message(1));
    auto held = queue.take(0ms);
    queue.push(message(2));
    queue.push(message(3));
    held = queue.take(0ms, std::move(*held));
    QCOMPARE(numbersOf(held->batch), (QList{2, 3}));
    queue.push(message(4));
    QCOMPARE(taken(queue), QList<int>()); // held still
}

void TestWriteQueue::whoIsDoneTakesWhatIsOlder()
{
    WriteQueue queue(9, Takers::Several);
    queue.push(message(1));
    auto held = queue.take(0ms);
    queue.push(other(2));
    queue.push(message(3));
    held = queue.take(0ms, std::move(*held));
    QCOMPARE(numbersOf(held->batch), QList{2});
    QCOMPARE(taken(queue), QList{3});
}

void TestWriteQueue::whoIsDoneLeavesTheLane()
{
    WriteQueue queue(9, Takers::Several);
    queue.push(message(1));
    auto held = queue.take(0ms);
    held = queue.take(0ms, std::move(*held));
    QVERIFY(held->batch.empty());
    queue.push(message(2));
    QCOMPARE(taken(queue), QList{2});
}

void TestWriteQueue::tooManyAreRefused()
{
    WriteQueue queue(3, Takers::Several);
    QVERIFY(queue.push(message(1)));
    QVERIFY(queue.push(other(2)));
    QVERIFY(queue.push(message(3)));
    QVERIFY(!queue.push(message(4)));
    QVERIFY(!queue.push(other(5)));
    QCOMPARE(taken(queue), QList({1, 3}));
    QVERIFY(queue.push(other(6)));
}

void TestWriteQueue::everythingIsTakenInItsOrder()
{
    WriteQueue queue(9, Takers::Several);
    queue.push(other(1));
    queue.push(message(2));
    queue.push(message(3));
    queue.push(other(4));
    QCOMPARE(numbersOf(queue.takeAll()), (QList{1, 2, 3, 4}));
    QCOMPARE(queue.size(), std::size_t{0});
}

void TestWriteQueue::closedQueueIsEmptied()
{
    WriteQueue queue(9, Takers::Several);
    queue.push(message(1));
    queue.push(other(2));
    queue.close();
    QVERIFY(!queue.push(other(3)));
    QCOMPARE(taken(queue), QList{1});
    QCOMPARE(taken(queue), QList{2});
    QVERIFY(!queue.take(1h));
}

void TestWriteQueue::closedQueueLeavesMessagesToWhoHasThem()
{
    WriteQueue queue(9, Takers::Several);
    queue.push(message(1));
    {
        const auto held = queue.take(0ms);
        queue.push(message(2));
        queue.close();
        QVERIFY(!queue.take(1h)); // another writer ends
    }
    QCOMPARE(taken(queue), QList{2});
    QVERIFY(!queue.take(1h));
}

TIDELOFT_TEST_MAIN(TestWriteQueue)
#include "tst_write_queue.moc"
