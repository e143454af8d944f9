// How the memory for transfers is divided, and that all of it comes back.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/byte_budget.h"
#include "tests/support/test_main.h"

#include <vector>

using tideloft::service::ByteBudget;

class TestByteBudget : public QObject
{
    Q_OBJECT

private slots:
    void oneAloneHasAThird();
    void everyNextOneFindsSomething();
    void growsWithinTheSameBounds();
    void comesBackWhenTheShareGoes();
    void accountHasNoMoreThanItsPart();
    void largerThanEverythingGoesAlone();
    void assigningGivesBackTheOldShare();
};

void TestByteBudget::oneAloneHasAThird()
{
    ByteBudget budget(90, 90);
    const ByteBudget::Share first = budget.take(1, 20);
    QVERIFY(bool(first));
    QVERIFY(!budget.take(1, 11));
    const ByteBudget::Share second = budget.take(1, 10);
    QVERIFY(bool(second));
    QVERIFY(!budget.take(1, 1));
}

// However many come, half of what is left is there for the next.
void TestByteBudget::everyNextOneFindsSomething()
{
    ByteBudget budget(9000, 9000);
    std::vector<ByteBudget::Share> held;
    std::uint64_t left = 9000;
    for (std::int64_t account = 1; account <= 15; ++account) {
        const std::uint64_t most = left / 3;
        QVERIFY(most > 0);
        QVERIFY(account == 1
                || !budget.take(account, most + 1)); // more than one may ever have counts as that
        held.push_back(budget.take(account, most));
        QVERIFY(bool(held.back()));
        left -= most;
    }
}

void TestByteBudget::growsWithinTheSameBounds()
{
    ByteBudget budget(90, 90);
    ByteBudget::Share share = budget.take(1, 0);
    QVERIFY(share.grow(10));
    const ByteBudget::Share other = budget.take(2, 26);
    QVERIFY(bool(other));
    QVERIFY(!share.grow(22)); // 64 without this one's
    QVERIFY(share.grow(21));
    QVERIFY(share.grow(5)); // which it has
}

void TestByteBudget::comesBackWhenTheShareGoes()
{
    ByteBudget budget(300, 100);
    for (int i = 0; i < 10; ++i) {
        ByteBudget::Share share = budget.take(1, 100);
        QVERIFY(bool(share));
        const ByteBudget::Share moved = std::move(share);
        QVERIFY(bool(moved));
        QVERIFY(!budget.take(2, 67));
    }
    QVERIFY(bool(budget.take(2, 100)));
}

void TestByteBudget::accountHasNoMoreThanItsPart()
{
    ByteBudget budget(1000, 60);
    const ByteBudget::Share first = budget.take(1, 50);
    QVERIFY(!budget.take(1, 11));
    const ByteBudget::Share second = budget.take(1, 10);
    QVERIFY(first && second);
    QVERIFY(bool(budget.take(2, 60)));
}

void TestByteBudget::largerThanEverythingGoesAlone()
{
    ByteBudget budget(180, 60);
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
    ByteBudget budget(300, 100);
    ByteBudget::Share share = budget.take(1, 100);
    share = budget.take(2, 50);
    QVERIFY(bool(share));
    QVERIFY(bool(budget.take(3, 83)));
    QVERIFY(!budget.take(3, 84));
    share = {};
    QVERIFY(bool(budget.take(3, 100)));
}

TIDELOFT_TEST_MAIN(TestByteBudget)
#include "tst_byte_budget.moc"
