// Sealing a message for many devices: what every device gets.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/aes_gcm.h"
#include "crypto/cipher/base64.h"
#include "crypto/cipher/rsa_oaep.h"
#include "crypto/messages/envelope.h"
#include "tests/support/crypto/device_records.h"
#include "tests/support/crypto/test_keys.h"
#include "tests/support/test_main.h"

#include <QJsonObject>
#include <QTest>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

class TestEnvelope : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyRecordOpensTheText_data();
    void everyRecordOpensTheText();
    void fieldsHaveTheirSizes();
    void blankTextIsSealed();
    void identifierIsTrimmed();
    void wrappedRecordHasTwoMembers();
    void equalIdentifiersAreNotMerged();
    void emptySenderArrayIsFine();
    void sendersThatAreAllSkippedAreFine();
    void everyEnvelopeHasItsOwnKeyAndNonce();
    void pemKeysAreTaken();

private:
    QByteArray contentKeyOf(const QJsonValue &record) const;

    QByteArray privateKey;
    QString publicKey;
};

void TestEnvelope::initTestCase()
{
    privateKey = publishedPrivateKey();
    publicKey = toBase64Text(publicKeyOf(privateKey));
}

QByteArray TestEnvelope::contentKeyOf(const QJsonValue &record) const
{
    return rsaOaepDecrypt(privateKey, fromBase64Text(record.toObject().value(u"encryptedKey"_s).toString()));
}

void TestEnvelope::everyRecordOpensTheText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("ASCII") << u"Hello"_s;
    QTest::newRow("one character") << u"x"_s;
    QTest::newRow("Swedish and emoji") << u"Räksmörgås 💬🇸🇪"_s;
    QTest::newRow("outer white space stays") << u"  a\nb  "_s;
    QTest::newRow("long") << QString(20000, u'å');
}

void TestEnvelope::everyRecordOpensTheText()
{
    QFETCH(const QString, text);
    const QJsonArray two{device(u"A"_s, publicKey), device(u"B"_s, publicKey)};
    const EncryptedEnvelope envelope = encryptMessageEnvelope(text, two, {device(u"C"_s, publicKey)});
    QVERIFY2(envelope.ok, qPrintable(envelope.error));
    QVERIFY(envelope.error.isEmpty());
    QCOMPARE(identifiers(envelope.recipientKeys), (QStringList{u"A"_s, u"B"_s}));
    QCOMPARE(identifiers(envelope.senderKeys), QStringList{u"C"_s});
    const QByteArray iv = fromBase64Text(envelope.ivBase64);
    const QByteArray sealed = fromBase64Text(envelope.ciphertextBase64);
    const QByteArray contentKey = contentKeyOf(envelope.recipientKeys.at(0));
    QCOMPARE(contentKeyOf(envelope.recipientKeys.at(1)), contentKey);
    QCOMPARE(contentKeyOf(envelope.senderKeys.at(0)), contentKey);
    QCOMPARE(aesGcmDecrypt(contentKey, iv, sealed), text.toUtf8());
}

void TestEnvelope::fieldsHaveTheirSizes()
{
    const auto envelope = encryptMessageEnvelope(u"åäö"_s, {device(u"A"_s, publicKey)}, {});
    QCOMPARE(fromBase64Text(envelope.ivBase64).size(), 12);
    QCOMPARE(fromBase64Text(envelope.ciphertextBase64).size(), 6 + 16);
    QCOMPARE(contentKeyOf(envelope.recipientKeys.at(0)).size(), 32);
    const QString wrapped = envelope.recipientKeys.at(0).toObject().value(u"encryptedKey"_s).toString();
    QCOMPARE(fromBase64Text(wrapped).size(), 256);
}

void TestEnvelope::blankTextIsSealed()
{
    QVERIFY(encryptMessageEnvelope(u"  "_s, {device(u"A"_s, publicKey)}, {}).ok);
}

void TestEnvelope::identifierIsTrimmed()
{
    const auto envelope =
        encryptMessageEnvelope(u"Hello"_s, {device(u" Laptop-1 "_s, u"\n"_s + publicKey + u" "_s)}, {});
    QVERIFY2(envelope.ok, qPrintable(envelope.error));
    QCOMPARE(identifiers(envelope.recipientKeys), QStringList{u"Laptop-1"_s});
}

void TestEnvelope::wrappedRecordHasTwoMembers()
{
    const auto envelope = encryptMessageEnvelope(u"Hello"_s, {device(u"A"_s, publicKey)}, {});
    QCOMPARE(envelope.recipientKeys.at(0).toObject().keys(), (QStringList{u"deviceId"_s, u"encryptedKey"_s}));
}

void TestEnvelope::equalIdentifiersAreNotMerged()
{
    const QJsonArray twice{device(u"A"_s, publicKey), device(u"A"_s, publicKey)};
    const auto envelope = encryptMessageEnvelope(u"Hello"_s, twice, {});
    QCOMPARE(identifiers(envelope.recipientKeys), (QStringList{u"A"_s, u"A"_s}));
    QVERIFY(envelope.recipientKeys.at(0) != envelope.recipientKeys.at(1));
}

void TestEnvelope::emptySenderArrayIsFine()
{
    const auto envelope = encryptMessageEnvelope(u"Hello"_s, {device(u"A"_s, publicKey)}, {});
    QVERIFY(envelope.ok);
    QVERIFY(envelope.senderKeys.isEmpty());
}

void TestEnvelope::sendersThatAreAllSkippedAreFine()
{
    const auto envelope =
        encryptMessageEnvelope(u"Hello"_s, {device(u"A"_s, publicKey)}, {device(u"C"_s, u" "_s), 7});
    QVERIFY2(envelope.ok, qPrintable(envelope.error));
    QVERIFY(envelope.senderKeys.isEmpty());
}

void TestEnvelope::everyEnvelopeHasItsOwnKeyAndNonce()
{
    const QJsonArray recipients{device(u"A"_s, publicKey)};
    const auto first = encryptMessageEnvelope(u"Hello"_s, recipients, {});
    const auto second = encryptMessageEnvelope(u"Hello"_s, recipients, {});
    QVERIFY(first.ivBase64 != second.ivBase64);
    QVERIFY(first.ciphertextBase64 != second.ciphertextBase64);
    QVERIFY(contentKeyOf(first.recipientKeys.at(0)) != contentKeyOf(second.recipientKeys.at(0)));
}

void TestEnvelope::pemKeysAreTaken()
{
    const auto envelope =
        encryptMessageEnvelope(u"Hello"_s, {device(u"A"_s, toBase64Text(publicPemOf(privateKey)))}, {});
    QVERIFY2(envelope.ok, qPrintable(envelope.error));
    QCOMPARE(contentKeyOf(envelope.recipientKeys.at(0)).size(), 32);
}

TIDELOFT_TEST_MAIN(TestEnvelope)
#include "tst_envelope.moc"
