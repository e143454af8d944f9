// Who is connected, how many of one address, and who has waited for longest.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/open_connections.h"
#include "tests/support/test_main.h"

using Connections = tideloft::service::OpenConnections<int>;

class TestOpenConnections : public QObject
{
    Q_OBJECT

private slots:
    void everyPeerIsCounted();
    void longestIdleComesFirst();
    void whoIsGoneIsNotIdle();
    void whoIsNotThereIsNobody();

private:
    int one = 1;
    int two = 2;
    int three = 3;
};

void TestOpenConnections::everyPeerIsCounted()
{
    Connections open;
    open.add(&one, "a");
    open.add(&two, "a");
    open.add(&three, "b");
    QCOMPARE(open.count(), std::size_t{3});
    QCOMPARE(open.countOf("a"), std::size_t{2});
    open.remove(&one);
    open.remove(&one);
    QCOMPARE(open.count(), std::size_t{2});
    QCOMPARE(open.countOf("a"), std::size_t{1});
    open.remove(&two);
    QCOMPARE(open.countOf("a"), std::size_t{0});
    QCOMPARE(open.countOf("b"), std::size_t{1});
}

void TestOpenConnections::longestIdleComesFirst()
{
    Connections open;
    open.add(&one, "a");
    open.add(&two, "a");
    open.add(&three, "b");
    QVERIFY(!open.longestIdle());
    open.setIdle(&three, true);
    open.setIdle(&two, true);
    open.setIdle(&one, true);
    QCOMPARE(open.longestIdle(), &three);
    QCOMPARE(open.longestIdleOf("a"), &two);
    open.setIdle(&two, false);
    QCOMPARE(open.longestIdleOf("a"), &one);
    open.setIdle(&two, true); // it was busy meanwhile
    QCOMPARE(open.longestIdleOf("a"), &one);
    open.setIdle(&three, false);
    QCOMPARE(open.longestIdle(), &one);
}

void TestOpenConnections::whoIsGoneIsNotIdle()
{
    Connections open;
    open.add(&one, "a");
    open.setIdle(&one, true);
    open.remove(&one);
    QVERIFY(!open.longestIdle());
    QVERIFY(!open.longestIdleOf("a"));
}

void TestOpenConnections::whoIsNotThereIsNobody()
{
    Connections open;
    open.setIdle(&one, true);
    open.remove(&one);
    QVERIFY(!open.longestIdle());
    QVERIFY(!open.longestIdleOf("a"));
    QCOMPARE(open.count(), std::size_t{0});
}

TIDELOFT_TEST_MAIN(TestOpenConnections)
#include "tst_open_connections.moc"
