// Opening damaged messages: every step's message, and one flipped bit for every field.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/key_store.h"
#include "tests/support/crypto/opened.h"
#include "tests/support/crypto/sealed_items.h"
#include "tests/support/data_dir.h"
#include "tests/support/test_main.h"

#include <QTest>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

class TestOpenDamaged : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void missingTextOrIvIsReported_data();
    void missingTextOrIvIsReported();
    void undecodablePartsAreReported_data();
    void undecodablePartsAreReported();
    void privateKeyOfForeignBlanksHasTheFallbackMessage();
    void brokenPrivateKeyIsReported();
    void wrappedNothingHasTheFallbackMessage();
    void nonceOfEightBytesIsReported();
    void wrappedKeyOfTheWrongSizeIsReported();
    void shortCiphertextIsReported();
    void oneFlippedBitIsNoticed_data();
    void oneFlippedBitIsNoticed();
};

void TestOpenDamaged::init()
{
    removeDataDir();
    QVERIFY(writePrivateKeyFile(toBase64Text(publishedPrivateKey())));
}

void TestOpenDamaged::missingTextOrIvIsReported_data()
{
    QTest::addColumn<QString>("member");
    QTest::addColumn<QJsonValue>("value");
    for (const QString &member : {u"text"_s, u"iv"_s}) {
        QTest::addRow("%s missing", qPrintable(member)) << member << QJsonValue(QJsonValue::Undefined);
        QTest::addRow("%s blank", qPrintable(member)) << member << QJsonValue(u" \t "_s);
        QTest::addRow("%s a number", qPrintable(member)) << member << QJsonValue(7);
    }
}

void TestOpenDamaged::missingTextOrIvIsReported()
{
    QFETCH(const QString, member);
    QFETCH(const QJsonValue, value);
    const DecryptResult result = opened(changed(sealed(u"hi"_s), member, value), u"alice"_s, own);
    QVERIFY(!result.ok);
    QCOMPARE(result.error, u"Encrypted payload is missing text or iv."_s);
    QVERIFY(result.text.isEmpty());
}

void TestOpenDamaged::undecodablePartsAreReported_data()
{
    const QJsonObject message = sealed(u"hi"_s);
    QTest::addColumn<QJsonObject>("broken");
    QTest::newRow("wrapped key") << withRecipientKey(message, u"encryptedKey"_s, u"!!!!"_s);
    QTest::newRow("iv") << changed(message, u"iv"_s, u"!!!!"_s);
    QTest::newRow("text") << changed(message, u"text"_s, u"!!!!"_s);
}

// All parts are decoded before the first is used: the wrapped key here would not unwrap.
void TestOpenDamaged::undecodablePartsAreReported()
{
    QFETCH(const QJsonObject, broken);
    QCOMPARE(opened(broken, u"alice"_s, own).error, u"Invalid base64 data."_s);
    QVERIFY(writePrivateKeyFile(u"QUJD"_s));
    QCOMPARE(opened(broken, u"alice"_s, own).error, u"Invalid base64 data."_s);
}

// A no-break space is no white space in a file of bytes, but it is in a text: nothing is left to decode.
void TestOpenDamaged::privateKeyOfForeignBlanksHasTheFallbackMessage()
{
    QVERIFY(writeFile(privateKeyPath(), "\xc2\xa0"));
    const QJsonObject broken = withRecipientKey(sealed(u"hi"_s), u"encryptedKey"_s, u"!!!!"_s);
    QCOMPARE(opened(broken, u"alice"_s, own).error, u"Private key decode failed."_s);
}

void TestOpenDamaged::brokenPrivateKeyIsReported()
{
    QVERIFY(writePrivateKeyFile(u"!!!!"_s));
    QCOMPARE(opened(sealed(u"hi"_s), u"alice"_s, own).error, u"Invalid base64 data."_s);
    QVERIFY(writePrivateKeyFile(u"QUJD"_s));
    const QString error = opened(sealed(u"hi"_s), u"alice"_s, own).error;
    QVERIFY2(error.startsWith(u"Could not parse private key: error:"_s), qPrintable(error));
}

void TestOpenDamaged::wrappedNothingHasTheFallbackMessage()
{
    const QJsonObject message = sealedBy(QByteArray(), QByteArray(12, 'n'), QByteArray(20, 'c'));
    QCOMPARE(opened(message, u"alice"_s, own).error, u"RSA decrypt failed."_s);
}

void TestOpenDamaged::nonceOfEightBytesIsReported()
{
    const QJsonObject message = sealedBy(QByteArray(32, 'k'), QByteArray(8, 'n'), QByteArray(20, 'c'));
    QCOMPARE(opened(message, u"alice"_s, own).error, u"IV must be 12 bytes for this client."_s);
}

void TestOpenDamaged::wrappedKeyOfTheWrongSizeIsReported()
{
    const QJsonObject message = sealedBy(QByteArray(16, 'k'), QByteArray(12, 'n'), QByteArray(20, 'c'));
    QCOMPARE(opened(message, u"alice"_s, own).error, u"AES key must be 32 bytes."_s);
}

void TestOpenDamaged::shortCiphertextIsReported()
{
    const QJsonObject message = sealedBy(QByteArray(32, 'k'), QByteArray(12, 'n'), QByteArray(15, 'c'));
    QCOMPARE(opened(message, u"alice"_s, own).error, u"Ciphertext is too short."_s);
}

void TestOpenDamaged::oneFlippedBitIsNoticed_data()
{
    QTest::addColumn<QJsonObject>("altered");
    QTest::addColumn<QString>("beginning");
    const QJsonObject message = sealed(u"an important message"_s);
    const QString forged = u"AES-GCM authentication failed."_s;
    const QString unwrapping = u"RSA-OAEP decrypt failed: error:"_s;
    QTest::newRow("text: first byte") << flippedMember(message, u"text"_s, 0) << forged;
    QTest::newRow("text: last byte") << flippedMember(message, u"text"_s, -17) << forged;
    QTest::newRow("text: first byte of the tag") << flippedMember(message, u"text"_s, -16) << forged;
    QTest::newRow("text: last byte of the tag") << flippedMember(message, u"text"_s, -1) << forged;
    for (int i = 0; i < 12; ++i)
        QTest::addRow("iv: byte %d", i) << flippedMember(message, u"iv"_s, i) << forged;
    for (const int i : {0, 1, 127, 254, 255})
        QTest::addRow("encryptedKey: byte %d", i) << flippedWrappedKey(message, i) << unwrapping;
    QTest::newRow("deviceId") << withRecipientKey(message, u"deviceId"_s, u"dev-0"_s) << noKeyFor(own);
    // One bit away from "alicd", who sent it: now it looks like alice's own, and that array is empty.
    QTest::newRow("from") << changed(message, u"from"_s, QString::fromUtf8(flipped("alicd", -1)))
                          << noKeyFor(own);
}

void TestOpenDamaged::oneFlippedBitIsNoticed()
{
    QFETCH(const QJsonObject, altered);
    QFETCH(const QString, beginning);
    const DecryptResult result = opened(altered, u"alice"_s, own);
    QVERIFY(!result.ok);
    QVERIFY2(result.error.startsWith(beginning), qPrintable(result.error));
    QVERIFY(result.text.isEmpty());
}

TIDELOFT_TEST_MAIN(TestOpenDamaged)
#include "tst_open_damaged.moc"
