// The cache for opening messages: what it saves, what it does not hold, whose it is, and that it is wiped.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/key_store.h"
#include "tests/support/crypto/reading.h"
#include "tests/support/data_dir.h"
#include "tests/support/test_main.h"

#include <QTest>

#include <functional>
#include <optional>
#include <type_traits>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

static_assert(!std::is_copy_constructible_v<DecryptionCache> && !std::is_copy_assignable_v<DecryptionCache>);
static_assert(!std::is_move_constructible_v<DecryptionCache> && !std::is_move_assignable_v<DecryptionCache>);

class TestDecryptionCache : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void messageThatOpenedIsCached();
    void cachedContentKeyStandsForRsa();
    void whatIsClearedIsNotClearedAgain();
    void clearingForgetsTheParsedKey();
    void parsedPrivateKeyStandsForTheFile();
    void cachedMessageIsStillAuthenticated();
    void unencryptedMessageLeavesNothing();
    void failureLeavesNoContentKey_data();
    void failureLeavesNoContentKey();
    void anotherUserOrDeviceClears_data();
    void anotherUserOrDeviceClears();
    void leastRecentlyUsedMessageMakesRoom();
    void clearingWipes_data();
    void clearingWipes();
    void textGoesThroughTheCacheToo();
};

void TestDecryptionCache::init()
{
    removeDataDir();
    QVERIFY(writePrivateKeyFile(keyText()));
}

void TestDecryptionCache::messageThatOpenedIsCached()
{
    DecryptionCache cache;
    const QJsonObject message = sealedWith(contentKey, "hi");
    QCOMPARE(textWith(cache, message), u"hi"_s);
    QCOMPARE(cache.size(), 1);
    QCOMPARE(cache.contentKey(digestOf(wrappedKeyOf(message))), contentKey);
    QCOMPARE(textWith(cache, message), u"hi"_s);
    QCOMPARE(cache.size(), 1);
}

// The wrapped key in the message holds another key than the one cached for it.
void TestDecryptionCache::cachedContentKeyStandsForRsa()
{
    DecryptionCache cache;
    const QByteArray otherKey(32, 'o');
    const QJsonObject message = sealedBy(contentKey, nonce, aesGcmEncrypt(otherKey, nonce, "hi"));
    QCOMPARE(decryptMessage(message, u"alice"_s, own).error, u"AES-GCM authentication failed."_s);
    cache.setReader(keyText().toLatin1(), u"alice"_s, own);
    cache.insertContentKey(digestOf(wrappedKeyOf(message)), otherKey);
    QCOMPARE(textWith(cache, message), u"hi"_s);
}

void TestDecryptionCache::whatIsClearedIsNotClearedAgain()
{
    DecryptionCache cache;
    cache.setReader(keyText().toLatin1(), u"alice"_s, own);
    cache.clear();
    const quint64 generation = cache.generation();
    cache.setReader({}, {}, {});
    QCOMPARE(cache.generation(), generation);
}

void TestDecryptionCache::clearingForgetsTheParsedKey()
{
    DecryptionCache cache;
    QCOMPARE(textWith(cache, sealedWith(contentKey, "hi")), u"hi"_s);
    QVERIFY(cache.keyUnwrapping().hasPrivateKey());
    cache.clear();
    QVERIFY(!cache.keyUnwrapping().hasPrivateKey());
}

// The cache has parsed another key than the one in the file, which alone would not open this message.
void TestDecryptionCache::parsedPrivateKeyStandsForTheFile()
{
    DecryptionCache cache;
    const QByteArray other = anotherPrivateKey();
    const QString wrapped = toBase64Text(rsaOaepEncrypt(publicKeyOf(other), contentKey));
    const QJsonObject message = withRecipientKey(sealedWith(contentKey, "hi"), u"encryptedKey"_s, wrapped);
    QVERIFY(!decryptMessage(message, u"alice"_s, own).ok);
    cache.setReader(keyText().toLatin1(), u"alice"_s, own);
    QCOMPARE(cache.keyUnwrapping().unwrap(other, fromBase64Text(wrapped), nullptr), contentKey);
    QCOMPARE(textWith(cache, message), u"hi"_s);
}

void TestDecryptionCache::cachedMessageIsStillAuthenticated()
{
    DecryptionCache cache;
    const QJsonObject message = sealed(u"an important message"_s);
    QCOMPARE(textWith(cache, message), u"an important message"_s);
    for (const qsizetype place : {0, -17, -16, -1})
        QCOMPARE(errorWith(cache, flippedMember(message, u"text"_s, place)),
                 u"AES-GCM authentication failed."_s);
    QCOMPARE(errorWith(cache, flippedMember(message, u"iv"_s, 5)), u"AES-GCM authentication failed."_s);
    QCOMPARE(errorWith(cache, changed(message, u"iv"_s, u"!!!!"_s)), u"Invalid base64 data."_s);
    QCOMPARE(textWith(cache, message), u"an important message"_s);
}

void TestDecryptionCache::unencryptedMessageLeavesNothing()
{
    DecryptionCache cache;
    QCOMPARE(textWith(cache, {{u"text"_s, u"hi"_s}}), u"hi"_s);
    QCOMPARE(cache.size(), 0);
}

void TestDecryptionCache::failureLeavesNoContentKey_data()
{
    QTest::addColumn<QJsonObject>("message");
    QTest::addColumn<QString>("beginning");
    const QJsonObject message = sealed(u"hi"_s);
    QTest::newRow("forged text") << flippedMember(message, u"text"_s, 0)
                                 << u"AES-GCM authentication failed."_s;
    QTest::newRow("wrapped for another key")
        << flippedWrappedKey(message, 200) << u"RSA-OAEP decrypt failed: error:"_s;
    QTest::newRow("content key of 16 bytes")
        << sealedBy(QByteArray(16, 'k'), nonce, QByteArray(20, 'c')) << u"AES key must be 32 bytes."_s;
    QTest::newRow("content key of no bytes")
        << sealedBy(QByteArray(), nonce, QByteArray(20, 'c')) << u"RSA decrypt failed."_s;
    QTest::newRow("undecodable iv") << changed(message, u"iv"_s, u"!!!!"_s) << u"Invalid base64 data."_s;
    QTest::newRow("for another device")
        << withRecipientKey(message, u"deviceId"_s, u"dev-2"_s) << noKeyFor(own);
}

void TestDecryptionCache::failureLeavesNoContentKey()
{
    QFETCH(const QJsonObject, message);
    QFETCH(const QString, beginning);
    DecryptionCache cache;
    for (int i = 0; i < 2; ++i) {
        const QString error = errorWith(cache, message);
        QVERIFY2(error.startsWith(beginning), qPrintable(error));
        QCOMPARE(cache.size(), 0);
        QVERIFY(cache.contentKey(digestOf(wrappedKeyOf(message))).isEmpty());
    }
}

void TestDecryptionCache::anotherUserOrDeviceClears_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("deviceId");
    QTest::newRow("user") << u"carol"_s << own;
    QTest::newRow("device") << u"alice"_s << u"dev-2"_s;
}

void TestDecryptionCache::anotherUserOrDeviceClears()
{
    QFETCH(const QString, name);
    QFETCH(const QString, deviceId);
    DecryptionCache cache;
    const QJsonObject first = sealed(u"one"_s);
    QCOMPARE(textWith(cache, first), u"one"_s);
    const QJsonObject second = withRecipientKey(sealed(u"two"_s), u"deviceId"_s, deviceId);
    QCOMPARE(decryptMessage(second, name, deviceId, cache).text, u"two"_s);
    QCOMPARE(cache.size(), 1);
    QVERIFY(cache.contentKey(digestOf(wrappedKeyOf(first))).isEmpty());
}

void TestDecryptionCache::leastRecentlyUsedMessageMakesRoom()
{
    DecryptionCache cache(2);
    const QList<QJsonObject> messages{sealed(u"0"_s), sealed(u"1"_s), sealed(u"2"_s)};
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(textWith(cache, messages[i]), QString::number(i));
            QVERIFY(cache.size() <= 2);
        }
    }
    QVERIFY(cache.contentKey(digestOf(wrappedKeyOf(messages[0]))).isEmpty());
    QVERIFY(!cache.contentKey(digestOf(wrappedKeyOf(messages[2]))).isEmpty());
}

void TestDecryptionCache::clearingWipes_data()
{
    using Step = std::function<void(std::optional<DecryptionCache> &)>;
    QTest::addColumn<Step>("step");
    const QJsonObject message = sealedWith(contentKey, "hi");
    QTest::newRow("clear") << Step([](auto &cache) { cache->clear(); });
    QTest::newRow("destruction") << Step([](auto &cache) { cache.reset(); });
    QTest::newRow("deleted key file") << Step([message](auto &cache) {
        QVERIFY(QFile::remove(privateKeyPath()));
        QVERIFY(textWith(*cache, message).isEmpty());
    });
    QTest::newRow("another user") << Step([](auto &cache) { cache->setReader("QUJD", u"carol"_s, own); });
}

void TestDecryptionCache::clearingWipes()
{
    QFETCH(const std::function<void(std::optional<DecryptionCache> &)>, step);
    std::optional<DecryptionCache> cache(std::in_place);
    const QJsonObject message = sealedWith(contentKey, "hi");
    QCOMPARE(textWith(*cache, message), u"hi"_s);
    const QByteArray sameBytes = cache->contentKey(digestOf(wrappedKeyOf(message)));
    QCOMPARE(sameBytes, contentKey);
    step(cache);
    QCOMPARE(sameBytes, QByteArray(32, '\0'));
}

void TestDecryptionCache::textGoesThroughTheCacheToo()
{
    DecryptionCache cache;
    const QJsonObject message = sealed(u"hi"_s);
    QString error = u"from before"_s;
    QCOMPARE(decryptMessageText(message, u"alice"_s, own, cache, &error), u"hi"_s);
    QVERIFY(error.isNull());
    QCOMPARE(cache.size(), 1);
    QCOMPARE(decryptMessageText(message, u"alice"_s, own, cache), u"hi"_s);
    QVERIFY(decryptMessageText(message, u"alice"_s, u"dev-2"_s, cache, &error).isEmpty());
    QCOMPARE(error, noKeyFor(u"dev-2"_s));
}

TIDELOFT_TEST_MAIN(TestDecryptionCache)
#include "tst_decryption_cache.moc"
