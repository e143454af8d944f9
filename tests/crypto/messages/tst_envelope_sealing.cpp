// An envelope made device by device is the one that is made in one go.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/aes_gcm.h"
#include "crypto/cipher/base64.h"
#include "crypto/cipher/rsa_oaep.h"
#include "crypto/messages/envelope.h"
#include "crypto/messages/envelope_sealing.h"
#include "tests/support/crypto/device_records.h"
#include "tests/support/crypto/test_keys.h"
#include "tests/support/test_main.h"

#include <QTest>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

class TestEnvelopeSealing : public QObject
{
    Q_OBJECT

private slots:
    void givesWhatTheWholeGives_data();
    void givesWhatTheWholeGives();
    void recordsOpenTheText();
    void finishedSealingStays();
};

void TestEnvelopeSealing::givesWhatTheWholeGives_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QJsonArray>("recipients");
    QTest::addColumn<QJsonArray>("senders");
    QTest::addColumn<QString>("expectedError");
    QTest::addColumn<int>("steps");
    const QString key = toBase64Text(publicKeyOf(publishedPrivateKey()));
    const QJsonObject good = device(u"A"_s, key);
    const QJsonObject bad = device(u"X"_s, u"!!!!"_s);
    const QJsonObject skipped = device(u"S"_s, QString());
    const QString undecodable = u"Could not decode public key for device 'X': Invalid base64 data."_s;
    const QString text = u"Hello"_s;
    QTest::newRow("both sides") << text << QJsonArray{good, good} << QJsonArray{good} << QString() << 3;
    QTest::newRow("no senders") << text << QJsonArray{good} << QJsonArray{} << QString() << 1;
    QTest::newRow("skipped ones") << text << QJsonArray{skipped, good, skipped} << QJsonArray{skipped}
                                  << QString() << 4;
    QTest::newRow("no text") << QString() << QJsonArray{good} << QJsonArray{} << u"Plain text is empty."_s
                             << 0;
    QTest::newRow("nobody") << text << QJsonArray{} << QJsonArray{good}
                            << u"Recipient has no registered device keys."_s << 0;
    QTest::newRow("all skipped") << text << QJsonArray{skipped, skipped} << QJsonArray{bad}
                                 << u"No valid recipient device keys found."_s << 2;
    QTest::newRow("bad recipient") << text << QJsonArray{good, bad, good} << QJsonArray{good} << undecodable
                                   << 2;
    QTest::newRow("bad sender") << text << QJsonArray{good} << QJsonArray{bad} << undecodable << 2;
}

void TestEnvelopeSealing::givesWhatTheWholeGives()
{
    QFETCH(const QString, text);
    QFETCH(const QJsonArray, recipients);
    QFETCH(const QJsonArray, senders);
    EnvelopeSealing sealing(text, recipients, senders);
    int steps = 0;
    for (; !sealing.isFinished(); ++steps)
        sealing.wrapNext();
    QTEST(steps, "steps");
    const EncryptedEnvelope sliced = sealing.takeEnvelope();
    const EncryptedEnvelope whole = encryptMessageEnvelope(text, recipients, senders);
    QTEST(sliced.error, "expectedError");
    QCOMPARE(sliced.error, whole.error);
    QCOMPARE(sliced.ok, sliced.error.isEmpty());
    QCOMPARE(sliced.ok, whole.ok);
    QCOMPARE(identifiers(sliced.recipientKeys), identifiers(whole.recipientKeys));
    QCOMPARE(identifiers(sliced.senderKeys), identifiers(whole.senderKeys));
    QCOMPARE(sliced.ciphertextBase64.size(), whole.ciphertextBase64.size());
    QCOMPARE(sliced.ivBase64.size(), whole.ivBase64.size());
}

void TestEnvelopeSealing::recordsOpenTheText()
{
    const QByteArray privateKey = publishedPrivateKey();
    const QString key = toBase64Text(publicKeyOf(privateKey));
    EnvelopeSealing sealing(u"hej"_s, {device(u"A"_s, key)}, {device(u"B"_s, key)});
    while (!sealing.isFinished())
        sealing.wrapNext();
    const EncryptedEnvelope envelope = sealing.takeEnvelope();
    for (const QJsonArray &keys : {envelope.recipientKeys, envelope.senderKeys}) {
        const QString wrapped = keys.at(0).toObject().value(u"encryptedKey"_s).toString();
        const QByteArray contentKey = rsaOaepDecrypt(privateKey, fromBase64Text(wrapped));
        QCOMPARE(aesGcmDecrypt(contentKey, fromBase64Text(envelope.ivBase64),
                               fromBase64Text(envelope.ciphertextBase64)),
                 "hej");
    }
}

void TestEnvelopeSealing::finishedSealingStays()
{
    EnvelopeSealing sealing(QString(), {}, {});
    QVERIFY(sealing.isFinished());
    sealing.wrapNext();
    QCOMPARE(sealing.takeEnvelope().error, u"Plain text is empty."_s);
}

TIDELOFT_TEST_MAIN(TestEnvelopeSealing)
#include "tst_envelope_sealing.moc"
