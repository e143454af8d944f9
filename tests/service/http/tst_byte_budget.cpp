// How the memory for transfers is divided, and that all of it comes back.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/byte_budget.h"
#include "tests/support/test_main.h"

using tideloft::service::ByteBudget;

class TestByteBudget : public QObject
{
    Q_OBJECT

private slots:
    void takesUpToTheLimit();
    void comesBackWhenTheShareGoes();
    void accountsLeaveOthersTheirPart();
    void largerThanEverythingGoesAlone();
    void assigningGivesBackTheOldShare();
};

void TestByteBudget::takesUpToTheLimit()
{
    ByteBudget budget(100, 100);
    const ByteBudget::Share first = budget.take(1, 60);
    QVERIFY(bool(first));
    QVERIFY(!budget.take(1, 41));
    QVERIFY(!budget.take(2, 41));
    const ByteBudget::Share rest = budget.take(2, 40);
    QVERIFY(bool(rest));
    QVERIFY(!budget.take(3, 1));
}

void TestByteBudget::comesBackWhenTheShareGoes()
{
    ByteBudget budget(100, 100);
    for (int i = 0; i < 10; ++i) {
        ByteBudget::Share share = budget.take(1, 100);
        QVERIFY(bool(share));
        const ByteBudget::Share moved = std::move(share);
        QVERIFY(bool(moved));
        QVERIFY(!budget.take(2, 1));
    }
    QVERIFY(bool(budget.take(2, 100)));
}

void TestByteBudget::accountsLeaveOthersTheirPart()
{
    ByteBudget budget(100, 60);
    const ByteBudget::Share first = budget.take(1, 50);
    QVERIFY(!budget.take(1, 11));
    const ByteBudget::Share second = budget.take(1, 10);
    QVERIFY(first && second);
    QVERIFY(!budget.take(2, 41));
    QVERIFY(bool(budget.take(2, 40)));
}

void TestByteBudget::largerThanEverythingGoesAlone()
{
    ByteBudget budget(100, 60);
    {
        const ByteBudget::Share huge = budget.take(1, 1'000'000);
        QVERIFY(bool(huge));
        QVERIFY(!budget.take(1, 1));
        QVERIFY(!budget.take(2, 1'000'000));
        QVERIFY(bool(budget.take(2, 40)));
    }
    const ByteBudget::Share little = budget.take(1, 1);
    QVERIFY(!budget.take(1, 1'000'000));
}

void TestByteBudget::assigningGivesBackTheOldShare()
{
    ByteBudget budget(100, 100);
    ByteBudget::Share share = budget.take(1, 70);
    share = budget.take(2, 30);
    QVERIFY(bool(share));
    QVERIFY(bool(budget.take(3, 70)));
    QVERIFY(!budget.take(3, 71));
    share = {};
    QVERIFY(bool(budget.take(3, 100)));
}

TIDELOFT_TEST_MAIN(TestByteBudget)
#include "tst_byte_budget.moc"
