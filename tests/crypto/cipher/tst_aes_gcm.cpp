// AES-256-GCM against published vectors, its limits and its messages.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/aes_gcm.h"
#include "crypto/cipher/openssl_bytes.h"
#include "tests/support/crypto/test_keys.h"
#include "tests/support/test_main.h"

#include <QTest>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

namespace
{

const QByteArray key(32, 'k');
const QByteArray iv(12, 'n');

} // namespace

class TestAesGcm : public QObject
{
    Q_OBJECT

private slots:
    void matchesPublishedVectors_data();
    void matchesPublishedVectors();
    void sealedIsSixteenBytesLonger_data();
    void sealedIsSixteenBytesLonger();
    void tagAloneOpensAsEmptyText();
    void fifteenBytesAreTooShort();
    void sizesAreChecked_data();
    void sizesAreChecked();
    void oneFlippedBitIsNoticed_data();
    void oneFlippedBitIsNoticed();
    void nullArraysReachOpensslAsBuffers();
    void staleErrorsAreDropped();
    void nobodyHasToAskForTheError();
};

// Test cases 13, 14 and 15 of "The Galois/Counter Mode of Operation (GCM)" by McGrew and Viega, appendix B,
// which NIST SP 800-38D builds on: the ones with a 256-bit key, a 96-bit nonce and no additional data.
void TestAesGcm::matchesPublishedVectors_data()
{
    QTest::addColumn<QByteArray>("vectorKey");
    QTest::addColumn<QByteArray>("vectorIv");
    QTest::addColumn<QByteArray>("plaintext");
    QTest::addColumn<QByteArray>("sealed");
    const QByteArray zeroKey(32, '\0');
    const QByteArray zeroIv(12, '\0');
    QTest::newRow("case 13: empty text")
        << zeroKey << zeroIv << QByteArray() << QByteArray::fromHex("530f8afbc74536b9a963b4f1c4cb738b");
    QTest::newRow("case 14: one block") << zeroKey << zeroIv << QByteArray(16, '\0')
                                        << QByteArray::fromHex("cea7403d4d606b6e074ec5d3baf39d18"
                                                               "d0d1c8a799996bf0265b98b5d48ab919");
    QTest::newRow("case 15: four blocks")
        << QByteArray::fromHex("feffe9928665731c6d6a8f9467308308").repeated(2)
        << QByteArray::fromHex("cafebabefacedbaddecaf888")
        << QByteArray::fromHex("d9313225f88406e5a55909c5aff5269a86a7a9531534f7da2e4c303d8a318a72"
                               "1c3c0c95956809532fcf0e2449a6b525b16aedf5aa0de657ba637b391aafd255")
        << QByteArray::fromHex("522dc1f099567d07f47f37a32a84427d643a8cdcbfe5c0c97598a2bd2555d1aa"
                               "8cb08e48590dbb3da7b08b1056828838c5f61e6393ba7a0abcc9f662898015ad"
                               "b094dac5d93471bdec1a502270e3cc6c");
}

void TestAesGcm::matchesPublishedVectors()
{
    QFETCH(const QByteArray, vectorKey);
    QFETCH(const QByteArray, vectorIv);
    QFETCH(const QByteArray, plaintext);
    QFETCH(const QByteArray, sealed);
    QString error;
    QCOMPARE(aesGcmEncrypt(vectorKey, vectorIv, plaintext, &error), sealed);
    QCOMPARE(aesGcmDecrypt(vectorKey, vectorIv, sealed, &error), plaintext);
    QVERIFY(error.isNull());
}

void TestAesGcm::sealedIsSixteenBytesLonger_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {0, 1, 15, 16, 17, 200, 65536})
        QTest::addRow("%d bytes", size) << size;
}

void TestAesGcm::sealedIsSixteenBytesLonger()
{
    QFETCH(const int, size);
    const QByteArray plaintext(size, 'p');
    const QByteArray sealed = aesGcmEncrypt(key, iv, plaintext);
    QCOMPARE(sealed.size(), size + 16);
    QCOMPARE(aesGcmDecrypt(key, iv, sealed), plaintext);
}

void TestAesGcm::tagAloneOpensAsEmptyText()
{
    QString error = u"before"_s;
    const QByteArray sealed = aesGcmEncrypt(key, iv, QByteArray(), &error);
    QCOMPARE(sealed.size(), 16);
    QVERIFY(aesGcmDecrypt(key, iv, sealed, &error).isEmpty());
    QCOMPARE(error, u"before"_s);
}

void TestAesGcm::fifteenBytesAreTooShort()
{
    QString error;
    QVERIFY(aesGcmDecrypt(key, iv, QByteArray(15, 'x'), &error).isEmpty());
    QCOMPARE(error, u"Ciphertext is too short."_s);
}

void TestAesGcm::sizesAreChecked_data()
{
    QTest::addColumn<int>("keySize");
    QTest::addColumn<int>("ivSize");
    QTest::addColumn<QString>("sealing");
    QTest::addColumn<QString>("opening");
    const QString wrongKey = u"AES key must be 32 bytes."_s;
    const QString wrongIv = u"IV must be 12 bytes."_s;
    const QString wrongIvOpening = u"IV must be 12 bytes for this client."_s;
    QTest::newRow("31-byte key") << 31 << 12 << wrongKey << wrongKey;
    QTest::newRow("33-byte key") << 33 << 12 << wrongKey << wrongKey;
    QTest::newRow("no key") << 0 << 12 << wrongKey << wrongKey;
    QTest::newRow("key is checked before the IV") << 31 << 11 << wrongKey << wrongKey;
    QTest::newRow("11-byte IV") << 32 << 11 << wrongIv << wrongIvOpening;
    QTest::newRow("13-byte IV") << 32 << 13 << wrongIv << wrongIvOpening;
    QTest::newRow("no IV") << 32 << 0 << wrongIv << wrongIvOpening;
}

void TestAesGcm::sizesAreChecked()
{
    QFETCH(const int, keySize);
    QFETCH(const int, ivSize);
    QString error;
    QVERIFY(aesGcmEncrypt(QByteArray(keySize, 'k'), QByteArray(ivSize, 'n'), "text", &error).isEmpty());
    QTEST(error, "sealing");
    // The input is too short as well: key and IV are looked at first.
    QVERIFY(aesGcmDecrypt(QByteArray(keySize, 'k'), QByteArray(ivSize, 'n'), "text", &error).isEmpty());
    QTEST(error, "opening");
}

void TestAesGcm::oneFlippedBitIsNoticed_data()
{
    QTest::addColumn<QByteArray>("usedKey");
    QTest::addColumn<QByteArray>("usedIv");
    QTest::addColumn<QByteArray>("sealed");
    const QByteArray sealed = aesGcmEncrypt(key, iv, "a text of some length");
    QTest::newRow("first byte of the ciphertext") << key << iv << flipped(sealed, 0);
    QTest::newRow("last byte of the ciphertext") << key << iv << flipped(sealed, -17);
    QTest::newRow("first byte of the tag") << key << iv << flipped(sealed, -16);
    QTest::newRow("last byte of the tag") << key << iv << flipped(sealed, -1);
    QTest::newRow("tag of an empty text") << key << iv << flipped(aesGcmEncrypt(key, iv, QByteArray()), 7);
    QTest::newRow("key") << flipped(key, 31) << iv << sealed;
    QTest::newRow("nonce") << key << flipped(iv, 11) << sealed;
    QTest::newRow("byte missing at the end") << key << iv << sealed.chopped(1);
    QTest::newRow("byte too many") << key << iv << sealed + 'x';
}

void TestAesGcm::oneFlippedBitIsNoticed()
{
    QFETCH(const QByteArray, usedKey);
    QFETCH(const QByteArray, usedIv);
    QFETCH(const QByteArray, sealed);
    QString error;
    QVERIFY(aesGcmDecrypt(usedKey, usedIv, sealed, &error).isEmpty());
    QCOMPARE(error, u"AES-GCM authentication failed."_s);
}

void TestAesGcm::nullArraysReachOpensslAsBuffers()
{
    QByteArray null;
    QVERIFY(null.isNull());
    QVERIFY(readable(null) != nullptr);
    QVERIFY(writable(null) != nullptr);
}

void TestAesGcm::staleErrorsAreDropped()
{
    queueStaleError();
    const QByteArray sealed = aesGcmEncrypt(key, iv, "text");
    QCOMPARE(ERR_peek_error(), 0UL);
    queueStaleError();
    QCOMPARE(aesGcmDecrypt(key, iv, sealed), QByteArray("text"));
    QCOMPARE(ERR_peek_error(), 0UL);
}

void TestAesGcm::nobodyHasToAskForTheError()
{
    QVERIFY(aesGcmEncrypt({}, {}, "text").isEmpty());
    QVERIFY(aesGcmDecrypt(key, iv, QByteArray(40, 'x')).isEmpty());
}

TIDELOFT_TEST_MAIN(TestAesGcm)
#include "tst_aes_gcm.moc"
