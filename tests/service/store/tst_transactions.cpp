// Transactions inside each other: what is committed stays, and what is not is undone, whatever came before.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/facts.h"
#include "tests/service/store/store_fixture.h"
#include "tests/support/long_form.h"
#include "tests/support/test_main.h"

#include <QRandomGenerator>
#include <QSet>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestTransactions : public QObject
{
    Q_OBJECT

private slots:
    void partFromTheBeginningIsUndone();
    void partAfterAChangeIsUndoneAlone();
    void randomPartsAreAsIfEachHadItsOwn();

private:
    void add(int number) { setFact(store.database, u"fact%1"_s.arg(number), number); }
    QSet<int> kept()
    {
        QSet<int> numbers;
        Rows rows = store.database.run(u"SELECT value FROM facts"_s);
        while (rows.next())
            numbers << rows.value(0).toInt();
        return numbers;
    }
    void act(QRandomGenerator &random, int depth);

    StoreFixture store;
    QSet<int> expected; ///< what there is from the view of the innermost transaction
    int last = 0;
};

void TestTransactions::partFromTheBeginningIsUndone()
{
    Transaction whole(store.database);
    {
        const Transaction part(store.database);
        add(1);
    }
    QCOMPARE(kept(), QSet<int>());
    add(2);
    whole.commit();
    QCOMPARE(kept(), QSet<int>{2});
    store.database.run(u"DELETE FROM facts"_s);
}

void TestTransactions::partAfterAChangeIsUndoneAlone()
{
    Transaction whole(store.database);
    add(1);
    {
        const Transaction part(store.database);
        add(2);
    }
    whole.commit();
    QCOMPARE(kept(), QSet<int>{1});
    store.database.run(u"DELETE FROM facts"_s);
}

void TestTransactions::act(QRandomGenerator &random, int depth)
{
    for (int left = random.bounded(5); left > 0; --left) {
        const int choice = random.bounded(depth < 4 ? 4 : 2);
        if (choice == 0) {
            QCOMPARE(kept(), expected);
        } else if (choice == 1) {
            add(++last);
            expected << last;
        } else {
            const QSet<int> before = expected;
            Transaction part(store.database);
            act(random, depth + 1);
            random.bounded(2) == 0 ? part.commit() : void(expected = before);
        }
    }
}

void TestTransactions::randomPartsAreAsIfEachHadItsOwn()
{
    const quint32 seed = QRandomGenerator::global()->generate();
    qInfo("seed %u", seed);
    QRandomGenerator random(seed);
    for (int round = rounds(200, 5000); round > 0; --round) {
        act(random, 0);
        QCOMPARE(kept(), expected);
        store.database.run(u"DELETE FROM facts"_s);
        expected.clear();
    }
}

TIDELOFT_TEST_MAIN(TestTransactions)
#include "tst_transactions.moc"
