// What is left in the process's memory of content keys and private keys that are no longer in use: nothing.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/secret_bytes.h"
#include "crypto/keys/device_key_pair.h"
#include "crypto/keys/key_store.h"
#include "crypto/messages/envelope.h"
#include "crypto/messages/envelope_sealing.h"
#include "tests/support/crypto/reading.h"
#include "tests/support/data_dir.h"
#include "tests/support/memory_scan.h"
#include "tests/support/test_main.h"

#include <QTest>

#include <cstring>
#include <optional>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

namespace
{

constexpr int messages = 100;
constexpr int cached = 10;
constexpr int parts = 3; // of a private key that are looked for

// The content key of a message, unwrapped by the test itself, which leaves nothing of it.
void note(SoughtSecrets &sought, const QJsonObject &message, const QByteArray &privateKey)
{
    const QByteArray wrapped = fromBase64Text(wrappedKeyOf(message));
    const SecretBytes contentKey(rsaOaepDecrypt(privateKey, wrapped));
    sought.add(contentKey.view());
}

// As found(), where it is right that they are.
int present(const SoughtSecrets &sought)
{
    return static_cast<int>(sought.size() - sought.places().count(0));
}

// Every form that the private key takes on its way from the file: text, text of the toolkit, bytes.
SoughtSecrets formsOfThePrivateKey()
{
    SoughtSecrets sought;
    const SecretBytes file(readPrivateKeyBytes());
    const SecretText text(QString::fromLatin1(file.view()));
    const SecretBytes der(QByteArray::fromBase64(file.view()));
    for (const qsizetype part : {400, 800, 1100}) { // private exponent, primes, and what follows from them
        sought.add(QByteArray::fromRawData(file.view().constData() + part, 16));
        sought.add(QByteArray::fromRawData(reinterpret_cast<const char *>(text.view().utf16() + part), 16));
        sought.add(QByteArray::fromRawData(der.view().constData() + part, 16));
    }
    return sought;
}

const QByteArray turnedSecret = QByteArray::fromHex("f0e1d2c3b4a5968778695a4b3c2d1e0f");

// The 16 bytes of the secret stand behind its first bytes, which the system itself writes over.
void *opensslMemoryWith(const QByteArray &secret)
{
    void *memory = OPENSSL_malloc(2000);
    std::memcpy(static_cast<char *>(memory) + 1000, secret.constData(), 16);
    return memory;
}

} // namespace

class TestMemoryScan : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeDataDir(); }
    void cleanupTestCase() { removeDataDir(); }
    void plantedSecretIsFound();
    void contentKeysStayWhileTheyAreCached();
    void contentKeyOfARefusedTextIsWiped();
    void contentKeyOfAnUnfinishedMessageIsWiped();
    void refusedTextIsWiped();
    void whatOpensslFreesIsWiped();
    void whatOpensslCutsToNothingIsWiped();
    void privateKeyIsWipedOnceItIsWritten();
    void privateKeyIsWipedOnceAMessageIsRead();
    void privateKeyIsWipedWhenTheCacheIsCleared();
};

void TestMemoryScan::plantedSecretIsFound()
{
    SoughtSecrets sought;
    const QByteArray planted = QByteArray::fromHex("00112233445566778899aabbccddeeff");
    sought.add(planted);
    const int copies = sought.places().constFirst();
    QVERIFY(copies >= 1);
    QByteArray another = planted;
    another.detach();
    QCOMPARE(sought.places().constFirst(), copies + 1);
    SecretBytes(std::move(another)).wipe();
    QCOMPARE(sought.places().constFirst(), copies);
}

void TestMemoryScan::contentKeysStayWhileTheyAreCached()
{
    QVERIFY(writePrivateKeyFile(keyText()));
    const QByteArray privateKey = publishedPrivateKey();
    DecryptionCache cache(cached);
    SoughtSecrets sought;
    for (int i = 0; i < messages; ++i) {
        const QJsonObject message = sealed(u"message %1"_s.arg(i));
        QCOMPARE(textWith(cache, message), u"message %1"_s.arg(i));
        QCOMPARE(textWith(cache, message), u"message %1"_s.arg(i));
        QCOMPARE(decryptMessage(message, u"alice"_s, own).text, u"message %1"_s.arg(i));
        note(sought, message, privateKey);
    }
    const QList<int> places = sought.places();
    QCOMPARE(places.first(messages - cached), QList<int>(messages - cached, 0));
    QCOMPARE(places.last(cached), QList<int>(cached, 1)); // once each: in the cache
    cache.clear();
    QCOMPARE(sought.found(), 0);
}

void TestMemoryScan::contentKeyOfARefusedTextIsWiped()
{
    QVERIFY(writePrivateKeyFile(keyText()));
    const QByteArray privateKey = publishedPrivateKey();
    DecryptionCache cache;
    SoughtSecrets sought;
    for (int i = 0; i < messages; ++i) {
        const QJsonObject message =
            flippedMember(sealed(u"long enough to be looked for: %1"_s.arg(i)), u"text"_s, -1);
        QCOMPARE(errorWith(cache, message), u"AES-GCM authentication failed."_s);
        note(sought, message, privateKey);
    }
    QCOMPARE(sought.found(), 0);
}

// A message for many devices that was given up half-way, and one that was finished but not yet taken.
void TestMemoryScan::contentKeyOfAnUnfinishedMessageIsWiped()
{
    const QByteArray privateKey = publishedPrivateKey();
    const QJsonObject device{{u"deviceId"_s, own},
                             {u"publicKeyBase64"_s, toBase64Text(publicKeyOf(privateKey))}};
    for (const int steps : {1, 2}) {
        SoughtSecrets sought;
        std::optional<EnvelopeSealing> sealing(std::in_place, u"hi"_s, QJsonArray{device, device},
                                               QJsonArray());
        for (int i = 0; i < steps; ++i)
            sealing->wrapNext();
        const QJsonObject message{{u"recipientKeys"_s, sealing->takeEnvelope().recipientKeys}};
        note(sought, message, privateKey);
        QCOMPARE(present(sought), steps == 1 ? 1 : 0);
        sealing.reset();
        QCOMPARE(sought.found(), 0);
    }
}

// What the key makes of the bytes before their tag is found wrong. The cipher turns a bit of the text for
// each that is turned in the bytes, so that sealing turned bytes gives the turned text, and the text itself
// nowhere.
void TestMemoryScan::refusedTextIsWiped()
{
    const QByteArray sealedBytes(16, 's');
    SoughtSecrets sought;
    sought.addTurned(aesGcmEncrypt(contentKey, nonce, SoughtSecrets::turned(sealedBytes)).first(16));
    QString error;
    QVERIFY(aesGcmDecrypt(contentKey, nonce, sealedBytes + QByteArray(16, 't'), &error).isEmpty());
    QCOMPARE(error, u"AES-GCM authentication failed."_s);
    QCOMPARE(sought.found(), 0);
}

void TestMemoryScan::whatOpensslFreesIsWiped()
{
    SoughtSecrets sought;
    sought.addTurned(turnedSecret);
    const SecretBytes secret(SoughtSecrets::turned(turnedSecret));
    void *memory = opensslMemoryWith(secret.view());
    QCOMPARE(present(sought), 1);
    QCOMPARE(sought.places().constFirst(), 2);
    memory = OPENSSL_realloc(memory, 2'000'000); // to another place
    QCOMPARE(sought.places().constFirst(), 2);
    OPENSSL_free(memory);
    QCOMPARE(sought.places().constFirst(), 1);
}

void TestMemoryScan::whatOpensslCutsToNothingIsWiped()
{
    SoughtSecrets sought;
    sought.addTurned(turnedSecret);
    const SecretBytes secret(SoughtSecrets::turned(turnedSecret));
    void *memory = opensslMemoryWith(secret.view());
    QCOMPARE(sought.places().constFirst(), 2);
    QCOMPARE(OPENSSL_realloc(memory, 0), nullptr);
    QCOMPARE(sought.places().constFirst(), 1);
}

void TestMemoryScan::privateKeyIsWipedOnceItIsWritten()
{
    QVERIFY(generateKeyPair());
    const SoughtSecrets sought = formsOfThePrivateKey();
    QCOMPARE(sought.found(), 0);
    const SecretBytes inUse(readPrivateKeyBytes());
    QCOMPARE(present(sought), parts); // the file's form, and so the scan would have found it before
}

void TestMemoryScan::privateKeyIsWipedOnceAMessageIsRead()
{
    QVERIFY(generateKeyPair());
    const QString publicKey = readPublicKeyFile();
    const QJsonArray devices{QJsonObject{{u"deviceId"_s, own}, {u"publicKeyBase64"_s, publicKey}}};
    const EncryptedEnvelope envelope = encryptMessageEnvelope(u"hi"_s, devices, {});
    const QJsonObject message{{u"encrypted"_s, true},
                              {u"text"_s, envelope.ciphertextBase64},
                              {u"iv"_s, envelope.ivBase64},
                              {u"recipientKeys"_s, envelope.recipientKeys}};
    const SoughtSecrets sought = formsOfThePrivateKey();
    QVERIFY(decryptMessage(QJsonObject(message), u"x"_s, own).ok);
    QCOMPARE(sought.found(), 0);
}

void TestMemoryScan::privateKeyIsWipedWhenTheCacheIsCleared()
{
    QVERIFY(generateKeyPair());
    const SoughtSecrets sought = formsOfThePrivateKey();
    DecryptionCache cache;
    const QJsonObject foreign = sealed(u"for another key"_s);
    QVERIFY(!errorWith(cache, foreign).isEmpty());
    QVERIFY(present(sought) >= parts); // the text of the file
    cache.clear();
    QCOMPARE(sought.found(), 0);
}

TIDELOFT_TEST_MAIN(TestMemoryScan)
#include "tst_memory_scan.moc"
