// RSA-OAEP against the vectors of Project Wycheproof: what has to open, and every way to be wrong.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/rsa_oaep.h"
#include "crypto/cipher/rsa_oaep_context.h"
#include "tests/support/crypto/vector_file.h"
#include "tests/support/test_main.h"

#include <openssl/opensslv.h>

#include <QTest>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

class TestWycheproofOaep : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void opensWhatIsValid_data();
    void opensWhatIsValid();
    void refusesTheRest_data();
    void refusesTheRest();
    void refusesNumbersAroundTheModulus_data();
    void refusesNumbersAroundTheModulus();

private:
    void addRows(bool opens);
    static QByteArray modulusOf(const QByteArray &pkcs8);
    QString refusalOf(const QByteArray &ciphertext) const;

    QByteArray key;
    QList<QByteArrayList> vectors;
};

void TestWycheproofOaep::initTestCase()
{
    vectors = vectorFields(QStringLiteral(WYCHEPROOF_FILES "/rsa_oaep_2048_sha256_mgf1sha256.txt"));
    QCOMPARE(vectors.size(), 36);
    key = QByteArray::fromHex(vectors.takeFirst().at(1));
}

// The client seals without a label, so that what was sealed under one is not for it.
void TestWycheproofOaep::addRows(bool opens)
{
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<QByteArray>("ciphertext");
    for (const QByteArrayList &fields : std::as_const(vectors)) {
        const QByteArray &label = fields.at(2);
        if ((fields.at(1) == "valid" && label.isEmpty()) != opens)
            continue;
        const QByteArray name =
            fields.at(0) + ' ' + fields.at(5) + (label.isEmpty() ? "" : ", under a label");
        QTest::newRow(name.constData())
            << QByteArray::fromHex(fields.at(3)) << QByteArray::fromHex(fields.at(4));
    }
}

void TestWycheproofOaep::opensWhatIsValid_data()
{
    addRows(true);
}

void TestWycheproofOaep::opensWhatIsValid()
{
    QFETCH(const QByteArray, ciphertext);
    QString error;
    QTEST(rsaOaepDecrypt(key, ciphertext, &error), "message");
    const auto context = makeOaepDecryption(key, &error);
    QTEST(runOaepDecryption(context.get(), ciphertext, &error), "message");
    QTEST(runOaepDecryption(context.get(), ciphertext, &error), "message");
    QVERIFY(error.isNull());
}

// What everybody sees of a ciphertext may be told: its length, and that its number is too great. Which part
// of the padding was wrong may not.
QString TestWycheproofOaep::refusalOf(const QByteArray &ciphertext) const
{
    QString reason = u"02000079:rsa routines::oaep decoding error"_s;
    if (ciphertext.isEmpty() && OPENSSL_VERSION_NUMBER >= 0x30500000L)
        reason = u"0200006F:rsa routines::data too small"_s; // 3.5 looks at the length first
    else if (ciphertext.size() > 256)
        reason = u"0200006C:rsa routines::data greater than mod len"_s;
    else if (ciphertext.size() == 256 && ciphertext >= modulusOf(key))
        reason = u"02000084:rsa routines::data too large for modulus"_s;
    return u"RSA-OAEP decrypt failed: error:"_s + reason;
}

void TestWycheproofOaep::refusesTheRest_data()
{
    addRows(false);
}

void TestWycheproofOaep::refusesTheRest()
{
    QFETCH(const QByteArray, ciphertext);
    QString error;
    QVERIFY(rsaOaepDecrypt(key, ciphertext, &error).isEmpty());
    QCOMPARE(error, refusalOf(ciphertext));
    const auto context = makeOaepDecryption(key, &error);
    QString again;
    QVERIFY(runOaepDecryption(context.get(), ciphertext, &again).isEmpty());
    QCOMPARE(again, error);
}

// In PKCS#8 and PKCS#1 of this size the 257 bytes of the modulus, the first of them 0, stand behind the third
// version number and length.
QByteArray TestWycheproofOaep::modulusOf(const QByteArray &pkcs8)
{
    return pkcs8.sliced(pkcs8.indexOf(QByteArray::fromHex("0282010100")) + 5, 256);
}

void TestWycheproofOaep::refusesNumbersAroundTheModulus_data()
{
    QTest::addColumn<QByteArray>("ciphertext");
    const QByteArray modulus = modulusOf(key);
    const auto lastChanged = [&modulus](int by) {
        QByteArray number = modulus;
        number.back() = static_cast<char>(number.back() + by);
        return number;
    };
    QTest::newRow("0") << QByteArray(256, '\0');
    QTest::newRow("1") << QByteArray(255, '\0').append('\1');
    QTest::newRow("n - 1") << lastChanged(-1);
    QTest::newRow("n") << modulus;
    QTest::newRow("n + 1") << lastChanged(1);
    QTest::newRow("the greatest of that size") << QByteArray(256, '\xff');
    QTest::newRow("one byte") << QByteArray(1, '\1');
    QTest::newRow("twice as long") << modulus + modulus;
}

void TestWycheproofOaep::refusesNumbersAroundTheModulus()
{
    QFETCH(const QByteArray, ciphertext);
    QCOMPARE(static_cast<unsigned char>(modulusOf(key).back()) % 2, 1);
    QString error;
    QVERIFY(rsaOaepDecrypt(key, ciphertext, &error).isEmpty());
    QCOMPARE(error, refusalOf(ciphertext));
}

TIDELOFT_TEST_MAIN(TestWycheproofOaep)
#include "tst_wycheproof_oaep.moc"
