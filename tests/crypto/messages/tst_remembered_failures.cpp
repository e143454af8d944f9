// Messages that do not open: RSA and AES-GCM run for them once, as long as nothing changes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/key_store.h"
#include "crypto/messages/failure_table.h"
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
bool takesWork(ReadingMemory &memory, const QJsonObject &message)
{
    const auto read = [&] { errorWith(memory, message); };
    const bool takesRsa = calls("EVP_PKEY_decrypt", read);
    return calls("EVP_CIPHER_CTX_new", read) || takesRsa;
}

} // namespace

class TestRememberedFailures : public QObject
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
    void tableForgetsTheOldest();
    void lengthsPartTheTexts();
};

void TestRememberedFailures::init()
{
    removeDataDir();
    QVERIFY(writePrivateKeyFile(keyText()));
}

void TestRememberedFailures::failureTakesWorkOnce_data()
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

void TestRememberedFailures::failureTakesWorkOnce()
{
    QFETCH(const QJsonObject, message);
    const QString expected = decryptMessage(message, u"alice"_s, own).error;
    QVERIFY(!expected.isEmpty());
    ReadingMemory memory;
    QCOMPARE(errorWith(memory, message), expected);
    QVERIFY(!takesWork(memory, message));
    QCOMPARE(errorWith(memory, message), expected);
    QCOMPARE(memory.size(), 0);
}

void TestRememberedFailures::anotherTextIsTried_data()
{
    QTest::addColumn<QString>("member");
    QTest::newRow("text") << u"text"_s;
    QTest::newRow("iv") << u"iv"_s;
    QTest::newRow("key") << u"key"_s;
}

void TestRememberedFailures::anotherTextIsTried()
{
    QFETCH(const QString, member);
    ReadingMemory memory;
    const QJsonObject message = flippedMember(sealed(u"hi"_s), u"text"_s, 0);
    errorWith(memory, message);
    const QJsonObject other =
        member == u"key" ? flippedWrappedKey(message, 200) : flippedMember(message, member, 1);
    QVERIFY(takesWork(memory, other));
}

void TestRememberedFailures::anotherReaderTriesAgain_data()
{
    using Change = std::function<void(ReadingMemory &)>;
    QTest::addColumn<Change>("change");
    QTest::newRow("forget") << Change([](ReadingMemory &memory) { memory.forget(); });
    QTest::newRow("user") << Change(
        [](ReadingMemory &memory) { memory.readFor(keyText().toLatin1(), u"carol"_s, own); });
    QTest::newRow("device") << Change(
        [](ReadingMemory &memory) { memory.readFor(keyText().toLatin1(), u"alice"_s, u"dev-2"_s); });
    QTest::newRow("key") << Change(
        [](ReadingMemory &) { QVERIFY(writePrivateKeyFile(toBase64Text(anotherPrivateKey()))); });
}

void TestRememberedFailures::anotherReaderTriesAgain()
{
    QFETCH(const std::function<void(ReadingMemory &)>, change);
    ReadingMemory memory;
    const QJsonObject message = flippedMember(sealed(u"hi"_s), u"text"_s, 0);
    errorWith(memory, message);
    QVERIFY(!takesWork(memory, message));
    const quint64 generation = memory.generation();
    change(memory);
    QVERIFY(takesWork(memory, message));
    QVERIFY(memory.generation() != generation);
}

void TestRememberedFailures::missingKeyFileIsLookedForAgain()
{
    ReadingMemory memory;
    const QJsonObject message = sealed(u"hi"_s);
    QVERIFY(QFile::remove(privateKeyPath()));
    for (int i = 0; i < 2; ++i) {
        const quint64 before = memory.generation();
        QCOMPARE(errorWith(memory, message), u"Could not open file: "_s + privateKeyPath());
        rereadPrivateKey(u"alice"_s, own, memory);
        QVERIFY(memory.generation() != before); // whoever shows the failure must not keep it
    }
    QVERIFY(writePrivateKeyFile(keyText()));
    QCOMPARE(textWith(memory, message), u"hi"_s);
}

void TestRememberedFailures::aFailureThatMayPassIsTriedAgain_data()
{
    QTest::addColumn<QByteArray>("call");
    QTest::newRow("no memory for RSA") << QByteArray("EVP_PKEY_CTX_new");
    QTest::newRow("no memory for AES") << QByteArray("EVP_CIPHER_CTX_new");
}

void TestRememberedFailures::aFailureThatMayPassIsTriedAgain()
{
    QFETCH(QByteArray, call);
    ReadingMemory memory;
    const QJsonObject message = sealed(u"hi"_s);
    rereadPrivateKey(u"alice"_s, own, memory);
    const quint64 before = memory.generation();
    {
        const FailingCall failing(call, 0);
        QVERIFY(errorWith(memory, message).startsWith(u"Could not create "));
    }
    QVERIFY(memory.generation() != before); // whoever shows the failure must not keep it
    QCOMPARE(textWith(memory, message), u"hi"_s);
}

void TestRememberedFailures::failuresLeaveWhatOpensAlone()
{
    ReadingMemory memory(2);
    const QJsonObject good = sealedWith(contentKey, "hi");
    QCOMPARE(textWith(memory, good), u"hi"_s);
    for (qsizetype i = 0; i < 8; ++i)
        QVERIFY(!errorWith(memory, flippedMember(sealed(u"bad"_s), u"text"_s, 0)).isEmpty());
    QVERIFY(!calls("EVP_PKEY_decrypt", [&] { QCOMPARE(textWith(memory, good), u"hi"_s); }));
}

// Both have the same wrapped key. What is known of the one says nothing of the other.
void TestRememberedFailures::messageOpensBesideItsFailedTwin()
{
    ReadingMemory memory;
    const QJsonObject good = sealed(u"hi"_s);
    const QJsonObject twin = flippedMember(good, u"text"_s, 0);
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(errorWith(memory, twin), u"AES-GCM authentication failed."_s);
        QCOMPARE(textWith(memory, good), u"hi"_s);
    }
}

void TestRememberedFailures::tableForgetsTheOldest()
{
    FailureTable table(2);
    for (const char *digest : {"a", "b", "b", "c"})
        table.insert(digest, QString::fromLatin1(digest));
    QCOMPARE(table.size(), 2);
    QVERIFY(!table.find("a"));
    QCOMPARE(table.find("b"), u"b"_s);
    table.insert("d", {});
    QVERIFY(!table.find("b"));
    QCOMPARE(table.find("c"), u"c"_s);
    QCOMPARE(table.find("d"), QString()); // a failure without a word is one too
    table.clear();
    QCOMPARE(table.size(), 0);
    table.insert("e", u"e"_s);
    QCOMPARE(table.find("e"), u"e"_s);
}

void TestRememberedFailures::lengthsPartTheTexts()
{
    const QByteArray digest = digestOf({.text = u"c"_s, .iv = u"b"_s, .wrappedKey = u"a"_s});
    QCOMPARE(digestOf({.text = u"c"_s, .iv = u"b"_s, .wrappedKey = u"a"_s}), digest);
    QVERIFY(digestOf({.text = u"c"_s, .iv = {}, .wrappedKey = u"ab"_s}) != digest);
    QVERIFY(digestOf({.text = {}, .iv = u"bc"_s, .wrappedKey = u"a"_s}) != digest);
    QVERIFY(digestOf({.text = u"b"_s, .iv = u"c"_s, .wrappedKey = u"a"_s}) != digest);
}

TIDELOFT_TEST_MAIN(TestRememberedFailures)
#include "tst_remembered_failures.moc"
