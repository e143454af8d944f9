// The bounds of the cache for opening messages: what it finds, what it evicts, and that it starts empty.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/messages/decryption_cache.h"
#include "crypto/messages/sealed_texts.h"
#include "tests/support/test_main.h"

#include <QTest>

using namespace tideloft::crypto;
using namespace Qt::StringLiterals;

namespace
{

QByteArray digestOf(int number)
{
    return tideloft::crypto::digestOf(u"wrapped key %1"_s.arg(number));
}

// 32 bytes that no two numbers share, and no zero among them.
QByteArray keyOf(int number)
{
    return QByteArray::number(number).rightJustified(32, 'k');
}

} // namespace

class TestDecryptionCacheBounds : public QObject
{
    Q_OBJECT

private slots:
    void emptyCacheFindsNothing();
    void withoutADigestNothingIsHeld();
    void fullCacheEvictsWhatWasNotUsed();
    void fullCacheKeepsItsBoundOverManyRounds();
    void defaultCapacityHolds();
    void clearedCacheCanBeFilledAgain();
};

void TestDecryptionCacheBounds::emptyCacheFindsNothing()
{
    const DecryptionCache cache;
    QVERIFY(cache.contentKey(digestOf(u"x"_s)).isEmpty());
    QVERIFY(cache.contentKey({}).isEmpty());
    QVERIFY(!cache.failure("digest"));
    QCOMPARE(cache.size(), 0);
}

void TestDecryptionCacheBounds::withoutADigestNothingIsHeld()
{
    DecryptionCache cache;
    cache.insertContentKey({}, keyOf(1));
    cache.insertFailure({}, u"failed"_s);
    QCOMPARE(cache.size(), 0);
    QVERIFY(!cache.failure({}));
}

void TestDecryptionCacheBounds::fullCacheEvictsWhatWasNotUsed()
{
    DecryptionCache cache(3);
    for (int i = 0; i < 3; ++i)
        cache.insertContentKey(digestOf(i), keyOf(i));
    QCOMPARE(cache.contentKey(digestOf(0)), keyOf(0)); // the one that was used last
    const QByteArray sameBytes = cache.contentKey(digestOf(1));
    for (const int used : {2, 0})
        QVERIFY(!cache.contentKey(digestOf(used)).isEmpty());
    cache.insertContentKey(digestOf(3), keyOf(3));
    QVERIFY(cache.contentKey(digestOf(1)).isEmpty());
    QCOMPARE(sameBytes, QByteArray(32, '\0')); // and is wiped
    for (const int kept : {0, 2, 3})
        QCOMPARE(cache.contentKey(digestOf(kept)), keyOf(kept));
    QCOMPARE(cache.size(), 3);
}

void TestDecryptionCacheBounds::fullCacheKeepsItsBoundOverManyRounds()
{
    constexpr int capacity = 37;
    DecryptionCache cache(capacity);
    for (int i = 0; i < 2000; ++i) {
        cache.insertContentKey(digestOf(i), keyOf(i));
        QCOMPARE(cache.size(), qMin(i + 1, capacity));
        for (int k = qMax(0, i - capacity - 5); k <= i; ++k)
            QCOMPARE(cache.contentKey(digestOf(k)), k > i - capacity ? keyOf(k) : QByteArray());
    }
}

void TestDecryptionCacheBounds::defaultCapacityHolds()
{
    constexpr int capacity = DecryptionCache::mostContentKeys;
    QVERIFY(capacity >= 65'536);
    DecryptionCache cache;
    for (int i = 0; i <= capacity; ++i)
        cache.insertContentKey(digestOf(i), keyOf(i));
    QCOMPARE(cache.size(), capacity);
    QVERIFY(cache.contentKey(digestOf(0)).isEmpty());
    for (int i = 1; i <= capacity; ++i)
        QCOMPARE(cache.contentKey(digestOf(i)), keyOf(i));
}

void TestDecryptionCacheBounds::clearedCacheCanBeFilledAgain()
{
    DecryptionCache cache(8);
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 12; ++i)
            cache.insertContentKey(digestOf(i), keyOf(i));
        for (int i = 4; i < 12; ++i)
            QCOMPARE(cache.contentKey(digestOf(i)), keyOf(i));
        cache.clear();
        QCOMPARE(cache.size(), 0);
        for (int i = 0; i < 12; ++i)
            QVERIFY(cache.contentKey(digestOf(i)).isEmpty());
    }
}

TIDELOFT_TEST_MAIN(TestDecryptionCacheBounds)
#include "tst_decryption_cache_bounds.moc"
