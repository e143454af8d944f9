// Reading with a memory: what it saves, what it does not keep, whose it is, and that it leaves nothing.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/key_store.h"
#include "tests/support/crypto/reading.h"
#include "tests/support/crypto/wipe_watch.h"
#include "tests/support/data_dir.h"
#include "tests/support/test_main.h"

#include <QTest>

#include <functional>
#include <optional>
#include <type_traits>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

static_assert(!std::is_copy_constructible_v<ReadingMemory> && !std::is_copy_assignable_v<ReadingMemory>);
static_assert(!std::is_move_constructible_v<ReadingMemory> && !std::is_move_assignable_v<ReadingMemory>);

class TestReadingMemory : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void messageThatOpenedIsRemembered();
    void rememberedContentKeyStandsForRsa();
    void whatIsForgottenIsNotForgottenAgain();
    void privateKeyIsParsedOnce();
    void parsedPrivateKeyStandsForTheFile();
    void rememberedMessageIsStillAuthenticated();
    void unencryptedMessageLeavesNothing();
    void failureLeavesNoContentKey_data();
    void failureLeavesNoContentKey();
    void anotherUserOrDeviceForgets_data();
    void anotherUserOrDeviceForgets();
    void oldestMessageMakesRoom();
    void forgettingWipes_data();
    void forgettingWipes();
    void textGoesThroughTheMemoryToo();
};

void TestReadingMemory::init()
{
    removeDataDir();
    QVERIFY(writePrivateKeyFile(keyText()));
}

void TestReadingMemory::messageThatOpenedIsRemembered()
{
    ReadingMemory memory;
    const QJsonObject message = sealedWith(contentKey, "hi");
    QCOMPARE(textWith(memory, message), u"hi"_s);
    QCOMPARE(memory.size(), 1);
    QCOMPARE(memory.contentKey(wrappedKeyOf(message)), contentKey);
    QCOMPARE(textWith(memory, message), u"hi"_s);
    QCOMPARE(memory.size(), 1);
}

// The wrapped key in the message holds another key than the one remembered for it.
void TestReadingMemory::rememberedContentKeyStandsForRsa()
{
    ReadingMemory memory;
    const QByteArray otherKey(32, 'o');
    const QJsonObject message = sealedBy(contentKey, nonce, aesGcmEncrypt(otherKey, nonce, "hi"));
    QCOMPARE(decryptMessage(message, u"alice"_s, own).error, u"AES-GCM authentication failed."_s);
    memory.readFor(keyText().toLatin1(), u"alice"_s, own);
    memory.remember(wrappedKeyOf(message), otherKey);
    QCOMPARE(textWith(memory, message), u"hi"_s);
}

void TestReadingMemory::whatIsForgottenIsNotForgottenAgain()
{
    ReadingMemory memory;
    memory.readFor(keyText().toLatin1(), u"alice"_s, own);
    memory.forget();
    const quint64 generation = memory.generation();
    memory.readFor({}, {}, {});
    QCOMPARE(memory.generation(), generation);
}

void TestReadingMemory::privateKeyIsParsedOnce()
{
    ReadingMemory memory;
    const QByteArray wrapped = fromBase64Text(wrappedKeyOf(sealedWith(contentKey, "hi")));
    QString error;
    QVERIFY(memory.unwrap("no key", wrapped, &error).isEmpty());
    QVERIFY2(error.startsWith(u"Could not parse private key: error:"_s), qPrintable(error));
    QCOMPARE(memory.unwrap(publishedPrivateKey(), wrapped, nullptr), contentKey);
    QCOMPARE(memory.unwrap("not looked at any more", wrapped, nullptr), contentKey);
    memory.forget();
    QVERIFY(memory.unwrap("no key", wrapped, nullptr).isEmpty());
}

// The memory has parsed another key than the one in the file, which alone would not open this message.
void TestReadingMemory::parsedPrivateKeyStandsForTheFile()
{
    ReadingMemory memory;
    const QByteArray other = anotherPrivateKey();
    const QString wrapped = toBase64Text(rsaOaepEncrypt(publicKeyOf(other), contentKey));
    const QJsonObject message = withRecipientKey(sealedWith(contentKey, "hi"), u"encryptedKey"_s, wrapped);
    QVERIFY(!decryptMessage(message, u"alice"_s, own).ok);
    memory.readFor(keyText().toLatin1(), u"alice"_s, own);
    QCOMPARE(memory.unwrap(other, fromBase64Text(wrapped), nullptr), contentKey);
    QCOMPARE(textWith(memory, message), u"hi"_s);
}

void TestReadingMemory::rememberedMessageIsStillAuthenticated()
{
    ReadingMemory memory;
    const QJsonObject message = sealed(u"an important message"_s);
    QCOMPARE(textWith(memory, message), u"an important message"_s);
    for (const qsizetype place : {0, -17, -16, -1})
        QCOMPARE(errorWith(memory, flippedMember(message, u"text"_s, place)),
                 u"AES-GCM authentication failed."_s);
    QCOMPARE(errorWith(memory, flippedMember(message, u"iv"_s, 5)), u"AES-GCM authentication failed."_s);
    QCOMPARE(errorWith(memory, changed(message, u"iv"_s, u"!!!!"_s)), u"Invalid base64 data."_s);
    QCOMPARE(textWith(memory, message), u"an important message"_s);
}

void TestReadingMemory::unencryptedMessageLeavesNothing()
{
    ReadingMemory memory;
    QCOMPARE(textWith(memory, {{u"text"_s, u"hi"_s}}), u"hi"_s);
    QCOMPARE(memory.size(), 0);
}

void TestReadingMemory::failureLeavesNoContentKey_data()
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

void TestReadingMemory::failureLeavesNoContentKey()
{
    QFETCH(const QJsonObject, message);
    QFETCH(const QString, beginning);
    ReadingMemory memory;
    for (int i = 0; i < 2; ++i) {
        const QString error = errorWith(memory, message);
        QVERIFY2(error.startsWith(beginning), qPrintable(error));
        QCOMPARE(memory.size(), 0);
        QVERIFY(memory.contentKey(wrappedKeyOf(message)).isEmpty());
    }
}

void TestReadingMemory::anotherUserOrDeviceForgets_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("deviceId");
    QTest::newRow("user") << u"carol"_s << own;
    QTest::newRow("device") << u"alice"_s << u"dev-2"_s;
}

void TestReadingMemory::anotherUserOrDeviceForgets()
{
    QFETCH(const QString, name);
    QFETCH(const QString, deviceId);
    ReadingMemory memory;
    const QJsonObject first = sealed(u"one"_s);
    QCOMPARE(textWith(memory, first), u"one"_s);
    const QJsonObject second = withRecipientKey(sealed(u"two"_s), u"deviceId"_s, deviceId);
    QCOMPARE(decryptMessage(second, name, deviceId, memory).text, u"two"_s);
    QCOMPARE(memory.size(), 1);
    QVERIFY(memory.contentKey(wrappedKeyOf(first)).isEmpty());
}

void TestReadingMemory::oldestMessageMakesRoom()
{
    ReadingMemory memory(2);
    const QList<QJsonObject> messages{sealed(u"0"_s), sealed(u"1"_s), sealed(u"2"_s)};
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(textWith(memory, messages[i]), QString::number(i));
            QVERIFY(memory.size() <= 2);
        }
    }
    QVERIFY(memory.contentKey(wrappedKeyOf(messages[0])).isEmpty());
    QVERIFY(!memory.contentKey(wrappedKeyOf(messages[2])).isEmpty());
}

void TestReadingMemory::forgettingWipes_data()
{
    using Step = std::function<void(std::optional<ReadingMemory> &)>;
    QTest::addColumn<Step>("step");
    const QJsonObject message = sealedWith(contentKey, "hi");
    QTest::newRow("forget") << Step([](auto &memory) { memory->forget(); });
    QTest::newRow("destruction") << Step([](auto &memory) { memory.reset(); });
    QTest::newRow("deleted key file") << Step([message](auto &memory) {
        QVERIFY(QFile::remove(privateKeyPath()));
        QVERIFY(textWith(*memory, message).isEmpty());
    });
    QTest::newRow("another user") << Step([](auto &memory) { memory->readFor("QUJD", u"carol"_s, own); });
}

void TestReadingMemory::forgettingWipes()
{
    QFETCH(const std::function<void(std::optional<ReadingMemory> &)>, step);
    WipeWatch watch;
    std::optional<ReadingMemory> memory;
    memory.emplace(16, watch.storage());
    QCOMPARE(textWith(*memory, sealedWith(contentKey, "hi")), u"hi"_s);
    const qsizetype contentKeyPlace = watch.find(contentKey);
    const QByteArray text = keyText().toLatin1();
    const qsizetype textPlace = watch.find(text.sliced(100));
    QVERIFY(contentKeyPlace >= 0 && textPlace >= 0);
    step(memory);
    QCOMPARE(watch.at(contentKeyPlace, 32), QByteArray(32, '\0'));
    QCOMPARE(watch.at(textPlace, text.size() - 100), QByteArray(text.size() - 100, '\0'));
    QVERIFY(!watch.holds(contentKey));
    QVERIFY(!watch.holds(text.sliced(100)));
}

void TestReadingMemory::textGoesThroughTheMemoryToo()
{
    ReadingMemory memory;
    const QJsonObject message = sealed(u"hi"_s);
    QString error = u"from before"_s;
    QCOMPARE(decryptMessageText(message, u"alice"_s, own, memory, &error), u"hi"_s);
    QVERIFY(error.isNull());
    QCOMPARE(memory.size(), 1);
    QCOMPARE(decryptMessageText(message, u"alice"_s, own, memory), u"hi"_s);
    QVERIFY(decryptMessageText(message, u"alice"_s, u"dev-2"_s, memory, &error).isEmpty());
    QCOMPARE(error, noKeyFor(u"dev-2"_s));
}

TIDELOFT_TEST_MAIN(TestReadingMemory)
#include "tst_reading_memory.moc"
