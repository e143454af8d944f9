// Opening messages: which key is taken, from where, and what a message is that needs none.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/aes_gcm.h"
#include "crypto/keys/key_store.h"
#include "crypto/messages/open_message.h"
#include "tests/support/crypto/opened.h"
#include "tests/support/crypto/sealed_items.h"
#include "tests/support/data_dir.h"
#include "tests/support/test_main.h"

#include <QTest>

using namespace tideloft::crypto;
using namespace tideloft::tests;
using namespace Qt::StringLiterals;

class TestOpenMessage : public QObject
{
    Q_OBJECT

private slots:
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
    void absentDeviceIsReportedAsGiven();
    void deletedKeyFileIsReported();
    void blankKeyFileIsReported();
    void replacedKeyFileHoldsAtOnce();
    void keyFileMayHoldPkcs8();
    void sealedEmptyTextOpens();
    void textResetsAnEarlierError();
    void textReportsAFailure();
};

void TestOpenMessage::init()
{
    removeDataDir();
    QVERIFY(writePrivateKeyFile(toBase64Text(publishedPrivateKey())));
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
    const DecryptResult result = opened(message, u"alice"_s, own);
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
    const DecryptResult result = opened(message, u"alice"_s, own);
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
    QCOMPARE(opened(message, u"alice"_s, own).text, u"to you"_s);
    QCOMPARE(opened(message, u" ALICE"_s, own).text, u"to you"_s);
    QCOMPARE(opened(message, u"bob"_s, own).error, u"Invalid base64 data."_s);
}

void TestOpenMessage::otherArrayIsNeverSearched()
{
    const QJsonObject message = sealed(u"for alice"_s);
    QCOMPARE(opened(changed(message, u"from"_s, u"alice"_s), u"alice"_s, own).error, noKeyFor(own));
    QJsonObject swapped = changed(message, u"senderKeys"_s, message.value(u"recipientKeys"_s));
    swapped.insert(u"recipientKeys"_s, QJsonArray{});
    QCOMPARE(opened(swapped, u"alice"_s, own).error, noKeyFor(own));
}

void TestOpenMessage::identifierIsComparedWithoutCaseAndSpace()
{
    const QJsonObject message = withRecipientKey(sealed(u"hi"_s), u"deviceId"_s, u"DEV-1"_s);
    QCOMPARE(opened(message, u"alice"_s, u" dev-1 "_s).text, u"hi"_s);
}

void TestOpenMessage::absentDeviceIsReportedAsGiven()
{
    removeDataDir(); // the key file is not looked at yet
    for (const QString &identifier : {u" Dev-2 "_s, u"%1 %2"_s, QString()})
        QCOMPARE(opened(sealed(u"hi"_s), u"alice"_s, identifier).error, noKeyFor(identifier));
    const QJsonObject noArray = changed(sealed(u"hi"_s), u"recipientKeys"_s, u"text"_s);
    QCOMPARE(opened(noArray, u"alice"_s, own).error, noKeyFor(own));
}

void TestOpenMessage::deletedKeyFileIsReported()
{
    QVERIFY(QFile::remove(privateKeyPath()));
    QCOMPARE(opened(sealed(u"hi"_s), u"alice"_s, own).error, u"Could not open file: "_s + privateKeyPath());
    QVERIFY(blockDataDir());
    QCOMPARE(opened(sealed(u"hi"_s), u"alice"_s, own).error, u"Private key path is empty."_s);
}

void TestOpenMessage::blankKeyFileIsReported()
{
    QVERIFY(writeFile(privateKeyPath(), " \r\n"));
    QCOMPARE(opened(sealed(u"hi"_s), u"alice"_s, own).error, u"Private key not found."_s);
}

void TestOpenMessage::replacedKeyFileHoldsAtOnce()
{
    const QJsonObject message = sealed(u"hi"_s);
    QVERIFY(opened(message, u"alice"_s, own).ok);
    QVERIFY(writePrivateKeyFile(toBase64Text(anotherPrivateKey())));
    const QString error = opened(message, u"alice"_s, own).error;
    QVERIFY2(error.startsWith(u"RSA-OAEP decrypt failed: error:"_s), qPrintable(error));
    QVERIFY(writePrivateKeyFile(toBase64Text(publishedPrivateKey())));
    QCOMPARE(opened(message, u"alice"_s, own).text, u"hi"_s);
}

void TestOpenMessage::keyFileMayHoldPkcs8()
{
    QVERIFY(writePrivateKeyFile(toBase64Text(pkcs8Of(publishedPrivateKey()))));
    QCOMPARE(opened(sealed(u"hi"_s), u"alice"_s, own).text, u"hi"_s);
}

void TestOpenMessage::sealedEmptyTextOpens()
{
    const QByteArray key(32, 'k');
    const QByteArray iv(12, 'n');
    const DecryptResult result =
        opened(sealedBy(key, iv, aesGcmEncrypt(key, iv, QByteArray())), u"alice"_s, own);
    QVERIFY2(result.ok, qPrintable(result.error));
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
