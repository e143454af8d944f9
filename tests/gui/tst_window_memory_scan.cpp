// What is left of keys in the memory of the window's process: while somebody is signed in those that reading
// goes on with, once each, and after the log-out none.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/cipher/base64.h"
#include "crypto/cipher/rsa_oaep.h"
#include "crypto/cipher/secret_bytes.h"
#include "crypto/keys/key_store.h"
#include "crypto/messages/envelope.h"
#include "crypto/messages/wrapped_keys.h"
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/memory_scan.h"
#include "tests/support/patience.h"
#include "tests/support/private_numbers.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QJsonDocument>
#include <QMessageBox>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace tideloft::crypto;
using namespace tideloft::tests;

namespace
{

constexpr int messages = 100;

// The content key that was wrapped for DEVICE, looked at without leaving anything of it.
void note(SoughtSecrets &sought, const QJsonValue &wrappedKeys, const QString &device)
{
    const SecretBytes file(readPrivateKeyBytes());
    const SecretBytes der(QByteArray::fromBase64(file.view()));
    const QString wrapped = findWrappedKeyForDevice(wrappedKeys.toArray(), device);
    const SecretBytes contentKey(rsaOaepDecrypt(der.view(), fromBase64Text(wrapped)));
    sought.add(contentKey.view());
}

// What encodings hold, and the same from its other end, as the library keeps numbers that it reckons with.
void addNumber(SoughtSecrets &sought, QByteArray &&bytes)
{
    SecretBytes number(std::move(bytes));
    sought.add(QByteArray::fromRawData(number.view().constData() + 24, 16));
    std::reverse(number.buffer().begin(), number.buffer().end());
    sought.add(QByteArray::fromRawData(number.view().constData() + 24, 16));
}

SoughtSecrets formsOfThePrivateKey()
{
    SoughtSecrets sought;
    const SecretBytes file(readPrivateKeyBytes());
    const SecretText text(QString::fromLatin1(file.view()));
    for (const qsizetype part : {400, 800, 1100}) { // private exponent, primes, and what follows from them
        sought.add(QByteArray::fromRawData(file.view().constData() + part, 16));
        sought.add(QByteArray::fromRawData(reinterpret_cast<const char *>(text.view().utf16() + part), 16));
    }
    const SecretBytes der(QByteArray::fromBase64(file.view()));
    for (QByteArray &number : privateNumbers(der.view()))
        addNumber(sought, std::move(number));
    return sought;
}

QJsonObject damaged(QJsonObject item)
{
    item[u"iv"_s] = u"AAAAAAAAAAAAAAAA"_s;
    return item;
}

} // namespace

class TestWindowMemoryScan : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { failOnToolkitWarnings(); }
    void nothingIsLeftAfterTheLogOut();
    void refusedSendsLeaveNothing();

private:
    [[nodiscard]] QJsonObject device(const QString &identifier) const
    {
        return {{u"deviceId"_s, identifier}, {u"publicKeyBase64"_s, readPublicKeyFile()}};
    }
    [[nodiscard]] QJsonObject received(int number) const;
    void signIn();
    bool write(const QString &text);
    bool sendAll(SoughtSecrets &keys, QJsonArray &sent);

    ChatWindow chat;
};

void TestWindowMemoryScan::initTestCase()
{
    QVERIFY(chat.signIn()); // makes the keys, and tells the identifier
    chat.window.logOut();
    chat.service.answer(requests::listDevices, 200, json({device(chat.deviceId())}));
    chat.service.answer("GET /api/chat/public-key/bob", 200,
                        objectJson({{u"keys"_s, QJsonArray{device(u"bobs"_s)}}}));
}

void TestWindowMemoryScan::signIn()
{
    chat.service.clear(); // the sign-in waits for requests of its own
    QVERIFY(chat.signIn());
    QVERIFY(chat.service.waitForRequests(requests::listDevices, 1));
    QVERIFY(chat.open(u"bob"_s));
}

QJsonObject TestWindowMemoryScan::received(int number) const
{
    const EncryptedEnvelope envelope =
        encryptMessageEnvelope(u"from bob: %1"_s.arg(number), {device(chat.deviceId())}, {});
    return {{u"from"_s, u"bob"_s},
            {u"encrypted"_s, true},
            {u"text"_s, envelope.ciphertextBase64},
            {u"iv"_s, envelope.ivBase64},
            {u"recipientKeys"_s, envelope.recipientKeys}};
}

bool TestWindowMemoryScan::write(const QString &text)
{
    const qsizetype before = chat.service.count(requests::sendMessage);
    chat.msgInput()->setText(text);
    QTest::keyClick(chat.msgInput(), Qt::Key_Return);
    return chat.service.waitForRequests(requests::sendMessage, before + 1);
}

// As the service gives them back, they are opened with the key that was wrapped for this device.
bool TestWindowMemoryScan::sendAll(SoughtSecrets &keys, QJsonArray &sent)
{
    for (int i = 0; i < messages; ++i) {
        if (!write(u"from alice: %1"_s.arg(i)))
            return false;
        if (!waitFor([this] { return chat.msgInput()->text().isEmpty(); }, patience()))
            return false;
        QJsonObject item =
            QJsonDocument::fromJson(chat.service.lastRequest(requests::sendMessage).body).object();
        item.insert(u"from"_s, u"alice"_s);
        note(keys, item[u"senderKeys"], chat.deviceId());
        sent.append(item);
    }
    return true;
}

void TestWindowMemoryScan::nothingIsLeftAfterTheLogOut()
{
    chat.service.answer(requests::sendMessage, 200, "{}");
    signIn();
    const SoughtSecrets privateKey = formsOfThePrivateKey();
    SoughtSecrets keys;
    QJsonArray items;
    QVERIFY(sendAll(keys, items));
    QVERIFY(chat.settle());
    QCOMPARE(keys.found(), 0); // nobody has read them yet
    for (int i = 0; i < messages; ++i) {
        items.append(received(i));
        note(keys, items.last()[u"recipientKeys"], chat.deviceId());
    }
    SoughtSecrets unopened;
    const QJsonObject broken = damaged(received(messages));
    note(unopened, broken[u"recipientKeys"], chat.deviceId());
    items.append(broken);
    QVERIFY(chat.showHistory(u"bob"_s, items));
    QCOMPARE(chat.messageList()->count(), 2 * messages + 2); // and a day
    const QString eighth = chat.messageList()->item(8)->data(Qt::AccessibleTextRole).toString();
    QVERIFY2(eighth.contains(u"from alice: 7"_s), qPrintable(eighth));
    QCOMPARE(keys.places(), QList<int>(2 * messages, 1)); // in the table of those that are remembered
    QCOMPARE(unopened.found(), 0);
    QVERIFY(privateKey.places().constFirst() > 0); // and so it would be found
    chat.window.logOut();
    QVERIFY(chat.settle());
    QCOMPARE(keys.found(), 0);
    QCOMPARE(privateKey.found(), 0);
}

void TestWindowMemoryScan::refusedSendsLeaveNothing()
{
    chat.service.answer(requests::sendMessage, 500, R"({"message":"No"})");
    signIn();
    QVERIFY(chat.showHistory(u"bob"_s, {received(0)})); // reads with the private key, as sending does not
    SoughtSecrets keys;
    for (int i = 0; i < 10; ++i) {
        QVERIFY(write(u"refused: %1"_s.arg(i)));
        note(keys,
             QJsonDocument::fromJson(chat.service.lastRequest(requests::sendMessage).body)[u"recipientKeys"],
             u"bobs"_s);
        QMessageBox *box = waitForBox();
        QVERIFY(box);
        box->accept();
    }
    QVERIFY(chat.settle());
    QCOMPARE(keys.found(), 0);
    const SoughtSecrets privateKey = formsOfThePrivateKey();
    QVERIFY(privateKey.places().constFirst() > 0); // and so it would be found
    chat.window.logOut();
    QCOMPARE(privateKey.found(), 0);
}

TIDELOFT_GUI_TEST_MAIN(TestWindowMemoryScan)
#include "tst_window_memory_scan.moc"
