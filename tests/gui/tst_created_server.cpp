// What follows the creation of a server: the list, the opening half a second later, and failures.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/gui/tst_create_dialog_probe.h"
#include "tests/gui/tst_pending_timers.h"
#include "tests/gui/tst_rail_probe.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

class TestCreatedServer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { placeKeyPair(); }
    void init();
    void opensWithTheRefreshedList();
    void opensBeforeTheListArrives();
    void waitsHalfASecond();
    void withoutAnIdentifierOnlyListsAgain_data();
    void withoutAnIdentifierOnlyListsAgain();
    void opensOverAnotherServer();
    void opensOverAConversation();
    void twoInARowOpenTheSecond();
    void leavesTheSignInPageAlone();
    void endsWithTheWindow();
    void failureShowsNothing_data();
    void failureShowsNothing();
};

namespace
{

QString titleOf(const GuiProbe &probe)
{
    return probe.the<QLabel>(u"centerTitle"_s)->text();
}

/// The service knows the new server from its creation on.
void answerCreation(SettingsProbe &probe)
{
    probe.service.answer(requests::createServer, 201, R"({"groupId":"g9","name":"My Club"})");
    probe.service.answer(requests::listServers, 200,
                         R"([{"groupId":"g1","name":"One"},{"groupId":"g9","name":"My Club"}])");
}

} // namespace

void TestCreatedServer::init()
{
    failOnToolkitWarnings();
    QTRY_COMPARE(pendingIntervals(), QList<int>()); // of a window before that a test gave up
}

void TestCreatedServer::opensWithTheRefreshedList()
{
    SettingsProbe probe;
    answerCreation(probe);
    const qsizetype before = probe.service.count(requests::listServers);
    QVERIFY(createServer(probe, u"My Club"_s));
    QVERIFY(probe.service.waitForRequests(requests::listServers, before + 1));
    QTRY_COMPARE(titleOf(probe), u"My Club"_s);
    QCOMPARE(probe.centerPage(), u"chatPage"_s);
    QCOMPARE(probe.the<QLabel>(u"centerSubtitle"_s)->text(), u"Server"_s);
    QCOMPARE(serverChecks(probe), (QList<bool>{false, true}));
    QCOMPARE(probe.service.count(requests::listServers), before + 1); // opening asks for nothing
}

void TestCreatedServer::opensBeforeTheListArrives()
{
    SettingsProbe probe;
    answerCreation(probe);
    probe.service.hold(requests::listServers);
    QVERIFY(createServer(probe, u"My Club"_s));
    QTRY_COMPARE(titleOf(probe), u"g9"_s);
    QCOMPARE(probe.the<QLabel>(u"peerAvatar"_s)->text(), QString());
    QCOMPARE(probe.centerPage(), u"chatPage"_s);
    QVERIFY(serverButtons(probe).isEmpty());
    probe.service.release(requests::listServers); // the list marks it, but the header stays as it was opened
    QTRY_COMPARE(serverChecks(probe), (QList<bool>{false, true}));
    QCOMPARE(titleOf(probe), u"g9"_s);
}

void TestCreatedServer::waitsHalfASecond()
{
    const SettingsProbe probe;
    QCOMPARE(pendingIntervals(), QList<int>());
    QVERIFY(callSlot(*probe.window, "onServerCreated", Q_ARG(QJsonObject, server(u"g9"_s, u"My Club"_s))));
    QCOMPARE(pendingIntervals(), QList<int>{500});
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
    QTRY_COMPARE(titleOf(probe), u"g9"_s);
    QCOMPARE(pendingIntervals(), QList<int>()); // once
}

void TestCreatedServer::withoutAnIdentifierOnlyListsAgain_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("no identifier") << QByteArray(R"({"name":"My Club"})");
    QTest::newRow("an empty one") << QByteArray(R"({"groupId":"","name":"My Club"})");
    QTest::newRow("a number") << QByteArray(R"({"groupId":9})");
    QTest::newRow("an array") << QByteArray(R"([{"groupId":"g9"}])");
    QTest::newRow("no JSON") << QByteArray("Created");
}

void TestCreatedServer::withoutAnIdentifierOnlyListsAgain()
{
    QFETCH(QByteArray, reply);
    SettingsProbe probe;
    answerCreation(probe);
    probe.service.answer(requests::createServer, 200, reply);
    QVERIFY(createServer(probe, u"My Club"_s));
    QTRY_COMPARE(serverButtons(probe).size(), 2);
    QCOMPARE(pendingIntervals(), QList<int>()); // nothing is going to be opened
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
    QCOMPARE(serverChecks(probe), (QList<bool>{false, false}));
}

// Whatever the person opens meanwhile, the new server comes to the front when its time has come.
void TestCreatedServer::opensOverAnotherServer()
{
    SettingsProbe probe;
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    answerCreation(probe);
    QVERIFY(callSlot(*probe.window, "onServerCreated", Q_ARG(QJsonObject, server(u"g9"_s, u"My Club"_s))));
    serverButtons(probe).constFirst()->click(); // and no event meanwhile: half a second is soon over
    QCOMPARE(titleOf(probe), u"One"_s);
    QTRY_COMPARE(serverChecks(probe), (QList<bool>{false, true}));
    QCOMPARE(probe.centerPage(), u"chatPage"_s);
}

void TestCreatedServer::opensOverAConversation()
{
    SettingsProbe probe;
    QVERIFY(probe.open(u"bob"_s));
    QVERIFY(callSlot(*probe.window, "onServerCreated", Q_ARG(QJsonObject, server(u"g9"_s, u"My Club"_s))));
    QCOMPARE(titleOf(probe), u"bob"_s);
    QTRY_COMPARE(titleOf(probe), u"g9"_s);
    QCOMPARE(probe.the<QListWidget>(u"messageList"_s)->count(), 1); // the notice
}

void TestCreatedServer::twoInARowOpenTheSecond()
{
    const SettingsProbe probe;
    QVERIFY(callSlot(*probe.window, "onServerCreated", Q_ARG(QJsonObject, server(u"g8"_s, u"First"_s))));
    QVERIFY(callSlot(*probe.window, "onServerCreated", Q_ARG(QJsonObject, server(u"g9"_s, u"Second"_s))));
    QCOMPARE(pendingIntervals(), (QList<int>{500, 500}));
    QTRY_COMPARE(pendingIntervals(), QList<int>());
    QCOMPARE(titleOf(probe), u"g9"_s);
}

// Logging out leaves the main page as it is, and what comes late only changes that page.
void TestCreatedServer::leavesTheSignInPageAlone()
{
    SettingsProbe probe;
    answerCreation(probe);
    QVERIFY(callSlot(*probe.window, "onServerCreated", Q_ARG(QJsonObject, server(u"g9"_s, u"My Club"_s))));
    QVERIFY(takeFromUserMenu(probe, 3)); // "Log out"
    QVERIFY(!probe.onMainPage());
    QTRY_COMPARE(pendingIntervals(), QList<int>());
    QVERIFY(titleOf(probe) == u"My Club"_s || titleOf(probe) == u"g9"_s);
    QVERIFY(!probe.onMainPage());
    QVERIFY(probe.username()->hasFocus());
}

void TestCreatedServer::endsWithTheWindow()
{
    SettingsProbe probe;
    QVERIFY(callSlot(*probe.window, "onServerCreated", Q_ARG(QJsonObject, server(u"g9"_s, u"My Club"_s))));
    QCOMPARE(pendingIntervals(), QList<int>{500});
    QTest::failOnWarning(QRegularExpression(u"."_s));
    probe.window.reset();
    QTRY_COMPARE(pendingIntervals(), QList<int>());
}

void TestCreatedServer::failureShowsNothing_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("refused") << 400 << QByteArray(R"({"message":"Name taken"})");
    QTest::newRow("out of order") << 500 << QByteArray("Internal error");
}

void TestCreatedServer::failureShowsNothing()
{
    QFETCH(int, status);
    QFETCH(QByteArray, body);
    SettingsProbe probe;
    QVERIFY(listServers(probe, {server(u"g1"_s, u"One"_s)}));
    probe.service.answer(requests::createServer, status, body);
    const QPointer<QAbstractButton> button = serverButtons(probe).constFirst();
    const qsizetype before = probe.service.count(requests::listServers);
    QVERIFY(createServer(probe, u"My Club"_s));
    QVERIFY(probe.service.waitForRequests(requests::createServer, 1));
    QVERIFY(probe.settle());
    QVERIFY(probe.settle()); // over whichever connection, the failure has come by now
    QCOMPARE(probe.service.count(requests::listServers), before);
    QCOMPARE(pendingIntervals(), QList<int>());
    QVERIFY(button); // the rail stays as it was
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(probe.centerPage(), u"emptyState"_s);
}

TIDELOFT_GUI_TEST_MAIN(TestCreatedServer)
#include "tst_created_server.moc"
