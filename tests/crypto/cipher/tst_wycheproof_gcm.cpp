// AES-256-GCM against the vectors of Project Wycheproof: what has to open, what must not, and other nonces.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/aes_gcm.h"
#include "tests/support/crypto/vector_file.h"
#include "tests/support/test_main.h"

#include <QTest>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

class TestWycheproofGcm : public QObject
{
    Q_OBJECT

private slots:
    void allVectorsAreThere();
    void opensAndSealsWhatIsValid_data();
    void opensAndSealsWhatIsValid();
    void refusesWhatIsForged_data();
    void refusesWhatIsForged();
    void refusesOtherNonces_data();
    void refusesOtherNonces();
    void refusesEveryCutTag_data();
    void refusesEveryCutTag();

private:
    using Choice = bool (*)(const QByteArrayList &fields);
    static QList<QByteArrayList> vectors();
    static bool hasOwnNonce(const QByteArrayList &fields);
    static bool isValid(const QByteArrayList &fields);
    static bool isForged(const QByteArrayList &fields);
    static void addRows(Choice choice);
};

QList<QByteArrayList> TestWycheproofGcm::vectors()
{
    return vectorFields(QStringLiteral(WYCHEPROOF_FILES "/aes_256_gcm.txt"));
}

bool TestWycheproofGcm::hasOwnNonce(const QByteArrayList &fields)
{
    return fields.at(3).size() == 2 * gcmNonceSize;
}

bool TestWycheproofGcm::isValid(const QByteArrayList &fields)
{
    return hasOwnNonce(fields) && fields.at(1) == "valid";
}

bool TestWycheproofGcm::isForged(const QByteArrayList &fields)
{
    return hasOwnNonce(fields) && fields.at(1) == "invalid";
}

void TestWycheproofGcm::addRows(Choice choice)
{
    for (const char *column : {"key", "nonce", "message", "sealed"})
        QTest::addColumn<QByteArray>(column);
    for (const QByteArrayList &fields : vectors()) {
        if (!choice(fields))
            continue;
        const QByteArray name = fields.at(0) + ' ' + fields.at(6);
        QTest::newRow(name.constData())
            << QByteArray::fromHex(fields.at(2)) << QByteArray::fromHex(fields.at(3))
            << QByteArray::fromHex(fields.at(4)) << QByteArray::fromHex(fields.at(5));
    }
}

void TestWycheproofGcm::allVectorsAreThere()
{
    const QList<QByteArrayList> all = vectors();
    QCOMPARE(all.size(), 76);
    QCOMPARE(std::count_if(all.begin(), all.end(), isValid), 12);
    QCOMPARE(std::count_if(all.begin(), all.end(), isForged), 27);
}

void TestWycheproofGcm::opensAndSealsWhatIsValid_data()
{
    addRows(isValid);
}

void TestWycheproofGcm::opensAndSealsWhatIsValid()
{
    QFETCH(const QByteArray, key);
    QFETCH(const QByteArray, nonce);
    QFETCH(const QByteArray, message);
    QFETCH(const QByteArray, sealed);
    QString error;
    QCOMPARE(aesGcmEncrypt(key, nonce, message, &error), sealed);
    QCOMPARE(aesGcmDecrypt(key, nonce, sealed, &error), message);
    QVERIFY(error.isNull());
}

void TestWycheproofGcm::refusesWhatIsForged_data()
{
    addRows(isForged);
}

void TestWycheproofGcm::refusesWhatIsForged()
{
    QFETCH(const QByteArray, key);
    QFETCH(const QByteArray, nonce);
    QFETCH(const QByteArray, message);
    QFETCH(const QByteArray, sealed);
    QString error;
    QVERIFY(aesGcmDecrypt(key, nonce, sealed, &error).isEmpty());
    QCOMPARE(error, u"AES-GCM authentication failed."_s);
    QVERIFY(aesGcmEncrypt(key, nonce, message) != sealed);
}

void TestWycheproofGcm::refusesOtherNonces_data()
{
    addRows([](const QByteArrayList &fields) { return !hasOwnNonce(fields); });
}

// The standard allows most of them. This client uses one size, and nobody may talk it into another.
void TestWycheproofGcm::refusesOtherNonces()
{
    QFETCH(const QByteArray, key);
    QFETCH(const QByteArray, nonce);
    QFETCH(const QByteArray, message);
    QFETCH(const QByteArray, sealed);
    QString error;
    QVERIFY(aesGcmDecrypt(key, nonce, sealed, &error).isEmpty());
    QCOMPARE(error, u"IV must be 12 bytes for this client."_s);
    QVERIFY(aesGcmEncrypt(key, nonce, message, &error).isEmpty());
    QCOMPARE(error, u"IV must be 12 bytes."_s);
}

void TestWycheproofGcm::refusesEveryCutTag_data()
{
    addRows(isValid);
}

// The bytes of a cut tag are made up for by those of the ciphertext, and are no tag of the rest.
void TestWycheproofGcm::refusesEveryCutTag()
{
    QFETCH(const QByteArray, key);
    QFETCH(const QByteArray, nonce);
    QFETCH(const QByteArray, sealed);
    for (qsizetype cut = 1; cut <= gcmTagSize; ++cut) {
        QString error;
        QVERIFY(aesGcmDecrypt(key, nonce, sealed.chopped(cut), &error).isEmpty());
        const bool tooShort = sealed.size() - cut < gcmTagSize;
        QCOMPARE(error, tooShort ? u"Ciphertext is too short."_s : u"AES-GCM authentication failed."_s);
    }
}

TIDELOFT_TEST_MAIN(TestWycheproofGcm)
#include "tst_wycheproof_gcm.moc"
