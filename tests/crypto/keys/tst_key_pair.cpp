// A fresh key pair: its halves belong together, and have the form that others expect.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/base64.h"
#include "crypto/cipher/rsa_oaep.h"
#include "crypto/keys/key_pair.h"
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
    void staleErrorsAreDropped();

private:
    QByteArray privateDer;
    QByteArray publicDer;
};

void TestKeyPair::initTestCase()
{
    QString error = u"before"_s;
    const auto pair = makeKeyPair(&error);
    QVERIFY(pair);
    QCOMPARE(error, u"before"_s);
    privateDer = fromBase64Text(pair->privateHalf.view());
    publicDer = fromBase64Text(pair->publicHalf);
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

void TestKeyPair::staleErrorsAreDropped()
{
    queueStaleError();
    QVERIFY(makeKeyPair());
    QCOMPARE(ERR_peek_error(), 0UL);
}

TIDELOFT_TEST_MAIN(TestKeyPair)
#include "tst_key_pair.moc"
