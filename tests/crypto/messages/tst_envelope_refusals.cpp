// Envelopes that cannot be made, and the reasons given.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/base64.h"
#include "crypto/messages/envelope.h"
#include "tests/support/crypto/device_records.h"
#include "tests/support/crypto/test_keys.h"
#include "tests/support/test_main.h"

#include <openssl/rand.h>

#include <QJsonObject>
#include <QTest>

#include <algorithm>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

namespace
{

int drawsLeft = 0;

int drawOrFail(unsigned char *bytes, int size)
{
    std::fill_n(bytes, size, static_cast<unsigned char>(7));
    return drawsLeft-- > 0 ? 1 : 0;
}

// Replacing the random generator, an outdated call, is the only way to see it fail.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

// Random bytes for a number of draws, then none, as long as it lives.
class FailingGenerator
{
public:
    explicit FailingGenerator(int draws)
    {
        drawsLeft = draws;
        RAND_set_rand_method(&method);
    }
    Q_DISABLE_COPY_MOVE(FailingGenerator)
    ~FailingGenerator() { RAND_set_rand_method(RAND_OpenSSL()); }

private:
    const RAND_METHOD method{nullptr, drawOrFail, nullptr, nullptr, drawOrFail, nullptr};
};

#pragma GCC diagnostic pop

} // namespace

class TestEnvelopeRefusals : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void emptyTextIsRefused();
    void emptyRecipientArrayIsRefused();
    void recipientsThatAreAllSkippedAreRefused_data();
    void recipientsThatAreAllSkippedAreRefused();
    void badRecipientKeyFailsTheEnvelope_data();
    void badRecipientKeyFailsTheEnvelope();
    void oneBadRecordFailsTheWholeEnvelope();
    void badSenderKeyFailsTheEnvelope();
    void failingGeneratorIsReported_data();
    void failingGeneratorIsReported();
    void staleErrorIsNotReported();

private:
    QString publicKey;
};

void TestEnvelopeRefusals::initTestCase()
{
    publicKey = toBase64Text(publicKeyOf(publishedPrivateKey()));
}

void TestEnvelopeRefusals::emptyTextIsRefused()
{
    const auto envelope = encryptMessageEnvelope(QString(), {}, {});
    QVERIFY(!envelope.ok);
    QCOMPARE(envelope.error, u"Plain text is empty."_s);
    QVERIFY(envelope.ciphertextBase64.isEmpty() && envelope.ivBase64.isEmpty());
}

void TestEnvelopeRefusals::emptyRecipientArrayIsRefused()
{
    const auto envelope = encryptMessageEnvelope(u"Hello"_s, {}, {device(u"C"_s, publicKey)});
    QVERIFY(!envelope.ok);
    QCOMPARE(envelope.error, u"Recipient has no registered device keys."_s);
}

void TestEnvelopeRefusals::recipientsThatAreAllSkippedAreRefused_data()
{
    QTest::addColumn<QJsonArray>("recipients");
    QTest::newRow("no publicKeyBase64") << QJsonArray{QJsonObject{{u"deviceId"_s, u"X"_s}}};
    QTest::newRow("no deviceId") << QJsonArray{QJsonObject{{u"publicKeyBase64"_s, u"QUJD"_s}}};
    QTest::newRow("blank members") << QJsonArray{device(u" "_s, u"QUJD"_s), device(u"X"_s, u"\t"_s)};
    QTest::newRow("members that are no text") << QJsonArray{device(1, u"QUJD"_s), device(u"X"_s, true)};
    QTest::newRow("no objects") << QJsonArray{u"text"_s, 1, QJsonValue(), QJsonArray{}};
}

void TestEnvelopeRefusals::recipientsThatAreAllSkippedAreRefused()
{
    QFETCH(const QJsonArray, recipients);
    const auto envelope = encryptMessageEnvelope(u"Hello"_s, recipients, {});
    QVERIFY(!envelope.ok);
    QCOMPARE(envelope.error, u"No valid recipient device keys found."_s);
    QVERIFY(!envelope.ciphertextBase64.isEmpty()); // the text was sealed before; only ok counts
    QVERIFY(!envelope.ivBase64.isEmpty());
}

void TestEnvelopeRefusals::badRecipientKeyFailsTheEnvelope_data()
{
    QTest::addColumn<QString>("deviceId");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("expected");
    const QString unsupported = u"error:1E08010C:DECODER routines::unsupported"_s;
    QTest::newRow("not Base64") << u"X"_s << u"!!!!"_s
                                << u"Could not decode public key for device 'X': Invalid base64 data."_s;
    QTest::newRow("not a key")
        << u"X"_s << u"QUJD"_s
        << u"RSA encrypt failed for device 'X': Could not parse public key (tried DER and "
           "PEM): "_s
               + unsupported;
    QTest::newRow("identifier is named without its white space")
        << u" X "_s << u"!!!!"_s << u"Could not decode public key for device 'X': Invalid base64 data."_s;
    QTest::newRow("placeholders in an identifier are not expanded")
        << u"%2%1%3"_s << u"!!!!"_s
        << u"Could not decode public key for device '%2%1%3': Invalid base64 data."_s;
    QTest::newRow("nor when RSA fails")
        << u"%2"_s << u"QUJD"_s
        << u"RSA encrypt failed for device '%2': Could not parse public key (tried DER and PEM): "_s
               + unsupported;
}

void TestEnvelopeRefusals::badRecipientKeyFailsTheEnvelope()
{
    QFETCH(const QString, deviceId);
    QFETCH(const QString, key);
    const auto envelope = encryptMessageEnvelope(u"Hello"_s, {device(deviceId, key)}, {});
    QVERIFY(!envelope.ok);
    QTEST(envelope.error, "expected");
    QVERIFY(envelope.recipientKeys.isEmpty());
}

void TestEnvelopeRefusals::oneBadRecordFailsTheWholeEnvelope()
{
    const QJsonArray devices{device(u"A"_s, publicKey), device(u"X"_s, u"!!!!"_s), device(u"B"_s, publicKey)};
    const auto envelope = encryptMessageEnvelope(u"Hello"_s, devices, {});
    QVERIFY(!envelope.ok);
    QCOMPARE(envelope.error, u"Could not decode public key for device 'X': Invalid base64 data."_s);
    QCOMPARE(identifiers(envelope.recipientKeys), QStringList{u"A"_s}); // wrapped before it, and never sent
}

void TestEnvelopeRefusals::badSenderKeyFailsTheEnvelope()
{
    const auto envelope =
        encryptMessageEnvelope(u"Hello"_s, {device(u"A"_s, publicKey)}, {device(u"C"_s, u"!!!!"_s)});
    QVERIFY(!envelope.ok);
    QCOMPARE(envelope.error, u"Could not decode public key for device 'C': Invalid base64 data."_s);
}

void TestEnvelopeRefusals::failingGeneratorIsReported_data()
{
    QTest::addColumn<int>("draws");
    QTest::newRow("content key") << 0;
    QTest::newRow("nonce") << 1;
}

void TestEnvelopeRefusals::failingGeneratorIsReported()
{
    QFETCH(const int, draws);
    const FailingGenerator generator(draws);
    queueStaleError(); // explains nothing here
    const auto envelope = encryptMessageEnvelope(u"Hello"_s, {device(u"A"_s, publicKey)}, {});
    QVERIFY(!envelope.ok);
    QCOMPARE(envelope.error, u"Could not generate random key/IV: Unknown OpenSSL error"_s);
    QVERIFY(envelope.ciphertextBase64.isEmpty() && envelope.ivBase64.isEmpty());
    QCOMPARE(drawsLeft, -1); // the nonce is not drawn after a failed key
}

void TestEnvelopeRefusals::staleErrorIsNotReported()
{
    queueStaleError();
    const auto envelope = encryptMessageEnvelope(u"Hello"_s, {device(u"X"_s, u"QUJD"_s)}, {});
    QVERIFY(!envelope.ok);
    QVERIFY2(!envelope.error.contains(u"reason(42)"_s), qPrintable(envelope.error));
}

TIDELOFT_TEST_MAIN(TestEnvelopeRefusals)
#include "tst_envelope_refusals.moc"
