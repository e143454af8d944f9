// Replies that an earlier user asked for and that come when another one is signed in: nobody sees them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "crypto/keys/key_store.h"
#include "tests/gui/tst_pending_timers.h"
#include "tests/gui/tst_rail_probe.h"
#include "tests/support/patience.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

const QByteArray deviceList = QByteArrayLiteral("GET /api/chat/device-keys/me");

/// Signs in as NAME after whoever is signed in now, and waits until the main page is that of NAME.
bool signInAs(GuiProbe &probe, const QString &name)
{
    probe.window->logOut();
    probe.service.answer("GET /api/me", 200, R"({"username":")" + name.toUtf8() + R"("})");
    probe.fillIn(name, u"secret"_s);
    probe.click(u"primaryButton"_s);
    return waitFor([&] { return probe.onMainPage() && probe.the<QLabel>(u"myName"_s)->text() == name; },
                   patience());
}

/// Bob's devices: one, with the key that the test's window has itself.
QByteArray devicesOfBob()
{
    const QJsonObject key{{u"deviceId"_s, u"laptop"_s},
                          {u"publicKeyBase64"_s, tideloft::crypto::readPublicKeyFile()}};
    return QJsonDocument(QJsonObject{{u"keys"_s, QJsonArray{key}}}).toJson();
}

/// Types a message to bob and waits until it is on its way, where it is held.
bool sendAndHold(GuiProbe &probe)
{
    probe.service.answer("GET /api/chat/public-key/bob", 200, devicesOfBob());
    probe.service.hold(requests::sendMessage);
    if (!probe.open(u"bob"_s))
        return false;
    QTest::keyClicks(probe.the<QLineEdit>(u"msgInput"_s), u"from alice"_s);
    QTest::keyClick(probe.the<QLineEdit>(u"msgInput"_s), Qt::Key_Return);
    return waitFor([&] { return probe.service.heldCount(requests::sendMessage) == 1; }, patience());
}

} // namespace

class TestLateReplies : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init() { failOnToolkitWarnings(); }
    void serversOfAnEarlierUserAreNotShown();
    void aMessageOfAnEarlierUserLeavesTheLineAlone_data();
    void aMessageOfAnEarlierUserLeavesTheLineAlone();
    void aRegistrationOfAnEarlierUserDoesNotCount();
    void aServerOfAnEarlierUserDoesNotOpen();
    void theSameUserStillGetsThem();
};

void TestLateReplies::serversOfAnEarlierUserAreNotShown()
{
    GuiProbe probe;
    probe.service.answer(requests::listServers, 200, R"([{"groupId":"g1","name":"Alice's"}])");
    probe.service.hold(requests::listServers);
    QVERIFY(probe.signIn());
    QTRY_COMPARE(probe.service.heldCount(requests::listServers), 1);
    QVERIFY(signInAs(probe, u"bob"_s));
    QTRY_COMPARE(probe.service.heldCount(requests::listServers), 2);
    probe.service.releaseAt(requests::listServers, 0); // alice's
    QVERIFY(probe.settle());
    QVERIFY(probe.settle());
    QCOMPARE(serverButtons(probe).size(), 0);
    probe.service.answer(requests::listServers, 200,
                         R"([{"groupId":"g1","name":"B"},{"groupId":"g2","name":"C"}])");
    probe.service.release(requests::listServers);
    QTRY_COMPARE(serverButtons(probe).size(), 2);
}

void TestLateReplies::aMessageOfAnEarlierUserLeavesTheLineAlone_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("sent") << 200;
    QTest::newRow("refused") << 400;
}

void TestLateReplies::aMessageOfAnEarlierUserLeavesTheLineAlone()
{
    QFETCH(int, status);
    GuiProbe probe;
    probe.service.answer(requests::sendMessage, status, R"({"message":"Not today"})");
    QVERIFY(probe.signIn());
    QVERIFY(sendAndHold(probe));
    QVERIFY(signInAs(probe, u"carol"_s));
    QVERIFY(probe.open(u"bob"_s));
    QTest::keyClicks(probe.the<QLineEdit>(u"msgInput"_s), u"from carol"_s);
    probe.service.release(requests::sendMessage);
    QVERIFY(probe.settle());
    QVERIFY(probe.settle());
    QCOMPARE(probe.the<QLineEdit>(u"msgInput"_s)->text(), u"from carol"_s);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestLateReplies::aRegistrationOfAnEarlierUserDoesNotCount()
{
    GuiProbe probe;
    probe.service.hold(requests::registerDevice);
    QVERIFY(probe.signIn());
    QTRY_COMPARE(probe.service.heldCount(requests::registerDevice), 1);
    probe.service.clear();
    QVERIFY(signInAs(probe, u"bob"_s));
    QTRY_COMPARE(probe.service.heldCount(requests::registerDevice), 2);
    QVERIFY(probe.settle());
    probe.service.releaseAt(requests::registerDevice, 0); // alice's succeeds, but bob's fails
    probe.service.answer(requests::registerDevice, 400, R"({"message":"Full"})");
    QTest::ignoreMessage(QtWarningMsg, "Device key registration failed: Full");
    probe.service.release(requests::registerDevice);
    QVERIFY(probe.settle());
    QVERIFY(probe.settle());
    QCOMPARE(probe.service.count(deviceList), 1);
}

void TestLateReplies::aServerOfAnEarlierUserDoesNotOpen()
{
    GuiProbe probe;
    QVERIFY(probe.signIn());
    QVERIFY(callSlot(*probe.window, "onServerCreated", Q_ARG(QJsonObject, server(u"g9"_s, u"Alice's"_s))));
    QVERIFY(signInAs(probe, u"bob"_s));
    QTRY_COMPARE(pendingIntervals(), QList<int>());
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
}

void TestLateReplies::theSameUserStillGetsThem()
{
    GuiProbe probe;
    probe.service.answer(requests::listServers, 200, R"([{"groupId":"g1","name":"One"}])");
    probe.service.hold(requests::listServers);
    QVERIFY(probe.signIn());
    QTRY_COMPARE(probe.service.heldCount(requests::listServers), 1);
    QVERIFY(signInAs(probe, u"alice"_s));
    probe.service.releaseAt(requests::listServers, 0);
    QTRY_COMPARE(serverButtons(probe).size(), 1);
    probe.service.release(requests::listServers);
}

TIDELOFT_GUI_TEST_MAIN(TestLateReplies)
#include "tst_late_replies.moc"
