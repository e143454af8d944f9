// Threads with a queue in front of them: what is taken, what is refused, and the end.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/threads/workers.h"
#include "tests/service/semaphore.h"
#include "tests/support/test_main.h"

#include <QFile>

#include <algorithm>
#include <atomic>
#include <limits>

using namespace Qt::StringLiterals;
using tideloft::service::BoundedQueue;
using tideloft::service::Workers;
using tideloft::tests::Semaphore;

class TestWorkers : public QObject
{
    Q_OBJECT

private slots:
    void everyJobIsDoneOnce();
    void tooManyJobsAreRefused();
    void stoppingWaitsForWhatRunsAndDropsTheRest();
    void nothingIsTakenAfterStopping();
    void queueKeepsTheOrderAndTheBound();
    void lowPriorityIsLaterThanUsualAndNotLast();

private:
    static int niceness(Workers::Priority priority);
};

void TestWorkers::everyJobIsDoneOnce()
{
    constexpr int jobs = 1000;
    std::atomic<int> done = 0;
    Semaphore finished;
    Workers workers(3, jobs);
    for (int i = 0; i < jobs; ++i) {
        QVERIFY(workers.submit([&] {
            ++done;
            finished.release();
        }));
    }
    finished.acquire(jobs);
    QCOMPARE(done, jobs);
}

void TestWorkers::tooManyJobsAreRefused()
{
    Semaphore begun;
    Semaphore mayEnd;
    const auto slow = [&] {
        begun.release();
        mayEnd.acquire();
    };
    Workers workers(1, 1);
    QVERIFY(workers.submit(slow));
    begun.acquire();
    QVERIFY(workers.submit(slow));
    QCOMPARE(workers.waiting(), std::size_t{1});
    QVERIFY(!workers.submit(slow));
    mayEnd.release(2);
    begun.acquire();
}

void TestWorkers::stoppingWaitsForWhatRunsAndDropsTheRest()
{
    Semaphore begun;
    Semaphore mayEnd;
    std::atomic<bool> ended = false;
    std::atomic<bool> laterBegan = false;
    Workers workers(1, std::numeric_limits<std::size_t>::max());
    workers.submit([&] {
        begun.release();
        mayEnd.acquire();
        ended = true;
    });
    begun.acquire();
    std::thread stopper([&] { workers.stop(); });
    while (workers.submit([&] { laterBegan = true; })) // until stopping has begun
        std::this_thread::yield();
    mayEnd.release();
    stopper.join();
    QVERIFY(ended);
    QVERIFY(!laterBegan);
}

void TestWorkers::nothingIsTakenAfterStopping()
{
    Workers workers(1, 10);
    workers.stop();
    QVERIFY(!workers.submit([] {}));
}

void TestWorkers::queueKeepsTheOrderAndTheBound()
{
    BoundedQueue<int> queue(3);
    for (int i = 1; i <= 4; ++i)
        QCOMPARE(queue.push(i), i <= 3);
    for (int i = 1; i <= 3; ++i)
        QCOMPARE(queue.take(), i);
    QCOMPARE(queue.size(), std::size_t{0});
}

// The 19th value of the kernel's line about a thread. What stands in front of the third is a name.
int TestWorkers::niceness(Workers::Priority priority)
{
    int found = 0;
    Semaphore finished;
    Workers workers(1, 1, priority);
    workers.submit([&] {
        QFile line(u"/proc/thread-self/stat"_s);
        if (line.open(QIODevice::ReadOnly)) {
            const QByteArray values = line.readAll();
            found = values.mid(values.lastIndexOf(')') + 2).split(' ').value(16).toInt();
        }
        finished.release();
    });
    finished.acquire();
    return found;
}

// The last of all got so little beside two busy programs that nobody could sign in.
void TestWorkers::lowPriorityIsLaterThanUsualAndNotLast()
{
    const int usual = niceness(Workers::Priority::Usual);
    QCOMPARE(niceness(Workers::Priority::Low), std::min(usual + 10, 19));
}

TIDELOFT_TEST_MAIN(TestWorkers)
#include "tst_workers.moc"
