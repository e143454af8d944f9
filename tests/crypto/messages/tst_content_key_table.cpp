// The table of content keys: what it finds, what it gives up, and that nothing of it is left behind.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/content_key_table.h"
#include "crypto/messages/reading_memory.h"
#include "tests/support/crypto/wipe_watch.h"
#include "tests/support/test_main.h"

#include <QTest>

#include <optional>
#include <type_traits>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

static_assert(!std::is_copy_constructible_v<ContentKeyTable> && !std::is_copy_assignable_v<ContentKeyTable>);
static_assert(!std::is_move_constructible_v<ContentKeyTable> && !std::is_move_assignable_v<ContentKeyTable>);

namespace
{

QString textOf(int number)
{
    return u"wrapped key %1"_s.arg(number);
}

// 32 bytes that no two numbers share, and no zero among them.
QByteArray keyOf(int number)
{
    return QByteArray::number(number).rightJustified(32, 'k');
}

} // namespace

class TestContentKeyTable : public QObject
{
    Q_OBJECT

private slots:
    void emptyTableFindsNothing();
    void keptKeyIsFoundByItsWholeText();
    void keysOfAnotherSizeAreNotKept_data();
    void keysOfAnotherSizeAreNotKept();
    void keptKeyIsNotReplaced();
    void fullTableGivesUpItsOldest();
    void fullTableKeepsItsBoundOverManyRounds();
    void defaultCapacityHolds();
    void tableWithoutCapacityHoldsOne();
    void givenUpKeyIsOverwritten();
    void clearWipesAndCanBeFilledAgain();
    void destructionWipes();
    void nothingIsTakenBeforeTheFirstKey();
};

void TestContentKeyTable::emptyTableFindsNothing()
{
    const ContentKeyTable table(4, std::pmr::get_default_resource());
    QVERIFY(table.find(u"x"_s).isEmpty());
    QVERIFY(table.find(QString()).isEmpty());
    QCOMPARE(table.size(), 0);
}

void TestContentKeyTable::keptKeyIsFoundByItsWholeText()
{
    ContentKeyTable table(4, std::pmr::get_default_resource());
    table.insert(u"abc"_s, keyOf(1));
    QCOMPARE(table.find(u"abc"_s), keyOf(1));
    for (const QString &other : {u"abd"_s, u"Abc"_s, u"ab"_s, u"abc "_s, u"abc\0"_s, u"ab\x163"_s, QString()})
        QVERIFY2(table.find(other).isEmpty(), qPrintable(other));
}

void TestContentKeyTable::keysOfAnotherSizeAreNotKept_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {0, 16, 31, 33, 64})
        QTest::addRow("%d bytes", size) << size;
}

void TestContentKeyTable::keysOfAnotherSizeAreNotKept()
{
    QFETCH(const int, size);
    ContentKeyTable table(4, std::pmr::get_default_resource());
    table.insert(u"abc"_s, QByteArray(size, 'k'));
    QCOMPARE(table.size(), 0);
    QVERIFY(table.find(u"abc"_s).isEmpty());
}

void TestContentKeyTable::keptKeyIsNotReplaced()
{
    ContentKeyTable table(4, std::pmr::get_default_resource());
    table.insert(u"abc"_s, keyOf(1));
    table.insert(u"abc"_s, keyOf(2));
    QCOMPARE(table.find(u"abc"_s), keyOf(1));
    QCOMPARE(table.size(), 1);
}

void TestContentKeyTable::fullTableGivesUpItsOldest()
{
    ContentKeyTable table(3, std::pmr::get_default_resource());
    for (int i = 0; i < 3; ++i)
        table.insert(textOf(i), keyOf(i));
    QCOMPARE(table.find(textOf(0)), keyOf(0)); // being looked at does not make it younger
    table.insert(textOf(3), keyOf(3));
    QVERIFY(table.find(textOf(0)).isEmpty());
    for (int i = 1; i <= 3; ++i)
        QCOMPARE(table.find(textOf(i)), keyOf(i));
    QCOMPARE(table.size(), 3);
}

// Every bucket is emptied and filled again many times, so a link that stayed or went astray would show.
void TestContentKeyTable::fullTableKeepsItsBoundOverManyRounds()
{
    constexpr int capacity = 37;
    ContentKeyTable table(capacity, std::pmr::get_default_resource());
    for (int i = 0; i < 2000; ++i) {
        table.insert(textOf(i), keyOf(i));
        QCOMPARE(table.size(), qMin(i + 1, capacity));
        for (int k = qMax(0, i - capacity - 5); k <= i; ++k)
            QCOMPARE(table.find(textOf(k)), k > i - capacity ? keyOf(k) : QByteArray());
    }
}

void TestContentKeyTable::defaultCapacityHolds()
{
    constexpr int capacity = ReadingMemory::defaultCapacity;
    QVERIFY(capacity >= 65'536);
    ContentKeyTable table(capacity, std::pmr::get_default_resource());
    for (int i = 0; i <= capacity; ++i)
        table.insert(textOf(i), keyOf(i));
    QCOMPARE(table.size(), capacity);
    QVERIFY(table.find(textOf(0)).isEmpty());
    for (int i = 1; i <= capacity; ++i)
        QCOMPARE(table.find(textOf(i)), keyOf(i));
}

void TestContentKeyTable::tableWithoutCapacityHoldsOne()
{
    ContentKeyTable table(0, std::pmr::get_default_resource());
    table.insert(textOf(1), keyOf(1));
    table.insert(textOf(2), keyOf(2));
    QCOMPARE(table.size(), 1);
    QCOMPARE(table.find(textOf(2)), keyOf(2));
}

void TestContentKeyTable::givenUpKeyIsOverwritten()
{
    WipeWatch watch;
    ContentKeyTable table(2, watch.storage());
    table.insert(textOf(1), keyOf(1));
    table.insert(textOf(2), keyOf(2));
    QVERIFY(watch.holds(keyOf(1)));
    table.insert(textOf(3), keyOf(3));
    QVERIFY(!watch.holds(keyOf(1)));
    QVERIFY(watch.holds(keyOf(2)) && watch.holds(keyOf(3)));
}

void TestContentKeyTable::clearWipesAndCanBeFilledAgain()
{
    WipeWatch watch;
    ContentKeyTable table(8, watch.storage());
    for (int i = 0; i < 12; ++i)
        table.insert(textOf(i), keyOf(i));
    const qsizetype place = watch.find(keyOf(9));
    QVERIFY(place >= 0);
    table.clear();
    QCOMPARE(watch.at(place, 32), QByteArray(32, '\0'));
    for (int i = 0; i < 12; ++i) {
        QVERIFY(!watch.holds(keyOf(i)));
        QVERIFY(table.find(textOf(i)).isEmpty());
    }
    QCOMPARE(table.size(), 0);
    for (int i = 0; i < 12; ++i)
        table.insert(textOf(i), keyOf(i));
    for (int i = 4; i < 12; ++i)
        QCOMPARE(table.find(textOf(i)), keyOf(i));
}

void TestContentKeyTable::destructionWipes()
{
    WipeWatch watch;
    std::optional<ContentKeyTable> table;
    table.emplace(8, watch.storage());
    table->insert(textOf(1), keyOf(1));
    const qsizetype place = watch.find(keyOf(1));
    QVERIFY(place >= 0);
    table.reset();
    QCOMPARE(watch.at(place, 32), QByteArray(32, '\0'));
}

void TestContentKeyTable::nothingIsTakenBeforeTheFirstKey()
{
    ContentKeyTable table(8, std::pmr::null_memory_resource()); // throws when it is asked for anything
    QVERIFY(table.find(textOf(1)).isEmpty());
    table.clear();
    QVERIFY_THROWS_EXCEPTION(std::bad_alloc, table.insert(textOf(1), keyOf(1)));
}

TIDELOFT_TEST_MAIN(TestContentKeyTable)
#include "tst_content_key_table.moc"
