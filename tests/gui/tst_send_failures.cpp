// Sending that fails: what the warning says and looks like, that nothing is lost, and that one can try again.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/patience.h"
#include "tests/support/request_names.h"
#include "tests/support/sealed_messages.h"
#include "tests/support/test_main.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

QByteArray deviceKeys(const QByteArray &deviceId, const QByteArray &key)
{
    return R"({"keys":[{"deviceId":")" + deviceId + R"(","publicKeyBase64":")" + key + R"("}]})";
}

} // namespace

class TestSendFailures : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void keysThatCannotBeUsed_data();
    void keysThatCannotBeUsed();
    void failedKeyRequest_data();
    void failedKeyRequest();
    void failedSend_data();
    void failedSend();
    void warningLooksLikeOne();
    void warningIsPlainText();
    void warningIsModal();
    void retryAfterAFailedSendIsSealedAfresh();
    void retryAfterAFailedKeyRequest();
    void failedKeyRequestForAnotherDropsTheTextToo();
    void serviceIsDown();

private:
    void type(const QString &text) { QTest::keyClicks(chat.msgInput(), text); }
    void press() { QTest::mouseClick(chat.sendButton(), Qt::LeftButton); }
    /// What the box says that comes; it is closed with its button.
    QString answeredWarning();

    KeyPair own = makeKeyPair();
    ChatWindow chat;
    QByteArray goodKeys = deviceKeys("X", own.publicKey.toUtf8());
};

void TestSendFailures::initTestCase()
{
    failOnToolkitWarnings();
    QVERIFY(chat.signIn());
}

void TestSendFailures::init()
{
    failOnToolkitWarnings();
    chat.service.answer(requests::keysOfBob, 200, goodKeys);
    chat.service.answer(requests::sendMessage, 200, "{}");
    QVERIFY(chat.open(u"bob"_s));
    chat.msgInput()->clear();
    chat.service.clear();
}

QString TestSendFailures::answeredWarning()
{
    QMessageBox *box = waitForBox();
    if (!box)
        return u"no box came"_s;
    const QString text = box->text();
    QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    if (!waitFor([] { return !QApplication::activeModalWidget(); }, patience()))
        return u"the box stayed"_s;
    return text;
}

void TestSendFailures::keysThatCannotBeUsed_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("warning");
    const QString none = u"Recipient has no registered keys."_s;
    const QByteArray bad = deviceKeys("X", "!!!!");
    const QString detail = u"Could not decode public key for device 'X': Invalid base64 data."_s;
    QTest::newRow("none, English") << 1 << QByteArray(R"({"keys":[]})") << none;
    QTest::newRow("none, Swedish") << 0 << QByteArray(R"({"keys":[]})")
                                   << u"Mottagaren har inga registrerade nycklar."_s;
    QTest::newRow("a bare list is not accepted") << 1 << QByteArray(R"([{"deviceId":"X"}])") << none;
    QTest::newRow("keys that are no list") << 1 << QByteArray(R"({"keys":"x","publicKey":7})") << none;
    QTest::newRow("HTML for an answer") << 1 << QByteArray("<html>hi</html>") << none;
    QTest::newRow("an empty body") << 1 << QByteArray() << none;
    QTest::newRow("undecodable key, English") << 1 << bad << u"Encryption failed: "_s + detail;
    QTest::newRow("undecodable key, Swedish") << 0 << bad << u"Kryptering misslyckades: "_s + detail;
    QTest::newRow("record without a key") << 1 << QByteArray(R"({"keys":[{"deviceId":"X"}]})")
                                          << u"Encryption failed: No valid recipient device keys found."_s;
    QTest::newRow("undecodable legacy key")
        << 1 << QByteArray(R"({"keys":[],"publicKey":"!!!!"})")
        << u"Encryption failed: Could not decode public key for device 'legacy': Invalid base64 data."_s;
}

void TestSendFailures::keysThatCannotBeUsed()
{
    QFETCH(const int, language);
    QFETCH(const QByteArray, body);
    chat.service.answer(requests::keysOfBob, 200, body);
    chat.window.setLanguageIndex(language);
    type(u"hello"_s);
    press();
    const QString warning = answeredWarning();
    chat.window.setLanguageIndex(1);
    QTEST(warning, "warning");
    QVERIFY(chat.settle());
    QCOMPARE(chat.service.count(requests::sendMessage), 0);
    QCOMPARE(chat.msgInput()->text(), u"hello"_s);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestSendFailures::failedKeyRequest_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("warning");
    QTest::newRow("with a message") << QByteArray(R"({"message":"no such user"})") << u"no such user"_s;
    QTest::newRow("with an error") << QByteArray(R"({"error":"gone"})") << u"gone"_s;
    QTest::newRow("with neither") << QByteArray("{}") << u"Unknown error"_s;
}

void TestSendFailures::failedKeyRequest()
{
    QFETCH(const QByteArray, body);
    chat.service.answer(requests::keysOfBob, 404, body);
    type(u"hello"_s);
    press();
    QTEST(answeredWarning(), "warning");
    QVERIFY(chat.settle());
    QCOMPARE(chat.service.count(requests::sendMessage), 0);
    QCOMPARE(chat.msgInput()->text(), u"hello"_s);
}

void TestSendFailures::failedSend_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("warning");
    QTest::newRow("with a message") << QByteArray(R"({"message":"too long"})") << u"too long"_s;
    QTest::newRow("with an error") << QByteArray(R"({"error":"full"})") << u"full"_s;
    QTest::newRow("with neither") << QByteArray("{}") << u"Unknown error"_s;
}

void TestSendFailures::failedSend()
{
    QFETCH(const QByteArray, body);
    chat.service.answer(requests::sendMessage, 500, body);
    type(u"hello"_s);
    press();
    QTEST(answeredWarning(), "warning");
    QVERIFY(chat.settle());
    QCOMPARE(chat.service.count(requests::sendMessage), 1); // nothing is tried again by itself
    QCOMPARE(chat.service.count("GET /api/chat/history/bob"), 0);
    QCOMPARE(chat.msgInput()->text(), u"hello"_s);
}

void TestSendFailures::warningLooksLikeOne()
{
    chat.service.answer(requests::sendMessage, 500, R"({"message":"full"})");
    type(u"hello"_s);
    press();
    const QMessageBox *box = waitForBox();
    QVERIFY(box);
    QCOMPARE(box->windowTitle(), u"TideLoft"_s);
    QCOMPARE(box->icon(), QMessageBox::Warning);
    QCOMPARE(box->buttons().size(), 1);
    QCOMPARE(box->standardButtons(), QMessageBox::Ok);
    QCOMPARE(box->informativeText(), QString());
    QCOMPARE(answeredWarning(), u"full"_s);
}

void TestSendFailures::warningIsPlainText()
{
    const QString markup = u"<b>x</b> <img src=/dev/zero>"_s;
    chat.service.answer(requests::keysOfBob, 500, objectJson({{u"message"_s, markup}}));
    type(u"hello"_s);
    press();
    const QMessageBox *box = waitForBox();
    QVERIFY(box);
    QCOMPARE(box->textFormat(), Qt::PlainText);
    const auto *label = box->findChild<QLabel *>(u"qt_msgbox_label"_s);
    QVERIFY(label);
    QCOMPARE(label->textFormat(), Qt::PlainText);
    QCOMPARE(answeredWarning(), markup);
}

void TestSendFailures::warningIsModal()
{
    chat.service.answer(requests::keysOfBob, 500, R"({"message":"full"})");
    type(u"hello"_s);
    press();
    const QMessageBox *box = waitForBox();
    QVERIFY(box);
    QVERIFY(box->isModal());
    QCOMPARE(box->parentWidget(), &chat.window);
    chat.service.clear();
    QTest::mouseClick(chat.window.windowHandle(), Qt::LeftButton, {},
                      chat.sendButton()->mapTo(&chat.window, QPoint(20, 20)));
    QVERIFY(chat.settle());
    QCOMPARE(chat.service.count(requests::keysOfBob), 0);
    QCOMPARE(answeredWarning(), u"full"_s);
}

void TestSendFailures::retryAfterAFailedSendIsSealedAfresh()
{
    chat.service.answerOnce(requests::sendMessage, 503, R"({"message":"later"})");
    type(u"hello"_s);
    press();
    QCOMPARE(answeredWarning(), u"later"_s);
    press();
    QTRY_COMPARE(chat.msgInput()->text(), QString());
    QCOMPARE(chat.service.count(requests::keysOfBob), 2);
    const auto tries = chat.service.requests(requests::sendMessage);
    QCOMPARE(tries.size(), 2);
    QVERIFY(tries[0].body != tries[1].body);
}

void TestSendFailures::retryAfterAFailedKeyRequest()
{
    chat.service.answerOnce(requests::keysOfBob, 503, R"({"message":"later"})");
    type(u"hello"_s);
    press();
    QCOMPARE(answeredWarning(), u"later"_s);
    QCOMPARE(chat.service.count(requests::sendMessage), 0);
    press();
    QTRY_COMPARE(chat.msgInput()->text(), QString());
    QCOMPARE(chat.service.count(requests::sendMessage), 1);
}

void TestSendFailures::failedKeyRequestForAnotherDropsTheTextToo()
{
    chat.service.answer("GET /api/chat/public-key/eve", 200, goodKeys);
    chat.service.hold(requests::keysOfBob);
    chat.service.hold("GET /api/chat/public-key/eve");
    chat.service.answer(requests::keysOfBob, 500, R"({"message":"broken"})");
    type(u"hello"_s);
    press();
    QVERIFY(chat.open(u"eve"_s));
    press();
    QTRY_COMPARE(chat.service.heldCount("GET /api/chat/public-key/eve"), 1);
    chat.service.release(requests::keysOfBob);
    QCOMPARE(answeredWarning(), u"broken"_s);
    chat.service.release("GET /api/chat/public-key/eve");
    QVERIFY(chat.settle());
    QCOMPARE(chat.service.count(requests::sendMessage), 0);
}

void TestSendFailures::serviceIsDown() // the last: it stays down
{
    chat.service.stop();
    type(u"hello"_s);
    press();
    const QString warning = answeredWarning();
    QVERIFY2(warning.contains(u"refused"_s, Qt::CaseInsensitive), qPrintable(warning));
    QCOMPARE(chat.msgInput()->text(), u"hello"_s);
}

TIDELOFT_GUI_TEST_MAIN(TestSendFailures)
#include "tst_send_failures.moc"
