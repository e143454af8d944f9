// Opening messages: which key is taken, every step's message, and one flipped bit for every field.
#include "crypto/aes_gcm.h"
#include "crypto/base64.h"
#include "crypto/envelope.h"
#include "crypto/key_store.h"
#include "crypto/open_message.h"
#include "crypto/rsa_oaep.h"
#include "tests/crypto/data_dir.h"
#include "tests/crypto/test_keys.h"
#include "tests/support/test_main.h"

#include <QTest>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

namespace
{

const QString own = u"dev-1"_s;

QJsonObject changed(QJsonObject message, const QString &member, const QJsonValue &value)
{
    message.insert(member, value);
    return message;
}

// The message with one bit of a Base64 member turned, inside the bytes and not in their encoding.
QJsonObject flippedMember(const QJsonObject &message, const QString &member, qsizetype position)
{
    const QByteArray bytes = fromBase64Text(message.value(member).toString());
    return changed(message, member, toBase64Text(flipped(bytes, position)));
}

QJsonObject withRecipientKey(const QJsonObject &message, const QString &member, const QString &value)
{
    const QJsonObject record = message.value(u"recipientKeys"_s).toArray().at(0).toObject();
    return changed(message, u"recipientKeys"_s, QJsonArray{changed(record, member, value)});
}

QJsonObject flippedWrappedKey(const QJsonObject &message, qsizetype position)
{
    const QJsonObject record = message.value(u"recipientKeys"_s).toArray().at(0).toObject();
    const QByteArray key = fromBase64Text(record.value(u"encryptedKey"_s).toString());
    return withRecipientKey(message, u"encryptedKey"_s, toBase64Text(flipped(key, position)));
}

QString noKeyFor(const QString &deviceId)
{
    return u"No encrypted key found for device '"_s + deviceId
           + u"'. The message was not encrypted for this device, or the key arrays are empty. Try "
             u"re-registering "
             "your device key."_s;
}

} // namespace

class TestOpenMessage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void encryptedMarksAnEnvelope_data();
    void encryptedMarksAnEnvelope();
    void unencryptedTextIsPassedThrough_data();
    void unencryptedTextIsPassedThrough();
    void opensWhatWasSealed_data();
    void opensWhatWasSealed();
    void ownMessageTakesItsKeyFromSenderKeys();
    void otherArrayIsNeverSearched();
    void identifierIsComparedWithoutCaseAndSpace();
    void missingTextOrIvIsReported_data();
    void missingTextOrIvIsReported();
    void absentDeviceIsReportedAsGiven();
    void deletedKeyFileIsReported();
    void blankKeyFileIsReported();
    void replacedKeyFileHoldsAtOnce();
    void keyFileMayHoldPkcs8();
    void undecodablePartsAreReported_data();
    void undecodablePartsAreReported();
    void privateKeyOfForeignBlanksHasTheFallbackMessage();
    void brokenPrivateKeyIsReported();
    void wrappedNothingHasTheFallbackMessage();
    void nonceOfEightBytesIsReported();
    void wrappedKeyOfTheWrongSizeIsReported();
    void shortCiphertextIsReported();
    void sealedEmptyTextOpens();
    void oneFlippedBitIsNoticed_data();
    void oneFlippedBitIsNoticed();
    void textResetsAnEarlierError();
    void textReportsAFailure();

private:
    QJsonObject sealed(const QString &text) const;
    QJsonObject sealedBy(const QByteArray &contentKey, const QByteArray &iv, const QByteArray &bytes) const;

    QByteArray privateKey;
    QByteArray publicKey;
};

void TestOpenMessage::initTestCase()
{
    privateKey = publishedPrivateKey();
    publicKey = publicKeyOf(privateKey);
}

void TestOpenMessage::init()
{
    removeDataDir();
    QVERIFY(writePrivateKeyFile(toBase64Text(privateKey)));
}

// From bob to alice's device dev-1.
QJsonObject TestOpenMessage::sealed(const QString &text) const
{
    const QJsonArray devices{
        QJsonObject{{u"deviceId"_s, own}, {u"publicKeyBase64"_s, toBase64Text(publicKey)}}};
    const EncryptedEnvelope envelope = encryptMessageEnvelope(text, devices, {});
    return {{u"encrypted"_s, true},
            {u"from"_s, u"bob"_s},
            {u"to"_s, u"alice"_s},
            {u"text"_s, envelope.ciphertextBase64},
            {u"iv"_s, envelope.ivBase64},
            {u"recipientKeys"_s, envelope.recipientKeys},
            {u"senderKeys"_s, envelope.senderKeys}};
}

// The same with parts that the envelope would not make.
QJsonObject TestOpenMessage::sealedBy(const QByteArray &contentKey, const QByteArray &iv,
                                      const QByteArray &bytes) const
{
    const QString wrapped = toBase64Text(rsaOaepEncrypt(publicKey, contentKey));
    const QJsonObject message = withRecipientKey(sealed(u"x"_s), u"encryptedKey"_s, wrapped);
    return changed(changed(message, u"iv"_s, toBase64Text(iv)), u"text"_s, toBase64Text(bytes));
}

void TestOpenMessage::encryptedMarksAnEnvelope_data()
{
    QTest::addColumn<QJsonObject>("item");
    QTest::addColumn<bool>("expected");
    const auto row = [](const char *name, const QJsonValue &value, bool expected) {
        QTest::newRow(name) << QJsonObject{{u"encrypted"_s, value}} << expected;
    };
    row("true", true, true);
    row("the number 1", 1, true);
    row("another number", -0.5, true);
    row("false", false, false);
    row("the number 0", 0, false);
    row("the text true", u"true"_s, false);
    row("the text 1", u"1"_s, false);
    row("null", QJsonValue(), false);
    row("array", QJsonArray{true}, false);
    row("object", QJsonObject{{u"encrypted"_s, true}}, false);
    QTest::newRow("missing") << QJsonObject{} << false;
}

void TestOpenMessage::encryptedMarksAnEnvelope()
{
    QFETCH(const QJsonObject, item);
    QTEST(isEncrypted(item), "expected");
}

void TestOpenMessage::unencryptedTextIsPassedThrough_data()
{
    QTest::addColumn<QJsonObject>("message");
    QTest::addColumn<QString>("text");
    QTest::newRow("without encrypted") << QJsonObject{{u"text"_s, u" hi "_s}} << u" hi "_s;
    QTest::newRow("encrypted false") << QJsonObject{{u"encrypted"_s, false}, {u"text"_s, u"hi"_s}} << u"hi"_s;
    QTest::newRow("encrypted given as the text true")
        << QJsonObject{{u"encrypted"_s, u"true"_s}, {u"text"_s, u"hi"_s}} << u"hi"_s;
    QTest::newRow("no text") << QJsonObject{} << QString();
    QTest::newRow("text that is a number") << QJsonObject{{u"text"_s, 7}} << QString();
}

void TestOpenMessage::unencryptedTextIsPassedThrough()
{
    QFETCH(const QJsonObject, message);
    removeDataDir(); // no key is needed
    const DecryptResult result = decryptMessage(message, u"alice"_s, own);
    QVERIFY(result.ok);
    QVERIFY(result.error.isEmpty());
    QTEST(result.text, "text");
}

void TestOpenMessage::opensWhatWasSealed_data()
{
    QTest::addColumn<QJsonObject>("message");
    QTest::addColumn<QString>("text");
    const QJsonObject message = sealed(u"Räksmörgås 💬"_s);
    QTest::newRow("as sealed") << message << u"Räksmörgås 💬"_s;
    QTest::newRow("encrypted as the number 1") << changed(message, u"encrypted"_s, 1) << u"Räksmörgås 💬"_s;
    QTest::newRow("white space around text and iv")
        << changed(changed(message, u"iv"_s, u"\n "_s + message.value(u"iv"_s).toString()), u"text"_s,
                   message.value(u"text"_s).toString() + u" \r\n"_s)
        << u"Räksmörgås 💬"_s;
    QTest::newRow("top-level keys are not read")
        << changed(changed(message, u"encryptedKey"_s, u"!!!!"_s), u"senderEncryptedKey"_s, u"!!!!"_s)
        << u"Räksmörgås 💬"_s;
}

void TestOpenMessage::opensWhatWasSealed()
{
    QFETCH(const QJsonObject, message);
    const DecryptResult result = decryptMessage(message, u"alice"_s, own);
    QVERIFY2(result.ok, qPrintable(result.error));
    QTEST(result.text, "text");
    QVERIFY(result.error.isEmpty());
}

void TestOpenMessage::ownMessageTakesItsKeyFromSenderKeys()
{
    QJsonObject message = sealed(u"to you"_s);
    message.insert(u"senderKeys"_s, message.value(u"recipientKeys"_s));
    message = withRecipientKey(message, u"encryptedKey"_s, u"!!!!"_s); // would fail if it were taken
    message.insert(u"from"_s, u"Alice "_s);
    QCOMPARE(decryptMessage(message, u"alice"_s, own).text, u"to you"_s);
    QCOMPARE(decryptMessage(message, u" ALICE"_s, own).text, u"to you"_s);
    QCOMPARE(decryptMessage(message, u"bob"_s, own).error, u"Invalid base64 data."_s);
}

void TestOpenMessage::otherArrayIsNeverSearched()
{
    const QJsonObject message = sealed(u"for alice"_s);
    QCOMPARE(decryptMessage(changed(message, u"from"_s, u"alice"_s), u"alice"_s, own).error, noKeyFor(own));
    QJsonObject swapped = changed(message, u"senderKeys"_s, message.value(u"recipientKeys"_s));
    swapped.insert(u"recipientKeys"_s, QJsonArray{});
    QCOMPARE(decryptMessage(swapped, u"alice"_s, own).error, noKeyFor(own));
}

void TestOpenMessage::identifierIsComparedWithoutCaseAndSpace()
{
    const QJsonObject message = withRecipientKey(sealed(u"hi"_s), u"deviceId"_s, u"DEV-1"_s);
    QCOMPARE(decryptMessage(message, u"alice"_s, u" dev-1 "_s).text, u"hi"_s);
}

void TestOpenMessage::missingTextOrIvIsReported_data()
{
    QTest::addColumn<QString>("member");
    QTest::addColumn<QJsonValue>("value");
    for (const QString &member : {u"text"_s, u"iv"_s}) {
        QTest::addRow("%s missing", qPrintable(member)) << member << QJsonValue(QJsonValue::Undefined);
        QTest::addRow("%s blank", qPrintable(member)) << member << QJsonValue(u" \t "_s);
        QTest::addRow("%s a number", qPrintable(member)) << member << QJsonValue(7);
    }
}

void TestOpenMessage::missingTextOrIvIsReported()
{
    QFETCH(const QString, member);
    QFETCH(const QJsonValue, value);
    const DecryptResult result = decryptMessage(changed(sealed(u"hi"_s), member, value), u"alice"_s, own);
    QVERIFY(!result.ok);
    QCOMPARE(result.error, u"Encrypted payload is missing text or iv."_s);
    QVERIFY(result.text.isEmpty());
}

void TestOpenMessage::absentDeviceIsReportedAsGiven()
{
    removeDataDir(); // the key file is not looked at yet
    for (const QString &identifier : {u" Dev-2 "_s, u"%1 %2"_s, QString()})
        QCOMPARE(decryptMessage(sealed(u"hi"_s), u"alice"_s, identifier).error, noKeyFor(identifier));
    const QJsonObject noArray = changed(sealed(u"hi"_s), u"recipientKeys"_s, u"text"_s);
    QCOMPARE(decryptMessage(noArray, u"alice"_s, own).error, noKeyFor(own));
}

void TestOpenMessage::deletedKeyFileIsReported()
{
    QVERIFY(QFile::remove(privateKeyPath()));
    QCOMPARE(decryptMessage(sealed(u"hi"_s), u"alice"_s, own).error,
             u"Could not open file: "_s + privateKeyPath());
    QVERIFY(blockDataDir());
    QCOMPARE(decryptMessage(sealed(u"hi"_s), u"alice"_s, own).error, u"Private key path is empty."_s);
}

void TestOpenMessage::blankKeyFileIsReported()
{
    QVERIFY(writeFile(privateKeyPath(), " \r\n"));
    QCOMPARE(decryptMessage(sealed(u"hi"_s), u"alice"_s, own).error, u"Private key not found."_s);
}

void TestOpenMessage::replacedKeyFileHoldsAtOnce()
{
    const QJsonObject message = sealed(u"hi"_s);
    QVERIFY(decryptMessage(message, u"alice"_s, own).ok);
    const KeyPtr other(EVP_PKEY_Q_keygen(nullptr, nullptr, "RSA", size_t(2048)));
    const QByteArray otherKey = encoded(i2d_PrivateKey, static_cast<const EVP_PKEY *>(other.get()));
    QVERIFY(writePrivateKeyFile(toBase64Text(otherKey)));
    const QString error = decryptMessage(message, u"alice"_s, own).error;
    QVERIFY2(error.startsWith(u"RSA-OAEP decrypt failed: error:"_s), qPrintable(error));
    QVERIFY(writePrivateKeyFile(toBase64Text(privateKey)));
    QCOMPARE(decryptMessage(message, u"alice"_s, own).text, u"hi"_s);
}

void TestOpenMessage::keyFileMayHoldPkcs8()
{
    QVERIFY(writePrivateKeyFile(toBase64Text(pkcs8Of(privateKey))));
    QCOMPARE(decryptMessage(sealed(u"hi"_s), u"alice"_s, own).text, u"hi"_s);
}

void TestOpenMessage::undecodablePartsAreReported_data()
{
    const QJsonObject message = sealed(u"hi"_s);
    QTest::addColumn<QJsonObject>("broken");
    QTest::newRow("wrapped key") << withRecipientKey(message, u"encryptedKey"_s, u"!!!!"_s);
    QTest::newRow("iv") << changed(message, u"iv"_s, u"!!!!"_s);
    QTest::newRow("text") << changed(message, u"text"_s, u"!!!!"_s);
}

// All parts are decoded before the first is used: the wrapped key here would not unwrap.
void TestOpenMessage::undecodablePartsAreReported()
{
    QFETCH(const QJsonObject, broken);
    QCOMPARE(decryptMessage(broken, u"alice"_s, own).error, u"Invalid base64 data."_s);
    QVERIFY(writePrivateKeyFile(u"QUJD"_s));
    QCOMPARE(decryptMessage(broken, u"alice"_s, own).error, u"Invalid base64 data."_s);
}

// A no-break space is no white space in a file of bytes, but it is in a text: nothing is left to decode.
void TestOpenMessage::privateKeyOfForeignBlanksHasTheFallbackMessage()
{
    QVERIFY(writeFile(privateKeyPath(), "\xc2\xa0"));
    const QJsonObject broken = withRecipientKey(sealed(u"hi"_s), u"encryptedKey"_s, u"!!!!"_s);
    QCOMPARE(decryptMessage(broken, u"alice"_s, own).error, u"Private key decode failed."_s);
}

void TestOpenMessage::brokenPrivateKeyIsReported()
{
    QVERIFY(writePrivateKeyFile(u"!!!!"_s));
    QCOMPARE(decryptMessage(sealed(u"hi"_s), u"alice"_s, own).error, u"Invalid base64 data."_s);
    QVERIFY(writePrivateKeyFile(u"QUJD"_s));
    const QString error = decryptMessage(sealed(u"hi"_s), u"alice"_s, own).error;
    QVERIFY2(error.startsWith(u"Could not parse private key: error:"_s), qPrintable(error));
}

void TestOpenMessage::wrappedNothingHasTheFallbackMessage()
{
    const QJsonObject message = sealedBy(QByteArray(), QByteArray(12, 'n'), QByteArray(20, 'c'));
    QCOMPARE(decryptMessage(message, u"alice"_s, own).error, u"RSA decrypt failed."_s);
}

void TestOpenMessage::nonceOfEightBytesIsReported()
{
    const QJsonObject message = sealedBy(QByteArray(32, 'k'), QByteArray(8, 'n'), QByteArray(20, 'c'));
    QCOMPARE(decryptMessage(message, u"alice"_s, own).error, u"IV must be 12 bytes for this client."_s);
}

void TestOpenMessage::wrappedKeyOfTheWrongSizeIsReported()
{
    const QJsonObject message = sealedBy(QByteArray(16, 'k'), QByteArray(12, 'n'), QByteArray(20, 'c'));
    QCOMPARE(decryptMessage(message, u"alice"_s, own).error, u"AES key must be 32 bytes."_s);
}

void TestOpenMessage::shortCiphertextIsReported()
{
    const QJsonObject message = sealedBy(QByteArray(32, 'k'), QByteArray(12, 'n'), QByteArray(15, 'c'));
    QCOMPARE(decryptMessage(message, u"alice"_s, own).error, u"Ciphertext is too short."_s);
}

void TestOpenMessage::sealedEmptyTextOpens()
{
    const QByteArray key(32, 'k');
    const QByteArray iv(12, 'n');
    const DecryptResult result =
        decryptMessage(sealedBy(key, iv, aesGcmEncrypt(key, iv, QByteArray())), u"alice"_s, own);
    QVERIFY2(result.ok, qPrintable(result.error));
    QVERIFY(result.text.isEmpty());
}

void TestOpenMessage::oneFlippedBitIsNoticed_data()
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

void TestOpenMessage::oneFlippedBitIsNoticed()
{
    QFETCH(const QJsonObject, altered);
    QFETCH(const QString, beginning);
    const DecryptResult result = decryptMessage(altered, u"alice"_s, own);
    QVERIFY(!result.ok);
    QVERIFY2(result.error.startsWith(beginning), qPrintable(result.error));
    QVERIFY(result.text.isEmpty());
}

void TestOpenMessage::textResetsAnEarlierError()
{
    QString error;
    QVERIFY(decryptMessageText(sealed(u"hi"_s), u"alice"_s, u"dev-2"_s, &error).isEmpty());
    QCOMPARE(error, noKeyFor(u"dev-2"_s));
    QCOMPARE(decryptMessageText(sealed(u"hi"_s), u"alice"_s, own, &error), u"hi"_s);
    QVERIFY(error.isNull());
}

void TestOpenMessage::textReportsAFailure()
{
    QString error;
    QVERIFY(
        decryptMessageText(flippedMember(sealed(u"hi"_s), u"text"_s, 0), u"alice"_s, own, &error).isEmpty());
    QCOMPARE(error, u"AES-GCM authentication failed."_s);
    QVERIFY(decryptMessageText(flippedMember(sealed(u"hi"_s), u"text"_s, 0), u"alice"_s, own).isEmpty());
    QCOMPARE(decryptMessageText(sealed(u"hi"_s), u"alice"_s, own), u"hi"_s);
}

TIDELOFT_TEST_MAIN(TestOpenMessage)
#include "tst_open_message.moc"
