// One holder at a time, nobody for ever, and no harm where there is nothing to lock.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "local_files/directory_lock.h"
#include "tests/support/test_main.h"

#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <optional>
#include <thread>

using tideloft::local_files::DirectoryLock;
using namespace Qt::StringLiterals;

class TestDirectoryLock : public QObject
{
    Q_OBJECT

private slots:
    void leavesNothingBehind();
    void secondHolderWaitsForTheFirst();
    void onlyOneAtATime();
    void whatCannotBeLockedIsNotWaitedFor_data();
    void whatCannotBeLockedIsNotWaitedFor();
    void stoppedHolderIsNotWaitedForForEver();
};

void TestDirectoryLock::leavesNothingBehind()
{
    const QTemporaryDir directory;
    {
        const DirectoryLock lock(directory.path());
        QVERIFY(lock.isHeld());
        QVERIFY(QDir(directory.path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    }
    QVERIFY(QDir(directory.path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    const DirectoryLock again(directory.path());
    QVERIFY(again.isHeld());
}

// Two descriptors of one process keep each other out as those of two processes do.
void TestDirectoryLock::secondHolderWaitsForTheFirst()
{
    const QTemporaryDir directory;
    std::optional<DirectoryLock> first(std::in_place, directory.path());
    std::atomic<bool> triedInVain = false;
    bool heldAfterRelease = false;
    std::thread second([&] {
        triedInVain = !DirectoryLock(directory.path(), 1).isHeld();
        heldAfterRelease = DirectoryLock(directory.path()).isHeld();
    });
    QTRY_VERIFY_WITH_TIMEOUT(triedInVain, 20'000);
    first.reset();
    second.join();
    QVERIFY(heldAfterRelease);
}

void TestDirectoryLock::onlyOneAtATime()
{
    const QTemporaryDir directory;
    std::atomic<int> inside = 0;
    std::atomic<int> meetings = 0;
    const auto enter = [&] {
        for (int i = 0; i < 50; ++i) {
            const DirectoryLock lock(directory.path());
            meetings += ++inside > 1 || !lock.isHeld();
            std::this_thread::yield();
            --inside;
        }
    };
    std::thread one(enter);
    std::thread other(enter);
    one.join();
    other.join();
    QCOMPARE(meetings.load(), 0);
}

void TestDirectoryLock::whatCannotBeLockedIsNotWaitedFor_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("no path") << QString();
    QTest::newRow("nothing there") << u"/nowhere/at/all"_s;
    QTest::newRow("no directory") << u"/dev/null"_s;
}

void TestDirectoryLock::whatCannotBeLockedIsNotWaitedFor()
{
    QFETCH(const QString, path);
    const DirectoryLock lock(path);
    QVERIFY(!lock.isHeld());
}

void TestDirectoryLock::stoppedHolderIsNotWaitedForForEver()
{
    const QTemporaryDir directory;
    const DirectoryLock stopped(directory.path());
    const DirectoryLock other(directory.path(), 50);
    QVERIFY(stopped.isHeld());
    QVERIFY(!other.isHeld());
}

TIDELOFT_TEST_MAIN(TestDirectoryLock)
#include "tst_directory_lock.moc"
