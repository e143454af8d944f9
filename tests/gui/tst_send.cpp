// Sending a message: what goes over the wire, for whom it is sealed, and when.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/request_names.h"
#include "tests/support/sealed_messages.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QJsonDocument>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestSend : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void bodyHasNineFields();
    void messageIsSealedForEveryDeviceOfTheRecipient();
    void senderKeysHoldThisDeviceAlone_data();
    void senderKeysHoldThisDeviceAlone();
    void recipientWithTheLegacyKeyAlone();
    void afterASendTheInputIsEmptyAndTheHistoryAskedOnce();
    void sentMessageIsShown();
    void returnSendsToo();
    void keysThatDoNotSend_data();
    void keysThatDoNotSend();
    void blanksAskNothing();
    void textIsTrimmed();
    void secondPressReplacesTheWaitingText();
    void replyForAnotherLetterCaseIsIgnored();
    void replyAfterASwitchLeavesTheTextWaiting();

private:
    void answerKeys(const QJsonObject &reply)
    {
        chat.service.answer(requests::keysOfBob, 200, objectJson(reply));
    }
    void press() { QTest::mouseClick(chat.sendButton(), Qt::LeftButton); }
    bool sendText(const QString &text);
    QJsonObject sentBody() const
    {
        return QJsonDocument::fromJson(chat.service.lastRequest(requests::sendMessage).body).object();
    }
    QString opened(const KeyPair &pair, const QString &device) const
    {
        return openedBody(sentBody(), u"recipientKeys"_s, pair, device);
    }

    KeyPair bobs = makeKeyPair();
    KeyPair own = makeKeyPair(); // the last one made is this client's
    ChatWindow chat;
};

void TestSend::initTestCase()
{
    failOnToolkitWarnings();
    QVERIFY(bobs.privateKey != own.privateKey);
    const QByteArray keys = R"({"keys":[{"deviceId":"phone","publicKey":"QUJD"},
        {"deviceId":"%1","publicKey":"%2","deviceName":"TideLoft Desktop"},
        {"deviceId":"tablet","publicKeyBase64":"QUJD"}]})";
    QVERIFY(chat.signIn()); // tells the identifier; the second time the service knows the device
    chat.service.answer("GET /api/chat/device-keys/me", 200,
                        QString::fromUtf8(keys).arg(chat.deviceId(), own.publicKey).toUtf8());
    QVERIFY(QMetaObject::invokeMethod(&chat.window, "onLoginSucceeded", Q_ARG(QString, u"alice"_s)));
    QVERIFY(chat.service.waitForRequests("GET /api/chat/device-keys/me", 2));
    QVERIFY(chat.settle());
    chat.service.answer(requests::sendMessage, 200, "{}");
}

void TestSend::init()
{
    failOnToolkitWarnings();
    answerKeys({{u"keys"_s, QJsonArray{bobs.device(u" Laptop-1 "_s)}}});
    QVERIFY(chat.open(u"bob"_s));
    chat.msgInput()->clear();
    chat.service.clear();
}

bool TestSend::sendText(const QString &text)
{
    chat.msgInput()->insert(text); // as pasted: simulated keys know ASCII only
    press();
    return chat.service.waitForRequests(requests::sendMessage, 1);
}

void TestSend::bodyHasNineFields()
{
    QVERIFY(sendText(u"hello"_s));
    const QJsonObject body = sentBody();
    QStringList fields{u"to"_s,
                       u"text"_s,
                       u"iv"_s,
                       u"encryptedKey"_s,
                       u"senderEncryptedKey"_s,
                       u"recipientKeys"_s,
                       u"senderKeys"_s,
                       u"algorithm"_s,
                       u"encrypted"_s};
    fields.sort();
    QCOMPARE(body.keys(), fields);
    QCOMPARE(body[u"to"], QJsonValue(u"bob"_s));
    QCOMPARE(body[u"encryptedKey"], QJsonValue(QString(u""_s)));
    QCOMPARE(body[u"senderEncryptedKey"], QJsonValue(QString(u""_s)));
    QCOMPARE(body[u"algorithm"], QJsonValue(u"AES-GCM"_s));
    QCOMPARE(body[u"encrypted"], QJsonValue(1));
    QCOMPARE(QByteArray::fromBase64(body[u"iv"].toString().toLatin1()).size(), 12);
    QCOMPARE(QByteArray::fromBase64(body[u"text"].toString().toLatin1()).size(), 5 + 16);
    QVERIFY(!chat.service.lastRequest(requests::sendMessage).body.contains("hello"));
}

void TestSend::messageIsSealedForEveryDeviceOfTheRecipient()
{
    answerKeys({{u"keys"_s, QJsonArray{bobs.device(u" Laptop-1 "_s), own.device(u"Phone"_s)}},
                {u"publicKey"_s, u"not used beside device keys"_s}});
    QVERIFY(sendText(u"Hej på dig <b>🙂</b>"_s));
    const QJsonArray keys = sentBody()[u"recipientKeys"].toArray();
    QCOMPARE(keys.size(), 2);
    QCOMPARE(keys[0][u"deviceId"], QJsonValue(u"Laptop-1"_s));
    QCOMPARE(keys[1][u"deviceId"], QJsonValue(u"Phone"_s));
    QCOMPARE(opened(bobs, u"Laptop-1"_s), u"Hej på dig <b>🙂</b>"_s);
    QCOMPARE(opened(own, u"Phone"_s), u"Hej på dig <b>🙂</b>"_s);
    QVERIFY(opened(own, u"Laptop-1"_s).isNull());
}

void TestSend::senderKeysHoldThisDeviceAlone_data()
{
    QTest::addColumn<bool>("known");
    QTest::newRow("three own devices: this one's key alone") << true;
    QTest::newRow("this device is not listed: no key") << false;
}

void TestSend::senderKeysHoldThisDeviceAlone()
{
    QFETCH(const bool, known);
    const QJsonArray others{own.device(chat.deviceId().toUpper()), own.device(chat.deviceId() + u" "_s)};
    const QByteArray before = "GET /api/chat/device-keys/me";
    if (!known) {                                       // spelled a little differently it is another device
        chat.service.hold("POST /api/chat/device-key"); // its reply would ask for the list once more
        chat.service.answerOnce(before, 200, json(others));
        QMetaObject::invokeMethod(&chat.window, "onLoginSucceeded", Q_ARG(QString, u"alice"_s));
        QVERIFY(chat.service.waitForRequests(before, 1));
        QVERIFY(chat.settle());
        QVERIFY(chat.open(u"bob"_s));
    }
    QVERIFY(sendText(u"hello"_s));
    chat.service.release("POST /api/chat/device-key");
    const QJsonArray keys = sentBody()[u"senderKeys"].toArray();
    QCOMPARE(keys.size(), known ? 1 : 0);
    if (!known)
        return;
    QCOMPARE(keys[0][u"deviceId"], QJsonValue(chat.deviceId()));
    QCOMPARE(openedBody(sentBody(), u"senderKeys"_s, own, chat.deviceId()), u"hello"_s);
}

void TestSend::recipientWithTheLegacyKeyAlone()
{
    answerKeys({{u"keys"_s, QJsonArray{}}, {u"publicKey"_s, bobs.publicKey}});
    QVERIFY(sendText(u"hello"_s));
    const QJsonArray keys = sentBody()[u"recipientKeys"].toArray();
    QCOMPARE(keys.size(), 1);
    QCOMPARE(keys[0][u"deviceId"], QJsonValue(u"legacy"_s));
    QCOMPARE(opened(bobs, u"legacy"_s), u"hello"_s);
}

void TestSend::afterASendTheInputIsEmptyAndTheHistoryAskedOnce()
{
    chat.service.hold(requests::sendMessage);
    QVERIFY(sendText(u"hello"_s));
    QCOMPARE(chat.msgInput()->text(), u"hello"_s);
    QCOMPARE(chat.service.count(requests::historyWithBob), 0);
    chat.service.release(requests::sendMessage);
    QTRY_COMPARE(chat.msgInput()->text(), QString());
    QVERIFY(chat.service.waitForRequests(requests::historyWithBob, 1));
    QVERIFY(chat.settle());
    QCOMPARE(chat.service.count(requests::historyWithBob), 1);
    QCOMPARE(chat.service.count(requests::keysOfBob), 1);
    QCOMPARE(chat.service.count(requests::sendMessage), 1);
}

void TestSend::sentMessageIsShown()
{
    chat.service.answer(requests::historyWithBob, 200,
                        json(QJsonArray{sealedMessage(u"alice"_s, u"hello"_s, own, chat.deviceId(), true)}));
    QVERIFY(sendText(u"hello"_s));
    QTRY_COMPARE(chat.messageList()->count(), 2);
    QCOMPARE(shownMessage(chat.messageList(), 1).text->text(), u"hello"_s);
    QVERIFY(shownMessage(chat.messageList(), 1).isMine);
}

void TestSend::returnSendsToo()
{
    QTest::keyClicks(chat.msgInput(), u"hello"_s);
    QTest::keyClick(chat.msgInput(), Qt::Key_Return);
    QVERIFY(chat.service.waitForRequests(requests::sendMessage, 1));
    QCOMPARE(opened(bobs, u"Laptop-1"_s), u"hello"_s);
    QTRY_COMPARE(chat.msgInput()->text(), QString());
}

void TestSend::keysThatDoNotSend_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("Shift and Return") << Qt::Key_Return << Qt::KeyboardModifiers(Qt::ShiftModifier);
    QTest::newRow("Enter of the keypad") << Qt::Key_Enter << Qt::KeyboardModifiers(Qt::KeypadModifier);
}

void TestSend::keysThatDoNotSend()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    QTest::keyClicks(chat.msgInput(), u"hello"_s);
    QTest::keyClick(chat.msgInput(), key, modifiers);
    QVERIFY(chat.settle());
    QCOMPARE(chat.service.count(requests::keysOfBob), 0);
    QCOMPARE(chat.msgInput()->text(), u"hello"_s);
}

void TestSend::blanksAskNothing()
{
    QTest::keyClicks(chat.msgInput(), u"   "_s);
    press();
    QVERIFY(chat.settle());
    const qsizetype refreshes = chat.service.count("GET /api/chat/conversations")
                                + chat.service.count("GET /api/chat/history/bob"); // on a slow computer
    QCOMPARE(chat.service.requests().size() - refreshes, 1);                       // the search that settles
}

void TestSend::textIsTrimmed()
{
    QVERIFY(sendText(u"  two  words "_s));
    QCOMPARE(opened(bobs, u"Laptop-1"_s), u"two  words"_s);
}

void TestSend::secondPressReplacesTheWaitingText()
{
    chat.service.hold(requests::keysOfBob);
    QTest::keyClicks(chat.msgInput(), u"one"_s);
    press();
    QTest::keyClicks(chat.msgInput(), u" two"_s);
    press();
    QTRY_COMPARE(chat.service.heldCount(requests::keysOfBob), 2);
    chat.service.release(requests::keysOfBob);
    QVERIFY(chat.service.waitForRequests(requests::sendMessage, 1));
    QCOMPARE(opened(bobs, u"Laptop-1"_s), u"one two"_s);
    QVERIFY(chat.settle());
    QCOMPARE(chat.service.count(requests::sendMessage), 1);
}

void TestSend::replyForAnotherLetterCaseIsIgnored()
{
    chat.service.hold(requests::keysOfBob);
    QTest::keyClicks(chat.msgInput(), u"secret for bob"_s);
    press();
    QTRY_COMPARE(chat.service.heldCount(requests::keysOfBob), 1);
    QVERIFY(chat.open(u"Bob"_s));
    chat.service.release(requests::keysOfBob);
    QVERIFY(chat.settle());
    QCOMPARE(chat.service.count(requests::sendMessage), 0);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestSend::replyAfterASwitchLeavesTheTextWaiting()
{
    const QByteArray keysOfEve = "GET /api/chat/public-key/eve";
    chat.service.answer(keysOfEve, 200, objectJson({{u"keys"_s, QJsonArray{bobs.device(u"eves"_s)}}}));
    chat.service.hold(requests::keysOfBob);
    QTest::keyClicks(chat.msgInput(), u"first"_s);
    press();
    QVERIFY(chat.open(u"eve"_s));
    chat.service.release(requests::keysOfBob);
    QVERIFY(chat.settle());
    QCOMPARE(chat.service.count(requests::sendMessage), 0);
    QCOMPARE(chat.msgInput()->text(), u"first"_s);
    press(); // the next press takes what stands there, for whoever is open now
    QVERIFY(chat.service.waitForRequests(requests::sendMessage, 1));
    QCOMPARE(sentBody()[u"to"], QJsonValue(u"eve"_s));
    QCOMPARE(opened(bobs, u"eves"_s), u"first"_s);
}

TIDELOFT_GUI_TEST_MAIN(TestSend)
#include "tst_send.moc"
