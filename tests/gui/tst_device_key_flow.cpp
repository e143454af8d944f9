// What the profile's arrival sets off: the name, the registration of this device, and the main page.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/key_store.h"
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QGraphicsEffect>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>

using namespace Qt::StringLiterals;
using namespace tideloft;
using namespace tideloft::tests;

class TestDeviceKeyFlow : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void names_data();
    void names();
    void requestsInTheirOrder();
    void registersTheStoredPublicKey();
    void registersAtEverySignIn();
    void nothingWaitsForTheRegistration();
    void fadesTheMainPageIn();
    void repeatedSignInClosesTheConversation();
    void failedRegistrationIsOnlyLogged_data();
    void failedRegistrationIsOnlyLogged();
    void ownDeviceKeysGoIntoAMessage_data();
    void ownDeviceKeysGoIntoAMessage();
    void ownDeviceKeysStayAfterAFailure();

private:
    static QByteArray keysReply(const QString &device);
    /// Sends a message to bob, who has this device's key; the identifiers of the senders' wrapped keys.
    static QStringList sendersOfAMessage(GuiProbe &probe);
};

void TestDeviceKeyFlow::init()
{
    failOnToolkitWarnings();
    placeKeyPair();
}

void TestDeviceKeyFlow::names_data()
{
    QTest::addColumn<QByteArray>("me");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("avatar");
    QTest::newRow("blanks and a capital") << QByteArray(R"({"username":" Alice "})") << u"alice"_s << u"AL"_s;
    QTest::newRow("one letter") << QByteArray(R"({"username":"b"})") << u"b"_s << u"B"_s;
    QTest::newRow("two letters") << QByteArray(R"({"username":"Bo"})") << u"bo"_s << u"BO"_s;
    QTest::newRow("no name") << QByteArray("{}") << QString() << QString();
    QTest::newRow("name that is no text") << QByteArray(R"({"username":7})") << QString() << QString();
    QTest::newRow("markup stays text")
        << QByteArray(R"({"username":"<b>x</b>"})") << u"<b>x</b>"_s << u"<B"_s;
    QTest::newRow("letters beyond ASCII")
        << QByteArray("{\"username\":\"\xC3\x85sa\"}") << u"åsa"_s << u"ÅS"_s;
}

void TestDeviceKeyFlow::names()
{
    QFETCH(QByteArray, me);
    GuiProbe probe;
    probe.service.answer("GET /api/me", 200, me);
    QVERIFY(probe.signIn());
    QTEST(probe.the<QLabel>(u"myName"_s)->text(), "name");
    QTEST(probe.the<QLabel>(u"footerAvatar"_s)->text(), "avatar");
}

void TestDeviceKeyFlow::requestsInTheirOrder()
{
    GuiProbe probe;
    // With five of the six connections taken, the window's requests have to go one after the other.
    probe.service.hold("GET /api/users/search");
    for (const QString &query : {u"ab"_s, u"abc"_s, u"abcd"_s, u"abcde"_s, u"abcdef"_s})
        probe.the<QLineEdit>(u"sideSearch"_s)->setText(query);
    QVERIFY(probe.service.waitForRequests("GET /api/users/search", 5));
    probe.service.clear();
    QVERIFY(probe.signIn());
    QVERIFY(probe.service.waitForRequests("POST /api/chat/device-key", 1));
    QStringList order;
    for (const RecordedRequest &request : probe.service.requests()) {
        if (request.method == "GET") // the toolkit takes one more turn for a request with a body
            order.append(QString::fromLatin1(request.target));
    }
    QCOMPARE(order, (QStringList{u"/api/me"_s, u"/api/chat/device-keys/me"_s, u"/api/chat/conversations"_s,
                                 u"/api/groups"_s}));
    QCOMPARE(probe.service.requests().first().target, QByteArray("/api/auth/login"));
    QCOMPARE(probe.service.requests().size(), 6);
}

void TestDeviceKeyFlow::registersTheStoredPublicKey()
{
    QFile file(crypto::publicKeyPath());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString stored = QString::fromLatin1(file.readAll());
    QVERIFY(!stored.isEmpty());
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.service.waitForRequests("POST /api/chat/device-key", 1));
    const RecordedRequest request = probe.service.lastRequest("POST /api/chat/device-key");
    const QJsonDocument sent = QJsonDocument::fromJson(request.body);
    QCOMPARE(sent[u"publicKey"], QJsonValue(stored));
    QCOMPARE(sent[u"deviceId"], QJsonValue(QString::fromLatin1(request.header("X-Device-Token"))));
}

void TestDeviceKeyFlow::registersAtEverySignIn()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.service.waitForRequests("POST /api/chat/device-key", 1));
    const QByteArray first = probe.service.lastRequest("POST /api/chat/device-key").body;
    probe.window->logOut();
    QVERIFY(probe.signIn());
    QVERIFY(probe.service.waitForRequests("POST /api/chat/device-key", 2));
    QCOMPARE(probe.service.lastRequest("POST /api/chat/device-key").body, first);
}

void TestDeviceKeyFlow::nothingWaitsForTheRegistration()
{
    GuiProbe probe;
    probe.service.hold("POST /api/chat/device-key");
    QVERIFY(probe.signIn());
    QCOMPARE(probe.service.count("GET /api/chat/device-keys/me"), 1);
    QVERIFY(probe.refreshTimer()->isActive());
    QVERIFY(probe.service.waitForRequests("POST /api/chat/device-key", 1));
    QCOMPARE(probe.service.heldCount("POST /api/chat/device-key"), 1);
    probe.service.release("POST /api/chat/device-key");
    QVERIFY(probe.settle());
    QVERIFY(!probe.window->findChild<QMessageBox *>());
}

void TestDeviceKeyFlow::fadesTheMainPageIn()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.page()->graphicsEffect());
    QVERIFY(probe.page()->findChild<QWidget *>(u"rail"_s));
}

void TestDeviceKeyFlow::repeatedSignInClosesTheConversation()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.open(u"bob"_s));
    QVERIFY(callSlot(*probe.window, "onLoginSucceeded", Q_ARG(QString, u"alice"_s)));
    QTRY_COMPARE(probe.centerPage(), u"emptyState"_s);
    QVERIFY(probe.settle());
    const qsizetype before = probe.service.count("GET /api/chat/history/bob");
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count("GET /api/chat/history/bob"), before); // no conversation is open
    probe.click(u"railBtn=💬"_s);
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
}

void TestDeviceKeyFlow::failedRegistrationIsOnlyLogged_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("logged");
    QTest::newRow("message of the service") << 400 << QByteArray(R"({"message":"Key refused"})")
                                            << u"Device key registration failed: Key refused"_s;
    QTest::newRow("quotes stay as they are") << 400 << QByteArray(R"({"message":"Bad \"key\""})")
                                             << u"Device key registration failed: Bad \"key\""_s;
    QTest::newRow("nothing commands a terminal") << 400 << QByteArray(R"({"message":"a\u001b[2Jb\nc"})")
                                                 << u"Device key registration failed: a [2Jb c"_s;
    QTest::newRow("no known field") << 500 << QByteArray("{}")
                                    << u"Device key registration failed: Unknown error"_s;
}

void TestDeviceKeyFlow::failedRegistrationIsOnlyLogged()
{
    QFETCH(int, status);
    QFETCH(QByteArray, body);
    QFETCH(QString, logged);
    GuiProbe probe;
    probe.service.answer("POST /api/chat/device-key", status, body);
    QTest::ignoreMessage(QtWarningMsg, qPrintable(logged));
    QTest::failOnWarning(QRegularExpression(u"."_s));
    QVERIFY(probe.signIn());
    QVERIFY(probe.service.waitForRequests("POST /api/chat/device-key", 1));
    QVERIFY(probe.settle());
    QVERIFY(probe.onMainPage());
    QCOMPARE(probe.service.count("POST /api/chat/device-key"), 1);
    QVERIFY(!probe.window->findChild<QMessageBox *>());
    QCOMPARE(probe.the<QLabel>(u"myStatus"_s)->text(), u"● Online"_s);
}

QByteArray TestDeviceKeyFlow::keysReply(const QString &device)
{
    const QJsonObject key{{u"deviceId"_s, device}, {u"publicKeyBase64"_s, crypto::readPublicKeyFile()}};
    return QJsonDocument(QJsonObject{{u"keys"_s, QJsonArray{42, key}}}).toJson();
}

QStringList TestDeviceKeyFlow::sendersOfAMessage(GuiProbe &probe)
{
    probe.service.answer("GET /api/chat/public-key/bob", 200, keysReply(u"bobs"_s));
    probe.service.answer("POST /api/chat/send", 200, "{}");
    const qsizetype before = probe.service.count("POST /api/chat/send");
    QTest::keyClicks(probe.the<QLineEdit>(u"msgInput"_s), u"Hello"_s);
    QTest::keyClick(probe.the<QLineEdit>(u"msgInput"_s), Qt::Key_Return);
    if (!probe.service.waitForRequests("POST /api/chat/send", before + 1))
        return {u"nothing was sent"_s};
    const auto sent = QJsonDocument::fromJson(probe.service.lastRequest("POST /api/chat/send").body);
    QStringList devices;
    const QJsonArray keys = sent[u"senderKeys"].toArray();
    for (const QJsonValue &key : keys)
        devices.append(key[u"deviceId"].toString());
    return devices;
}

void TestDeviceKeyFlow::ownDeviceKeysGoIntoAMessage_data()
{
    QTest::addColumn<bool>("known");
    QTest::newRow("this device is in the list") << true;
    QTest::newRow("the list came back without it") << false;
}

void TestDeviceKeyFlow::ownDeviceKeysGoIntoAMessage()
{
    QFETCH(bool, known);
    GuiProbe probe;
    QVERIFY(probe.settle());
    const QString own = QString::fromLatin1(probe.service.lastRequest().header("X-Device-Token"));
    probe.service.answer("GET /api/chat/device-keys/me", 200, keysReply(known ? own : u"another"_s));
    QVERIFY(probe.signIn());
    QVERIFY(probe.open(u"bob"_s));
    QCOMPARE(sendersOfAMessage(probe), known ? QStringList{own} : QStringList());
}

void TestDeviceKeyFlow::ownDeviceKeysStayAfterAFailure()
{
    GuiProbe probe;
    QVERIFY(probe.settle());
    const QString own = QString::fromLatin1(probe.service.lastRequest().header("X-Device-Token"));
    probe.service.answer("GET /api/chat/device-keys/me", 200, keysReply(own));
    QVERIFY(probe.signIn());
    QVERIFY(probe.settle());
    probe.window->logOut();
    probe.service.answer("GET /api/chat/device-keys/me", 500, R"({"message":"Out of order"})");
    QVERIFY(probe.signIn());
    QVERIFY(probe.open(u"bob"_s));
    QCOMPARE(sendersOfAMessage(probe), QStringList{own});
    QVERIFY(!probe.window->findChild<QMessageBox *>());
}

TIDELOFT_GUI_TEST_MAIN(TestDeviceKeyFlow)
#include "tst_device_key_flow.moc"
