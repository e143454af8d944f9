// Sealing a message for many devices.
#define OPENSSL_SUPPRESS_DEPRECATED // replacing the random generator is the only way to see it fail
#include "crypto/aes_gcm.h"
#include "crypto/base64.h"
#include "crypto/envelope.h"
#include "crypto/rsa_oaep.h"
#include "tests/crypto/test_keys.h"
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

QJsonObject device(const QJsonValue &deviceId, const QJsonValue &publicKey)
{
    return {{u"deviceId"_s, deviceId}, {u"publicKeyBase64"_s, publicKey}, {u"deviceName"_s, u"ignored"_s}};
}

int drawsLeft = 0;

int drawOrFail(unsigned char *bytes, int size)
{
    std::fill_n(bytes, size, static_cast<unsigned char>(7));
    return drawsLeft-- > 0 ? 1 : 0;
}

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

QStringList identifiers(const QJsonArray &records)
{
    QStringList result;
    for (const QJsonValue &record : records)
        result << record.toObject().value(u"deviceId"_s).toString();
    return result;
}

} // namespace

class TestEnvelope : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyRecordOpensTheText_data();
    void everyRecordOpensTheText();
    void fieldsHaveTheirSizes();
    void emptyTextIsRefused();
    void blankTextIsSealed();
    void emptyRecipientArrayIsRefused();
    void recipientsThatAreAllSkippedAreRefused_data();
    void recipientsThatAreAllSkippedAreRefused();
    void badRecipientKeyFailsTheEnvelope_data();
    void badRecipientKeyFailsTheEnvelope();
    void oneBadRecordFailsTheWholeEnvelope();
    void badSenderKeyFailsTheEnvelope();
    void identifierIsTrimmed();
    void wrappedRecordHasTwoMembers();
    void equalIdentifiersAreNotMerged();
    void emptySenderArrayIsFine();
    void sendersThatAreAllSkippedAreFine();
    void everyEnvelopeHasItsOwnKeyAndNonce();
    void pemKeysAreTaken();
    void noDevicesWrapAtOnce();
    void failingGeneratorIsReported_data();
    void failingGeneratorIsReported();
    void staleErrorIsNotReported();

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

void TestEnvelope::emptyTextIsRefused()
{
    const auto envelope = encryptMessageEnvelope(QString(), {}, {});
    QVERIFY(!envelope.ok);
    QCOMPARE(envelope.error, u"Plain text is empty."_s);
    QVERIFY(envelope.ciphertextBase64.isEmpty() && envelope.ivBase64.isEmpty());
}

void TestEnvelope::blankTextIsSealed()
{
    QVERIFY(encryptMessageEnvelope(u"  "_s, {device(u"A"_s, publicKey)}, {}).ok);
}

void TestEnvelope::emptyRecipientArrayIsRefused()
{
    const auto envelope = encryptMessageEnvelope(u"Hello"_s, {}, {device(u"C"_s, publicKey)});
    QVERIFY(!envelope.ok);
    QCOMPARE(envelope.error, u"Recipient has no registered device keys."_s);
}

void TestEnvelope::recipientsThatAreAllSkippedAreRefused_data()
{
    QTest::addColumn<QJsonArray>("recipients");
    QTest::newRow("no publicKeyBase64") << QJsonArray{QJsonObject{{u"deviceId"_s, u"X"_s}}};
    QTest::newRow("no deviceId") << QJsonArray{QJsonObject{{u"publicKeyBase64"_s, u"QUJD"_s}}};
    QTest::newRow("blank members") << QJsonArray{device(u" "_s, u"QUJD"_s), device(u"X"_s, u"\t"_s)};
    QTest::newRow("members that are no text") << QJsonArray{device(1, u"QUJD"_s), device(u"X"_s, true)};
    QTest::newRow("no objects") << QJsonArray{u"text"_s, 1, QJsonValue(), QJsonArray{}};
}

void TestEnvelope::recipientsThatAreAllSkippedAreRefused()
{
    QFETCH(const QJsonArray, recipients);
    const auto envelope = encryptMessageEnvelope(u"Hello"_s, recipients, {});
    QVERIFY(!envelope.ok);
    QCOMPARE(envelope.error, u"No valid recipient device keys found."_s);
    QVERIFY(!envelope.ciphertextBase64.isEmpty()); // the text was sealed before; only ok counts
    QVERIFY(!envelope.ivBase64.isEmpty());
}

void TestEnvelope::badRecipientKeyFailsTheEnvelope_data()
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

void TestEnvelope::badRecipientKeyFailsTheEnvelope()
{
    QFETCH(const QString, deviceId);
    QFETCH(const QString, key);
    const auto envelope = encryptMessageEnvelope(u"Hello"_s, {device(deviceId, key)}, {});
    QVERIFY(!envelope.ok);
    QTEST(envelope.error, "expected");
    QVERIFY(envelope.recipientKeys.isEmpty());
}

void TestEnvelope::oneBadRecordFailsTheWholeEnvelope()
{
    const QJsonArray devices{device(u"A"_s, publicKey), device(u"X"_s, u"!!!!"_s), device(u"B"_s, publicKey)};
    const auto envelope = encryptMessageEnvelope(u"Hello"_s, devices, {});
    QVERIFY(!envelope.ok);
    QCOMPARE(envelope.error, u"Could not decode public key for device 'X': Invalid base64 data."_s);
    QCOMPARE(identifiers(envelope.recipientKeys), QStringList{u"A"_s}); // wrapped before it, and never sent
}

void TestEnvelope::badSenderKeyFailsTheEnvelope()
{
    const auto envelope =
        encryptMessageEnvelope(u"Hello"_s, {device(u"A"_s, publicKey)}, {device(u"C"_s, u"!!!!"_s)});
    QVERIFY(!envelope.ok);
    QCOMPARE(envelope.error, u"Could not decode public key for device 'C': Invalid base64 data."_s);
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

void TestEnvelope::noDevicesWrapAtOnce()
{
    EncryptedEnvelope envelope;
    QJsonArray wrapped;
    QVERIFY(wrapKeyForDevices({}, QByteArray(32, 'k'), wrapped, envelope));
    QVERIFY(wrapped.isEmpty());
    QVERIFY(envelope.error.isEmpty());
}

void TestEnvelope::failingGeneratorIsReported_data()
{
    QTest::addColumn<int>("draws");
    QTest::newRow("content key") << 0;
    QTest::newRow("nonce") << 1;
}

void TestEnvelope::failingGeneratorIsReported()
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

void TestEnvelope::staleErrorIsNotReported()
{
    queueStaleError();
    const auto envelope = encryptMessageEnvelope(u"Hello"_s, {device(u"X"_s, u"QUJD"_s)}, {});
    QVERIFY(!envelope.ok);
    QVERIFY2(!envelope.error.contains(u"reason(42)"_s), qPrintable(envelope.error));
}

TIDELOFT_TEST_MAIN(TestEnvelope)
#include "tst_envelope.moc"
