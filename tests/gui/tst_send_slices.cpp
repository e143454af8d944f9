// Sending to a recipient with very many devices: the window goes on to work, and may change its mind.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_chat_fixture.h"
#include "tests/support/request_names.h"
#include "tests/support/sealed_messages.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QJsonDocument>
#include <QMessageBox>
#include <QTimer>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

constexpr int many = 1'000; // takes some twenty slices, a few on the fastest of computers
constexpr int few = 8;

} // namespace

class TestSendSlices : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void fewDevicesAreServedAtOnce();
    void manyDevicesAreServedInOrderBetweenEvents();
    void theLineRestsMeanwhile();
    void focusThatWentElsewhereStaysThere();
    void badKeyAmongManyIsReported();
    void givingUpSendsNothing_data();
    void givingUpSendsNothing();
    void theSameConversationGoesOn();
    void destroyedWindowSendsNothing();

private:
    QJsonArray devices(int count) const;
    /// Hands the window keys for COUNT devices while "hello" waits in its line for them.
    void handKeys(const QJsonArray &keys);
    bool isBusy() const { return !chat->msgInput()->isEnabled(); }

    KeyPair bobs = makeKeyPair();
    std::unique_ptr<ChatWindow> chat;
};

void TestSendSlices::init()
{
    failOnToolkitWarnings();
    chat = std::make_unique<ChatWindow>();
    QVERIFY(chat->signIn());
    chat->service.answer(requests::sendMessage, 200, "{}");
    QVERIFY(chat->open(u"bob"_s));
    chat->service.clear();
    chat->service.hold(requests::keysOfBob); // every test hands over the keys itself
}

QJsonArray TestSendSlices::devices(int count) const
{
    QJsonArray keys;
    for (int i = 0; i < count; ++i)
        keys.append(bobs.device(u"device-%1"_s.arg(i)));
    return keys;
}

void TestSendSlices::handKeys(const QJsonArray &keys)
{
    chat->msgInput()->setText(u"hello"_s);
    chat->msgInput()->setFocus();
    QTest::keyClick(chat->msgInput(), Qt::Key_Return);
    QVERIFY(QMetaObject::invokeMethod(&chat->window, "onUserPublicKeysLoaded", Q_ARG(QString, u"bob"_s),
                                      Q_ARG(QJsonArray, keys), Q_ARG(QString, QString())));
}

void TestSendSlices::fewDevicesAreServedAtOnce()
{
    handKeys(devices(few));
    QVERIFY(!isBusy());
    QVERIFY(chat->msgInput()->hasFocus());
    QVERIFY(chat->service.waitForRequests(requests::sendMessage, 1));
}

void TestSendSlices::manyDevicesAreServedInOrderBetweenEvents()
{
    int turns = 0;
    QTimer other;
    connect(&other, &QTimer::timeout, this, [&] { turns += isBusy() ? 1 : 0; });
    other.start(0);
    handKeys(devices(many));
    QVERIFY(isBusy());
    QVERIFY(chat->service.waitForRequests(requests::sendMessage, 1));
    QVERIFY2(turns >= 2, qPrintable(QString::number(turns)));
    const QJsonObject body =
        QJsonDocument::fromJson(chat->service.lastRequest(requests::sendMessage).body).object();
    const QJsonArray sent = body[u"recipientKeys"].toArray();
    QCOMPARE(sent.size(), many);
    for (int i = 0; i < many; ++i)
        QCOMPARE(sent.at(i)[u"deviceId"].toString(), u"device-%1"_s.arg(i));
    for (const int index : {0, many / 2, many - 1})
        QCOMPARE(openedBody(body, u"recipientKeys"_s, bobs, u"device-%1"_s.arg(index)), u"hello"_s);
    QTRY_COMPARE(chat->msgInput()->text(), QString());
    QCOMPARE(chat->service.count(requests::sendMessage), 1);
}

void TestSendSlices::theLineRestsMeanwhile()
{
    handKeys(devices(many));
    QVERIFY(isBusy() && !chat->sendButton()->isEnabled());
    QCOMPARE(chat->window.focusWidget()->focusPolicy(), Qt::NoFocus); // no neighbour gets the keys
    for (QWidget *widget : QList<QWidget *>{chat->window.focusWidget(), chat->msgInput()})
        QTest::keyClick(widget, Qt::Key_X);
    QTest::mouseClick(chat->sendButton(), Qt::LeftButton);
    QCOMPARE(chat->msgInput()->text(), u"hello"_s);
    chat->service.hold(requests::sendMessage);
    QTRY_VERIFY(!isBusy());
    QVERIFY(chat->sendButton()->isEnabled() && chat->msgInput()->hasFocus());
    QCOMPARE(chat->msgInput()->text(), u"hello"_s);
    QTRY_COMPARE(chat->service.heldCount(requests::sendMessage), 1);
    chat->service.release(requests::sendMessage);
    QTRY_COMPARE(chat->msgInput()->text(), QString());
    QCOMPARE(chat->service.count(requests::keysOfBob), 1); // asked for with Return, and not since
}

void TestSendSlices::focusThatWentElsewhereStaysThere()
{
    handKeys(devices(many));
    QVERIFY(isBusy());
    QTest::mouseClick(chat->sideSearch(), Qt::LeftButton);
    QTRY_VERIFY(!isBusy());
    QVERIFY(chat->sideSearch()->hasFocus());
    QVERIFY(chat->service.waitForRequests(requests::sendMessage, 1));
}

void TestSendSlices::badKeyAmongManyIsReported()
{
    QJsonArray keys = devices(many);
    keys.replace(many - 2, QJsonObject{{u"deviceId"_s, u"X"_s}, {u"publicKeyBase64"_s, u"!!!!"_s}});
    handKeys(keys);
    QVERIFY(isBusy());
    QMessageBox *box = waitForBox();
    QVERIFY(box);
    QCOMPARE(box->text(),
             u"Encryption failed: Could not decode public key for device 'X': Invalid base64 data."_s);
    QVERIFY(!isBusy());
    box->accept();
    QVERIFY(chat->settle());
    QCOMPARE(chat->service.count(requests::sendMessage), 0);
    QCOMPARE(chat->msgInput()->text(), u"hello"_s);
}

void TestSendSlices::givingUpSendsNothing_data()
{
    using Step = std::function<void(ChatWindow &)>;
    QTest::addColumn<Step>("step");
    QTest::newRow("another conversation") << Step([](ChatWindow &shown) {
        const QJsonArray carol{QJsonObject{{u"peer"_s, u"carol"_s}}};
        QMetaObject::invokeMethod(&shown.window, "onConversationsLoaded", Q_ARG(QJsonArray, carol));
        shown.click(shown.dmList(), 0);
    });
    QTest::newRow("log-out") << Step([](ChatWindow &shown) { shown.window.logOut(); });
    QTest::newRow("closing") << Step([](ChatWindow &shown) { shown.window.close(); });
}

void TestSendSlices::givingUpSendsNothing()
{
    QFETCH(const std::function<void(ChatWindow &)>, step);
    handKeys(devices(many));
    QVERIFY(isBusy());
    step(*chat);
    QVERIFY(chat->msgInput()->isEnabled() && chat->sendButton()->isEnabled());
    QVERIFY(chat->settle());
    QCOMPARE(chat->service.count(requests::sendMessage), 0);
}

void TestSendSlices::theSameConversationGoesOn()
{
    handKeys(devices(many));
    QVERIFY(isBusy());
    chat->click(chat->dmList(), 0);
    QVERIFY(isBusy());
    QVERIFY(chat->service.waitForRequests(requests::sendMessage, 1));
}

void TestSendSlices::destroyedWindowSendsNothing()
{
    handKeys(devices(many));
    QVERIFY(isBusy());
    chat.reset();
    QCoreApplication::processEvents();
}

TIDELOFT_GUI_TEST_MAIN(TestSendSlices)
#include "tst_send_slices.moc"
