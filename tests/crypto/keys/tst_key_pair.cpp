// Generation of the device's key pair: what is written, in which form, and what a refused file leaves behind.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/base64.h"
#include "crypto/cipher/rsa_oaep.h"
#include "crypto/keys/key_pair.h"
#include "tests/support/crypto/data_dir.h"
#include "tests/support/crypto/test_keys.h"
#include "tests/support/test_main.h"

#include <openssl/rsa.h>

#include <QTest>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

class TestKeyPair : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void halvesBelongTogether();
    void keyIsRsa2048WithTheUsualExponent();
    void privateHalfIsPkcs1();
    void publicHalfIsSubjectPublicKeyInfo();
    void filesHoldOneLineOfBase64_data();
    void filesHoldOneLineOfBase64();
    void failedPrivateWriteLeavesNoNewPublicFile();
    void failedPublicWriteIsReported();
    void missingDirectoryIsReported();
    void staleErrorsAreDropped();

private:
    QByteArray privateDer;
    QByteArray publicDer;
};

void TestKeyPair::initTestCase()
{
    QString error = u"before"_s;
    QVERIFY(generateKeyPair(&error));
    QCOMPARE(error, u"before"_s);
    privateDer = fromBase64Text(readPrivateKeyFile());
    publicDer = fromBase64Text(readPublicKeyFile());
}

void TestKeyPair::halvesBelongTogether()
{
    QCOMPARE(publicKeyOf(privateDer), publicDer);
    QCOMPARE(rsaOaepDecrypt(privateDer, rsaOaepEncrypt(publicDer, "content key")), QByteArray("content key"));
}

void TestKeyPair::keyIsRsa2048WithTheUsualExponent()
{
    const KeyPtr key = keyFromDer(privateDer);
    QCOMPARE(EVP_PKEY_get_base_id(key.get()), EVP_PKEY_RSA);
    QCOMPARE(EVP_PKEY_get_bits(key.get()), 2048);
    BIGNUM *exponent = nullptr;
    QVERIFY(EVP_PKEY_get_bn_param(key.get(), "e", &exponent));
    QVERIFY(BN_is_word(exponent, 65537));
    BN_free(exponent);
}

// In PKCS#1 the version is followed by the modulus, 257 bytes with its sign; in PKCS#8 by a sequence.
void TestKeyPair::privateHalfIsPkcs1()
{
    QVERIFY(privateDer.startsWith("\x30\x82"));
    QCOMPARE(privateDer.mid(4, 3), QByteArray("\x02\x01\x00", 3));
    QCOMPARE(privateDer.mid(7, 4), QByteArray("\x02\x82\x01\x01", 4));
}

void TestKeyPair::publicHalfIsSubjectPublicKeyInfo()
{
    QCOMPARE(publicDer.size(), 294);
    // AlgorithmIdentifier: rsaEncryption, NULL
    QCOMPARE(publicDer.mid(4, 15).toHex(), QByteArray("300d06092a864886f70d0101010500"));
}

void TestKeyPair::filesHoldOneLineOfBase64_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("private") << privateKeyPath();
    QTest::newRow("public") << publicKeyPath();
}

void TestKeyPair::filesHoldOneLineOfBase64()
{
    QFETCH(const QString, path);
    const QByteArray content = readFile(path);
    QVERIFY(!content.isEmpty());
    QCOMPARE(QByteArray::fromBase64(content, QByteArray::AbortOnBase64DecodingErrors).toBase64(), content);
}

void TestKeyPair::failedPrivateWriteLeavesNoNewPublicFile()
{
    QVERIFY(QFile::remove(privateKeyPath()));
    QVERIFY(QDir().mkdir(privateKeyPath()));
    QVERIFY(QFile::remove(publicKeyPath()));
    QString error = u"before"_s;
    QVERIFY(!generateKeyPair(&error));
    QCOMPARE(error, u"Could not write private key file: "_s + privateKeyPath());
    QVERIFY(!QFile::exists(publicKeyPath()));
    QVERIFY(QDir().rmdir(privateKeyPath()));
}

void TestKeyPair::failedPublicWriteIsReported()
{
    removeDataDir();
    QVERIFY(QDir().mkdir(publicKeyPath()));
    QString error;
    QVERIFY(!generateKeyPair(&error));
    QCOMPARE(error, u"Could not write public key file: "_s + publicKeyPath());
    QVERIFY(!readPrivateKeyFile().isEmpty()); // half-written: the private half came first
}

void TestKeyPair::missingDirectoryIsReported()
{
    QVERIFY(blockDataDir());
    QString error = u"replaced, not kept"_s;
    QVERIFY(!generateKeyPair(&error));
    QCOMPARE(error, u"Private key path is empty."_s);
    QVERIFY(!generateKeyPair());
    removeDataDir();
}

void TestKeyPair::staleErrorsAreDropped()
{
    queueStaleError();
    QVERIFY(generateKeyPair());
    QCOMPARE(ERR_peek_error(), 0UL);
}

TIDELOFT_TEST_MAIN(TestKeyPair)
#include "tst_key_pair.moc"
