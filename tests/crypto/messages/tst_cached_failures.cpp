// Messages that do not open: RSA and AES-GCM run for them once, as long as nothing changes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/key_store.h"
#include "tests/support/crypto/failing_libcrypto.h"
#include "tests/support/crypto/reading.h"
#include "tests/support/data_dir.h"
#include "tests/support/test_main.h"

#include <QTest>

#include <functional>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

namespace
{

/// Whether OPERATION, which may fail at it, calls CALL of libcrypto.
bool calls(const QByteArray &call, const std::function<void()> &operation)
{
    const FailingCall failing(call, 0);
    operation();
    return FailingCall::hasFailed();
}

/// Whether reading MESSAGE takes RSA or AES-GCM.
bool takesWork(DecryptionCache &cache, const QJsonObject &message)
{
    const auto read = [&] { errorWith(cache, message); };
    const bool takesRsa = calls("EVP_PKEY_decrypt", read);
    return calls("EVP_CIPHER_CTX_new", read) || takesRsa;
}

} // namespace

class TestCachedFailures : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void failureTakesWorkOnce_data();
    void failureTakesWorkOnce();
    void anotherTextIsTried_data();
    void anotherTextIsTried();
    void anotherReaderTriesAgain_data();
    void anotherReaderTriesAgain();
    void missingKeyFileIsLookedForAgain();
    void aFailureThatMayPassIsTriedAgain_data();
    void aFailureThatMayPassIsTriedAgain();
    void failuresLeaveWhatOpensAlone();
    void messageOpensBesideItsFailedTwin();
    void oldestFailureMakesRoom();
};

void TestCachedFailures::init()
{
    removeDataDir();
    QVERIFY(writePrivateKeyFile(keyText()));
}

void TestCachedFailures::failureTakesWorkOnce_data()
{
    QTest::addColumn<QJsonObject>("message");
    const QJsonObject message = sealed(u"hi"_s);
    QTest::newRow("forged text") << flippedMember(message, u"text"_s, 0);
    QTest::newRow("forged tag") << flippedMember(message, u"text"_s, -1);
    QTest::newRow("forged nonce") << flippedMember(message, u"iv"_s, 0);
    QTest::newRow("short nonce") << changed(message, u"iv"_s, u"QUJD"_s);
    QTest::newRow("wrapped for another key") << flippedWrappedKey(message, 200);
    QTest::newRow("content key of 16 bytes") << sealedBy(QByteArray(16, 'k'), nonce, QByteArray(20, 'c'));
    QTest::newRow("content key of no bytes") << sealedBy(QByteArray(), nonce, QByteArray(20, 'c'));
}

void TestCachedFailures::failureTakesWorkOnce()
{
    QFETCH(const QJsonObject, message);
    const QString expected = decryptMessage(message, u"alice"_s, own).error;
    QVERIFY(!expected.isEmpty());
    DecryptionCache cache;
    QCOMPARE(errorWith(cache, message), expected);
    QVERIFY(!takesWork(cache, message));
    QCOMPARE(errorWith(cache, message), expected);
    QCOMPARE(cache.size(), 0);
}

void TestCachedFailures::anotherTextIsTried_data()
{
    QTest::addColumn<QString>("member");
    QTest::newRow("text") << u"text"_s;
    QTest::newRow("iv") << u"iv"_s;
    QTest::newRow("key") << u"key"_s;
}

void TestCachedFailures::anotherTextIsTried()
{
    QFETCH(const QString, member);
    DecryptionCache cache;
    const QJsonObject message = flippedMember(sealed(u"hi"_s), u"text"_s, 0);
    errorWith(cache, message);
    const QJsonObject other =
        member == u"key" ? flippedWrappedKey(message, 200) : flippedMember(message, member, 1);
    QVERIFY(takesWork(cache, other));
}

void TestCachedFailures::anotherReaderTriesAgain_data()
{
    using Change = std::function<void(DecryptionCache &)>;
    QTest::addColumn<Change>("change");
    QTest::newRow("clear") << Change([](DecryptionCache &cache) { cache.clear(); });
    QTest::newRow("user") << Change(
        [](DecryptionCache &cache) { cache.setReader(keyText().toLatin1(), u"carol"_s, own); });
    QTest::newRow("device") << Change(
        [](DecryptionCache &cache) { cache.setReader(keyText().toLatin1(), u"alice"_s, u"dev-2"_s); });
    QTest::newRow("key") << Change(
        [](DecryptionCache &) { QVERIFY(writePrivateKeyFile(toBase64Text(anotherPrivateKey()))); });
}

void TestCachedFailures::anotherReaderTriesAgain()
{
    QFETCH(const std::function<void(DecryptionCache &)>, change);
    DecryptionCache cache;
    const QJsonObject message = flippedMember(sealed(u"hi"_s), u"text"_s, 0);
    errorWith(cache, message);
    QVERIFY(!takesWork(cache, message));
    const quint64 generation = cache.generation();
    change(cache);
    QVERIFY(takesWork(cache, message));
    QVERIFY(cache.generation() != generation);
}

void TestCachedFailures::missingKeyFileIsLookedForAgain()
{
    DecryptionCache cache;
    const QJsonObject message = sealed(u"hi"_s);
    QVERIFY(QFile::remove(privateKeyPath()));
    for (int i = 0; i < 2; ++i) {
        const quint64 before = cache.generation();
        QCOMPARE(errorWith(cache, message), u"Could not open file: "_s + privateKeyPath());
        rereadPrivateKey(u"alice"_s, own, cache);
        QVERIFY(cache.generation() != before); // whoever shows the failure must not keep it
    }
    QVERIFY(writePrivateKeyFile(keyText()));
    QCOMPARE(textWith(cache, message), u"hi"_s);
}

void TestCachedFailures::aFailureThatMayPassIsTriedAgain_data()
{
    QTest::addColumn<QByteArray>("call");
    QTest::newRow("no memory for RSA") << QByteArray("EVP_PKEY_CTX_new");
    QTest::newRow("no memory for AES") << QByteArray("EVP_CIPHER_CTX_new");
}

void TestCachedFailures::aFailureThatMayPassIsTriedAgain()
{
    QFETCH(QByteArray, call);
    DecryptionCache cache;
    const QJsonObject message = sealed(u"hi"_s);
    rereadPrivateKey(u"alice"_s, own, cache);
    const quint64 before = cache.generation();
    {
        const FailingCall failing(call, 0);
        QVERIFY(errorWith(cache, message).startsWith(u"Could not create "));
    }
    QVERIFY(cache.generation() != before); // whoever shows the failure must not keep it
    QCOMPARE(textWith(cache, message), u"hi"_s);
}

void TestCachedFailures::failuresLeaveWhatOpensAlone()
{
    DecryptionCache cache(2);
    const QJsonObject good = sealedWith(contentKey, "hi");
    QCOMPARE(textWith(cache, good), u"hi"_s);
    for (qsizetype i = 0; i < 8; ++i)
        QVERIFY(!errorWith(cache, flippedMember(sealed(u"bad"_s), u"text"_s, 0)).isEmpty());
    QVERIFY(!calls("EVP_PKEY_decrypt", [&] { QCOMPARE(textWith(cache, good), u"hi"_s); }));
}

// Both have the same wrapped key. What is known of the one says nothing of the other.
void TestCachedFailures::messageOpensBesideItsFailedTwin()
{
    DecryptionCache cache;
    const QJsonObject good = sealed(u"hi"_s);
    const QJsonObject twin = flippedMember(good, u"text"_s, 0);
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(errorWith(cache, twin), u"AES-GCM authentication failed."_s);
        QCOMPARE(textWith(cache, good), u"hi"_s);
    }
}

void TestCachedFailures::oldestFailureMakesRoom()
{
    DecryptionCache cache;
    const auto digest = [](int number) { return "digest " + QByteArray::number(number); };
    for (int i = 0; i <= DecryptionCache::mostFailures; ++i)
        cache.insertFailure(digest(i), QString::number(i));
    QVERIFY(!cache.failure(digest(0)));
    for (int i = 1; i <= DecryptionCache::mostFailures; ++i)
        QCOMPARE(cache.failure(digest(i)), QString::number(i));
    cache.insertFailure("silent", {});
    QCOMPARE(cache.failure("silent"), QString()); // a failure without a word is one too
    cache.clear();
    QVERIFY(!cache.failure(digest(5)));
    cache.insertFailure(digest(5), u"again"_s);
    QCOMPARE(cache.failure(digest(5)), u"again"_s);
}

TIDELOFT_TEST_MAIN(TestCachedFailures)
#include "tst_cached_failures.moc"
