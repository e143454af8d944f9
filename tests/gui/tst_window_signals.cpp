// The client's signals, set off by real replies: what the window makes of each of them, and of those that it
// does not listen to.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/key_store.h"
#include "tests/support/gui_probe.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestWindowSignals : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void loginSucceededAsksForTheProfile();
    void loginFailedShowsTheError();
    void registerSucceededSignsIn();
    void registerFailedShowsTheError();
    void meLoadedOpensTheMainPage();
    void meFailedShowsTheError();
    void searchLoadedFillsTheResults();
    void searchFailedChangesNothing();
    void conversationsLoadedFillsTheList();
    void conversationsFailedKeepsTheList();
    void deviceKeyRegisteredChangesNothingForAKnownDevice();
    void userPublicKeysLoadedSends();
    void userPublicKeysFailedWarns();
    void messageSentClearsTheFieldAndAsksForTheHistory();
    void messageSendFailedWarns();
    void serverIconUploadedAsksForTheServers();
    void unconnectedFailuresShowNothing_data();
    void unconnectedFailuresShowNothing();

private:
    static QString warningOf(const GuiProbe &probe);
    /// Signs in and has a message to bob on its way; KEYS is what the service says of his devices.
    static bool writeToBob(GuiProbe &probe, int status, const QByteArray &keys);
    static QByteArray bobsKeys();
};

QString TestWindowSignals::warningOf(const GuiProbe &probe)
{
    const auto *box = probe.window->findChild<QMessageBox *>();
    return box ? box->windowTitle() + u": "_s + box->text() : QString();
}

QByteArray TestWindowSignals::bobsKeys()
{
    const QJsonObject key{{u"deviceId"_s, u"bobs"_s},
                          {u"publicKey"_s, tideloft::crypto::readPublicKeyFile()}};
    return QJsonDocument(QJsonObject{{u"keys"_s, QJsonArray{key}}}).toJson();
}

bool TestWindowSignals::writeToBob(GuiProbe &probe, int status, const QByteArray &keys)
{
    probe.service.answer("GET /api/chat/public-key/bob", status, keys);
    if (!probe.signIn() || !probe.open(u"bob"_s))
        return false;
    probe.refreshTimer()->stop();
    QTest::keyClicks(probe.the<QLineEdit>(u"msgInput"_s), u"Hello"_s);
    QTest::keyClick(probe.the<QLineEdit>(u"msgInput"_s), Qt::Key_Return);
    return true;
}

void TestWindowSignals::loginSucceededAsksForTheProfile()
{
    GuiProbe probe;
    probe.service.hold("GET /api/me");
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    QVERIFY(probe.service.waitForRequests("GET /api/me", 1));
    QCOMPARE(probe.service.requests().size(), 2);
}

void TestWindowSignals::loginFailedShowsTheError()
{
    GuiProbe probe;
    probe.service.answer("POST /api/auth/login", 401, R"({"message":"Wrong password"})");
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    QTRY_COMPARE(probe.errorText(), u"Wrong password"_s);
}

void TestWindowSignals::registerSucceededSignsIn()
{
    GuiProbe probe;
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"ghostButton"_s);
    QVERIFY(probe.service.waitForRequests("POST /api/auth/login", 1));
}

void TestWindowSignals::registerFailedShowsTheError()
{
    GuiProbe probe;
    probe.service.answer("POST /api/auth/register", 409, R"({"message":"Name taken"})");
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"ghostButton"_s);
    QTRY_COMPARE(probe.errorText(), u"Name taken"_s);
}

void TestWindowSignals::meLoadedOpensTheMainPage()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.onMainPage());
}

void TestWindowSignals::meFailedShowsTheError()
{
    GuiProbe probe;
    probe.service.answer("GET /api/me", 500, R"({"message":"No profile"})");
    probe.fillIn(u"alice"_s, u"secret"_s);
    probe.click(u"primaryButton"_s);
    QTRY_COMPARE(probe.errorText(), u"No profile"_s);
}

void TestWindowSignals::searchLoadedFillsTheResults()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    probe.service.answer("GET /api/users/search", 200, R"([{"username":"bobby"}])");
    QTest::keyClicks(probe.the<QLineEdit>(u"sideSearch"_s), u"bo"_s);
    const auto *results = probe.the<QListWidget>(u"searchResults"_s);
    QTRY_VERIFY(results->isVisible());
    QCOMPARE(results->item(0)->text(), u"👤  bobby"_s);
}

void TestWindowSignals::searchFailedChangesNothing()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    probe.service.answerOnce("GET /api/users/search", 200, R"([{"username":"bobby"}])");
    probe.service.answer("GET /api/users/search", 500, R"({"message":"Out of order"})");
    QTest::keyClicks(probe.the<QLineEdit>(u"sideSearch"_s), u"bo"_s);
    const auto *results = probe.the<QListWidget>(u"searchResults"_s);
    QTRY_VERIFY(results->isVisible());
    QTest::keyClicks(probe.the<QLineEdit>(u"sideSearch"_s), u"b"_s);
    QVERIFY(probe.service.waitForRequests("GET /api/users/search", 2));
    QVERIFY(probe.settle());
    QCOMPARE(results->count(), 1);
    QVERIFY(results->isVisible());
    QCOMPARE(warningOf(probe), QString());
}

void TestWindowSignals::conversationsLoadedFillsTheList()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.listPeers({u"bob"_s, u"carol"_s}));
}

void TestWindowSignals::conversationsFailedKeepsTheList()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(probe.listPeers({u"bob"_s}));
    const QListWidgetItem *entry = probe.the<QListWidget>(u"dmList"_s)->item(0);
    probe.refreshTimer()->stop();
    probe.service.answer("GET /api/chat/conversations", 500, R"({"message":"Out of order"})");
    const qsizetype before = probe.service.count("GET /api/chat/conversations");
    QVERIFY(callSlot(*probe.window, "refreshData"));
    QVERIFY(probe.service.waitForRequests("GET /api/chat/conversations", before + 1));
    // A search that comes back later shows that the failure has been dealt with.
    probe.service.answer("GET /api/users/search", 200, R"([{"username":"bobby"}])");
    QTest::keyClicks(probe.the<QLineEdit>(u"sideSearch"_s), u"bo"_s);
    QTRY_VERIFY(probe.the<QListWidget>(u"searchResults"_s)->isVisible());
    QCOMPARE(probe.the<QListWidget>(u"dmList"_s)->item(0), entry);
    QCOMPARE(warningOf(probe), QString());
}

void TestWindowSignals::deviceKeyRegisteredChangesNothingForAKnownDevice()
{
    const tideloft::net::ApiClient client; // has the same identifier as every client of this computer
    const QByteArray known = R"({"keys":[{"deviceId":"%1"}]})";
    GuiProbe probe;
    probe.service.answer("GET /api/chat/device-keys/me", 200,
                         QString::fromUtf8(known).arg(client.deviceId()).toUtf8());
    probe.service.hold("POST /api/chat/device-key");
    QVERIFY(probe.signIn());
    probe.refreshTimer()->stop();
    QVERIFY(probe.service.waitForRequests("POST /api/chat/device-key", 1));
    QVERIFY(probe.settle());
    probe.service.clear();
    probe.service.release("POST /api/chat/device-key");
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.requests().size(), 1);
    QCOMPARE(warningOf(probe), QString());
}

void TestWindowSignals::userPublicKeysLoadedSends()
{
    GuiProbe probe;
    QVERIFY(writeToBob(probe, 200, bobsKeys()));
    QVERIFY(probe.service.waitForRequests("POST /api/chat/send", 1));
}

void TestWindowSignals::userPublicKeysFailedWarns()
{
    GuiProbe probe;
    QVERIFY(writeToBob(probe, 404, R"({"message":"Unknown user"})"));
    QTRY_COMPARE(warningOf(probe), u"TideLoft: Unknown user"_s);
    QCOMPARE(probe.the<QLineEdit>(u"msgInput"_s)->text(), u"Hello"_s);
}

void TestWindowSignals::messageSentClearsTheFieldAndAsksForTheHistory()
{
    GuiProbe probe;
    probe.service.answer("POST /api/chat/send", 200, "{}");
    probe.service.hold("POST /api/chat/send");
    QVERIFY(writeToBob(probe, 200, bobsKeys()));
    QVERIFY(probe.service.waitForRequests("POST /api/chat/send", 1));
    QCOMPARE(probe.the<QLineEdit>(u"msgInput"_s)->text(), u"Hello"_s);
    const qsizetype before = probe.service.count("GET /api/chat/history/bob");
    probe.service.release("POST /api/chat/send");
    QTRY_COMPARE(probe.the<QLineEdit>(u"msgInput"_s)->text(), QString());
    QVERIFY(probe.service.waitForRequests("GET /api/chat/history/bob", before + 1));
}

void TestWindowSignals::messageSendFailedWarns()
{
    GuiProbe probe;
    probe.service.answer("POST /api/chat/send", 413, R"({"message":"Too long"})");
    QVERIFY(writeToBob(probe, 200, bobsKeys()));
    QTRY_COMPARE(warningOf(probe), u"TideLoft: Too long"_s);
}

void TestWindowSignals::serverIconUploadedAsksForTheServers()
{
    GuiProbe probe;
    QVERIFY(callSlot(*probe.window, "onServerIconUploaded", Q_ARG(QString, u"7"_s), Q_ARG(QString, u"/i"_s)));
    QVERIFY(probe.service.waitForRequests("GET /api/groups", 1));
}

void TestWindowSignals::unconnectedFailuresShowNothing_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("myDeviceKeysFailed") << QByteArray("GET /api/chat/device-keys/me");
    QTest::newRow("serversFailed") << QByteArray("GET /api/groups");
}

void TestWindowSignals::unconnectedFailuresShowNothing()
{
    QFETCH(QByteArray, request);
    GuiProbe probe;
    probe.service.answer(request, 500, R"({"message":"Out of order"})");
    probe.service.hold("POST /api/chat/device-key"); // its reply would ask for the list once more
    QTest::failOnWarning(QRegularExpression(u"."_s));
    QVERIFY(probe.signIn());
    QVERIFY(probe.settle());
    QVERIFY(probe.onMainPage());
    QCOMPARE(warningOf(probe), QString());
    QCOMPARE(probe.errorText(), u"(hidden)"_s);
    QCOMPARE(probe.the<QLabel>(u"myStatus"_s)->text(), u"● Online"_s);
    QCOMPARE(probe.service.count(request), 1);
}

TIDELOFT_GUI_TEST_MAIN(TestWindowSignals)
#include "tst_window_signals.moc"
