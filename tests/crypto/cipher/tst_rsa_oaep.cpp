// RSA-OAEP against published vectors, the key encodings it takes and its messages.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/rsa_oaep.h"
#include "tests/support/crypto/test_keys.h"
#include "tests/support/test_main.h"

#include <QTest>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

class TestRsaOaep : public QObject
{
    Q_OBJECT

private slots:
    void opensPublishedVectors_data();
    void opensPublishedVectors();
    void ciphertextHasTheSizeOfTheKey_data();
    void ciphertextHasTheSizeOfTheKey();
    void emptyTextGoesThere();
    void moreThan190BytesAreRefused();
    void pemPublicKeyEncryptsLikeItsDer_data();
    void pemPublicKeyEncryptsLikeItsDer();
    void pkcs8PrivateKeyIsAccepted();
    void foreignPublicKeysAreRefused_data();
    void foreignPublicKeysAreRefused();
    void foreignPrivateKeysAreRefused_data();
    void foreignPrivateKeysAreRefused();
    void keyOfAnotherKindIsRefused();
    void passwordProtectedKeyAsksNobody();
    void oneFlippedBitIsNoticed_data();
    void oneFlippedBitIsNoticed();
    void sameTextNeverLooksTheSame();
    void staleErrorIsNotReported();
    void successLeavesTheErrorTextAlone();

private:
    const QByteArray privateKey = publishedPrivateKey();
    const QByteArray publicKey = publicKeyOf(publishedPrivateKey());
};

void TestRsaOaep::opensPublishedVectors_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<QByteArray>("ciphertext");
    for (const OaepVector &vector : oaepVectors)
        QTest::newRow(vector.message)
            << QByteArray::fromHex(vector.message) << QByteArray::fromHex(vector.ciphertext);
}

void TestRsaOaep::opensPublishedVectors()
{
    QFETCH(const QByteArray, ciphertext);
    QString error;
    QTEST(rsaOaepDecrypt(privateKey, ciphertext, &error), "message");
    QVERIFY(error.isNull());
}

void TestRsaOaep::ciphertextHasTheSizeOfTheKey_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {1, 32, 189, 190})
        QTest::addRow("%d bytes", size) << size;
}

void TestRsaOaep::ciphertextHasTheSizeOfTheKey()
{
    QFETCH(const int, size);
    const QByteArray plaintext(size, 'p');
    const QByteArray ciphertext = rsaOaepEncrypt(publicKey, plaintext);
    QCOMPARE(ciphertext.size(), 256);
    QCOMPARE(rsaOaepDecrypt(privateKey, ciphertext), plaintext);
}

void TestRsaOaep::emptyTextGoesThere()
{
    QString error = u"before"_s;
    const QByteArray ciphertext = rsaOaepEncrypt(publicKey, QByteArray(), &error);
    QCOMPARE(ciphertext.size(), 256);
    QVERIFY(rsaOaepDecrypt(privateKey, ciphertext, &error).isEmpty());
    QCOMPARE(error, u"before"_s);
}

void TestRsaOaep::moreThan190BytesAreRefused()
{
    QString error;
    QVERIFY(rsaOaepEncrypt(publicKey, QByteArray(191, 'p'), &error).isEmpty());
    QCOMPARE(error, u"RSA-OAEP encrypt failed: error:0200006E:rsa routines::data too large for key size"_s);
}

void TestRsaOaep::pemPublicKeyEncryptsLikeItsDer_data()
{
    const QByteArray text = publicPemOf(publishedPrivateKey());
    QTest::addColumn<QByteArray>("pemText");
    QTest::newRow("plain") << text;
    QTest::newRow("CR LF line ends") << QByteArray(text).replace("\n", "\r\n");
    QTest::newRow("text before the block") << "A key:\n" + text;
    QTest::newRow("no newline at the end") << text.trimmed();
}

void TestRsaOaep::pemPublicKeyEncryptsLikeItsDer()
{
    QFETCH(const QByteArray, pemText);
    QString error;
    const QByteArray ciphertext = rsaOaepEncrypt(pemText, "content key", &error);
    QCOMPARE(ciphertext.size(), 256);
    QVERIFY(error.isNull());
    QCOMPARE(rsaOaepDecrypt(privateKey, ciphertext), QByteArray("content key"));
}

void TestRsaOaep::pkcs8PrivateKeyIsAccepted()
{
    const QByteArray pkcs8 = pkcs8Of(privateKey);
    QVERIFY(pkcs8 != privateKey);
    QCOMPARE(rsaOaepDecrypt(pkcs8, rsaOaepEncrypt(publicKey, "content key")), QByteArray("content key"));
}

void TestRsaOaep::foreignPublicKeysAreRefused_data()
{
    QTest::addColumn<QByteArray>("foreign");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("some text") << QByteArray("not a key");
    QTest::newRow("DER cut short") << publicKeyOf(publishedPrivateKey()).chopped(1);
    QTest::newRow("private key in DER") << publishedPrivateKey();
    QTest::newRow("private key in PEM") << pem("RSA PRIVATE KEY", publishedPrivateKey());
    QTest::newRow("PEM block of nonsense") << pem("PUBLIC KEY", "nonsense");
}

// The text is that of the PEM attempt: what DER parsing said before it is gone.
void TestRsaOaep::foreignPublicKeysAreRefused()
{
    QFETCH(const QByteArray, foreign);
    QString error;
    QVERIFY(rsaOaepEncrypt(foreign, "content key", &error).isEmpty());
    QCOMPARE(error, u"Could not parse public key (tried DER and PEM): "
                    "error:1E08010C:DECODER routines::unsupported"_s);
}

void TestRsaOaep::foreignPrivateKeysAreRefused_data()
{
    QTest::addColumn<QByteArray>("foreign");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("some text") << QByteArray("not a key");
    QTest::newRow("DER cut short") << publishedPrivateKey().chopped(1);
    QTest::newRow("PEM") << pem("RSA PRIVATE KEY", publishedPrivateKey());
    QTest::newRow("public key") << publicKeyOf(publishedPrivateKey());
}

void TestRsaOaep::foreignPrivateKeysAreRefused()
{
    QFETCH(const QByteArray, foreign);
    QString error;
    QVERIFY(rsaOaepDecrypt(foreign, QByteArray(256, 'c'), &error).isEmpty());
    QVERIFY2(error.startsWith(u"Could not parse private key: error:"_s), qPrintable(error));
}

void TestRsaOaep::keyOfAnotherKindIsRefused()
{
    QString error;
    QVERIFY(rsaOaepEncrypt(ellipticPublicKey(), "content key", &error).isEmpty());
    QVERIFY2(error.startsWith(u"RSA-OAEP size query failed: error:"_s), qPrintable(error));
}

// Somebody else chose this text. With OpenSSL's own callback it would make the client ask for a password at
// the terminal it was started from, and wait; here an empty password was tried and found wrong.
void TestRsaOaep::passwordProtectedKeyAsksNobody()
{
    const QByteArray headers =
        "Proc-Type: 4,ENCRYPTED\nDEK-Info: AES-128-CBC,00112233445566778899AABBCCDDEEFF\n\n";
    QString error;
    QVERIFY(rsaOaepEncrypt(pem("PUBLIC KEY", QByteArray(64, 'x'), headers), "content key", &error).isEmpty());
    QVERIFY2(error.startsWith(u"Could not parse public key (tried DER and PEM): error:"_s),
             qPrintable(error));
    QVERIFY2(error.endsWith(u"bad decrypt"_s), qPrintable(error));
}

void TestRsaOaep::oneFlippedBitIsNoticed_data()
{
    QTest::addColumn<int>("position");
    for (const int position : {1, 128, 255})
        QTest::addRow("byte %d", position) << position;
}

void TestRsaOaep::oneFlippedBitIsNoticed()
{
    QFETCH(const int, position);
    QString error;
    const QByteArray ciphertext = flipped(rsaOaepEncrypt(publicKey, "content key"), position);
    QVERIFY(rsaOaepDecrypt(privateKey, ciphertext, &error).isEmpty());
    QVERIFY2(error.startsWith(u"RSA-OAEP decrypt failed: error:"_s), qPrintable(error));
}

void TestRsaOaep::sameTextNeverLooksTheSame()
{
    QVERIFY(rsaOaepEncrypt(publicKey, "content key") != rsaOaepEncrypt(publicKey, "content key"));
}

void TestRsaOaep::staleErrorIsNotReported()
{
    QString error;
    queueStaleError();
    QVERIFY(rsaOaepDecrypt("not a key", "ciphertext", &error).isEmpty());
    QVERIFY2(!error.contains(u"reason(42)"_s), qPrintable(error));
    queueStaleError();
    QVERIFY(rsaOaepEncrypt(publicKey, QByteArray(191, 'p'), &error).isEmpty());
    QVERIFY2(!error.contains(u"reason(42)"_s), qPrintable(error));
    queueStaleError();
    QVERIFY(rsaOaepDecrypt(privateKey, QByteArray(256, '\1'), &error).isEmpty());
    QVERIFY2(!error.contains(u"reason(42)"_s), qPrintable(error));
}

void TestRsaOaep::successLeavesTheErrorTextAlone()
{
    QString error = u"before"_s;
    QVERIFY(!rsaOaepDecrypt(privateKey, rsaOaepEncrypt(publicKey, "content key", &error), &error).isEmpty());
    QCOMPARE(error, u"before"_s);
}

TIDELOFT_TEST_MAIN(TestRsaOaep)
#include "tst_rsa_oaep.moc"
