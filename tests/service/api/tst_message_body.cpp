// Which messages are whole, field by field.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/message_body.h"
#include "tests/service/message_bodies.h"
#include "tests/support/test_main.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestMessage : public QObject
{
    Q_OBJECT

private slots:
    void sealed_data();
    void sealed();
    void plain_data();
    void plain();
    void everyFieldIsNeeded_data();
    void everyFieldIsNeeded();
    void onlyTheTwoMembersOfAKeyAreKept();

private:
    static int refusalOf(const QJsonObject &object);
    static QJsonArray keys(int count);
};

int TestMessage::refusalOf(const QJsonObject &object)
{
    const QByteArray body = QJsonDocument(object).toJson();
    try {
        messageFrom(JsonBody({"POST", "/", "application/json", {}, body}));
    } catch (const Refusal &refusal) {
        return refusal.status;
    }
    return 0;
}

QJsonArray TestMessage::keys(int count)
{
    QJsonArray array;
    for (int i = 0; i < count; ++i)
        array.append(wrappedKey());
    return array;
}

void TestMessage::sealed_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<int>("status");
    QTest::newRow("as the client sends it") << u"encrypted"_s << QJsonValue(1) << 0;
    QTest::newRow("encrypted as boolean") << u"encrypted"_s << QJsonValue(true) << 0;
    QTest::newRow("encrypted as text") << u"encrypted"_s << QJsonValue(u"true"_s) << 400;
    QTest::newRow("encrypted is 2") << u"encrypted"_s << QJsonValue(2) << 400;
    QTest::newRow("encrypted is 0 beside AES-GCM") << u"encrypted"_s << QJsonValue(0) << 400;
    QTest::newRow("other algorithm") << u"algorithm"_s << QJsonValue(u"aes-gcm"_s) << 400;
    QTest::newRow("plain beside 1") << u"algorithm"_s << QJsonValue(u"plain"_s) << 400;
    QTest::newRow("text empty") << u"text"_s << QJsonValue(u""_s) << 400;
    QTest::newRow("text no Base64") << u"text"_s << QJsonValue(u"hello there, this is no secret"_s) << 400;
    QTest::newRow("text without padding") << u"text"_s << QJsonValue(base64(20).chopped(1)) << 400;
    QTest::newRow("text only a tag") << u"text"_s << QJsonValue(base64(16)) << 0;
    QTest::newRow("text shorter than a tag") << u"text"_s << QJsonValue(base64(15)) << 400;
    QTest::newRow("text of 64 KiB") << u"text"_s << QJsonValue(base64(49152)) << 0;
    QTest::newRow("text over 64 KiB") << u"text"_s << QJsonValue(base64(49153)) << 413;
    QTest::newRow("iv of 8 bytes") << u"iv"_s << QJsonValue(base64(8)) << 400;
    QTest::newRow("iv of 13 bytes") << u"iv"_s << QJsonValue(base64(13)) << 400;
    QTest::newRow("iv empty") << u"iv"_s << QJsonValue(u""_s) << 400;
    QTest::newRow("no recipient keys") << u"recipientKeys"_s << QJsonValue(QJsonArray()) << 400;
    QTest::newRow("no sender keys") << u"senderKeys"_s << QJsonValue(QJsonArray()) << 0;
    QTest::newRow("64 keys") << u"recipientKeys"_s << QJsonValue(keys(64)) << 0;
    QTest::newRow("65 keys") << u"recipientKeys"_s << QJsonValue(keys(65)) << 400;
    QTest::newRow("65 sender keys") << u"senderKeys"_s << QJsonValue(keys(65)) << 400;
    QTest::newRow("keys as object") << u"recipientKeys"_s << QJsonValue(QJsonObject()) << 400;
    QTest::newRow("key is a number") << u"recipientKeys"_s << QJsonValue(QJsonArray{42}) << 400;
    const auto one = [](const QJsonObject &key) { return QJsonValue(QJsonArray{key}); };
    QTest::newRow("key of 512 bytes") << u"recipientKeys"_s << one(wrappedKey(u"d"_s, 512)) << 0;
    QTest::newRow("key of 513 bytes") << u"recipientKeys"_s << one(wrappedKey(u"d"_s, 513)) << 400;
    QTest::newRow("key of 255 bytes") << u"senderKeys"_s << one(wrappedKey(u"d"_s, 255)) << 400;
    QTest::newRow("key for no device") << u"recipientKeys"_s << one(wrappedKey(u" "_s)) << 400;
    QTest::newRow("single key") << u"encryptedKey"_s << QJsonValue(base64(256)) << 0;
    QTest::newRow("single key is none") << u"encryptedKey"_s << QJsonValue(u"AAAA"_s) << 400;
    QTest::newRow("single sender key is none") << u"senderEncryptedKey"_s << QJsonValue(u"!"_s) << 400;
}

void TestMessage::sealed()
{
    QFETCH(QString, field);
    QFETCH(QJsonValue, value);
    QFETCH(int, status);
    QJsonObject body = sealedMessage(u"bob"_s);
    body.insert(field, value);
    QCOMPARE(refusalOf(body), status);
}

void TestMessage::plain_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<int>("status");
    QTest::newRow("as the client sends it") << u"encrypted"_s << QJsonValue(0) << 0;
    QTest::newRow("encrypted as boolean") << u"encrypted"_s << QJsonValue(false) << 0;
    QTest::newRow("encrypted is null") << u"encrypted"_s << QJsonValue(QJsonValue::Null) << 400;
    QTest::newRow("encrypted is 1 beside plain") << u"encrypted"_s << QJsonValue(1) << 400;
    QTest::newRow("text empty") << u"text"_s << QJsonValue(u""_s) << 400;
    QTest::newRow("64 KiB of letters of two bytes") << u"text"_s << QJsonValue(QString(32768, u'å')) << 0;
    QTest::newRow("one letter more") << u"text"_s << QJsonValue(QString(32769, u'å')) << 413;
    QTest::newRow("with a nonce") << u"iv"_s << QJsonValue(base64(12)) << 400;
    QTest::newRow("with recipient keys") << u"recipientKeys"_s << QJsonValue(keys(1)) << 400;
    QTest::newRow("with sender keys") << u"senderKeys"_s << QJsonValue(keys(1)) << 400;
    QTest::newRow("with a single key") << u"encryptedKey"_s << QJsonValue(base64(256)) << 400;
    QTest::newRow("with a single sender key") << u"senderEncryptedKey"_s << QJsonValue(base64(256)) << 400;
}

void TestMessage::plain()
{
    QFETCH(QString, field);
    QFETCH(QJsonValue, value);
    QFETCH(int, status);
    QJsonObject body = plainMessage(u"bob"_s, u"hej"_s);
    body.insert(field, value);
    QCOMPARE(refusalOf(body), status);
}

void TestMessage::everyFieldIsNeeded_data()
{
    QTest::addColumn<QString>("field");
    for (const QString &field : sealedMessage(u"bob"_s).keys()) {
        if (field != u"to"_s) // read by who finds the recipient
            QTest::newRow(qPrintable(field)) << field;
    }
}

void TestMessage::everyFieldIsNeeded()
{
    QFETCH(QString, field);
    for (QJsonObject body : {sealedMessage(u"bob"_s), plainMessage(u"bob"_s, u"hej"_s)}) {
        QCOMPARE(refusalOf(body), 0);
        body.remove(field);
        QCOMPARE(refusalOf(body), 400);
    }
}

void TestMessage::onlyTheTwoMembersOfAKeyAreKept()
{
    QJsonObject key = wrappedKey();
    key.insert(u"more"_s, u"something"_s);
    QJsonObject body = sealedMessage(u"bob"_s);
    body.insert(u"recipientKeys"_s, QJsonArray{key});
    const QByteArray json = QJsonDocument(body).toJson();
    const Message message = messageFrom(JsonBody({"POST", "/", "application/json", {}, json, {}}));
    QCOMPARE(message.recipientKeys, QJsonArray{wrappedKey()});
    QVERIFY(message.encrypted);
}

TIDELOFT_TEST_MAIN(TestMessage)
#include "tst_message_body.moc"
