// Keys out of every encoding that is accepted, and none out of anything else.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/rsa_key_parsing.h"
#include "tests/support/crypto/test_keys.h"
#include "tests/support/test_main.h"

#include <QTest>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

class TestRsaKeyParsing : public QObject
{
    Q_OBJECT

private slots:
    void init() { ERR_clear_error(); }
    void publicKeys_data();
    void publicKeys();
    void privateKeys_data();
    void privateKeys();
};

void TestRsaKeyParsing::publicKeys_data()
{
    QTest::addColumn<QByteArray>("encoded");
    QTest::addColumn<bool>("isKey");
    const QByteArray privateKey = publishedPrivateKey();
    QTest::newRow("DER") << publicKeyOf(privateKey) << true;
    QTest::newRow("PEM") << publicPemOf(privateKey) << true;
    QTest::newRow("private half") << privateKey << false;
    QTest::newRow("cut DER") << publicKeyOf(privateKey).chopped(1) << false;
    QTest::newRow("PEM of nothing") << pem("PUBLIC KEY", {}) << false;
    QTest::newRow("text") << QByteArray("no key") << false;
    QTest::newRow("nothing") << QByteArray() << false;
}

void TestRsaKeyParsing::publicKeys()
{
    QFETCH(const QByteArray, encoded);
    QTEST(parsePublicKey(encoded) != nullptr, "isKey");
}

void TestRsaKeyParsing::privateKeys_data()
{
    QTest::addColumn<QByteArray>("encoded");
    QTest::addColumn<bool>("isKey");
    const QByteArray privateKey = publishedPrivateKey();
    QTest::newRow("PKCS#1") << privateKey << true;
    QTest::newRow("PKCS#8") << pkcs8Of(privateKey) << true;
    QTest::newRow("PEM") << pem("RSA PRIVATE KEY", privateKey) << false;
    QTest::newRow("public half") << publicKeyOf(privateKey) << false;
    QTest::newRow("cut") << privateKey.chopped(1) << false;
    QTest::newRow("nothing") << QByteArray() << false;
}

void TestRsaKeyParsing::privateKeys()
{
    QFETCH(const QByteArray, encoded);
    const OpenSslPtr<EVP_PKEY> key = parsePrivateKey(encoded);
    QTEST(key != nullptr, "isKey");
    if (key)
        QCOMPARE(EVP_PKEY_get_bits(key.get()), EVP_PKEY_get_bits(keyFromDer(publishedPrivateKey()).get()));
}

TIDELOFT_TEST_MAIN(TestRsaKeyParsing)
#include "tst_rsa_key_parsing.moc"
