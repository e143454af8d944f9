// What the client keeps of replies to read the next ones faster, and that it is gone after the log-out.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/memory_scan.h"
#include "tests/support/net/wire.h"
#include "tests/support/test_main.h"

#include <malloc.h>

using namespace Qt::StringLiterals;
using tideloft::net::ApiClient;
using namespace tideloft::tests;

namespace
{

const QByteArray logout = QByteArrayLiteral("POST /api/auth/logout");

// A text of which the list knows only the turned bytes; it stands in the middle of a long one.
QByteArray marked(const QByteArray &turnedMarker)
{
    return QByteArray(100'000, 'x') + SoughtSecrets::turned(turnedMarker) + QByteArray(100'000, 'y');
}

// Returns once the reply is there.
bool fetch(ApiClient &client, const QByteArray &request)
{
    QSignalSpy servers(&client, &ApiClient::serversLoaded);
    QSignalSpy conversations(&client, &ApiClient::conversationsLoaded);
    QSignalSpy history(&client, &ApiClient::historyLoaded);
    if (request.endsWith("groups"))
        client.fetchServers();
    else
        request.endsWith("bob") ? client.fetchHistory(u"bob"_s) : client.fetchConversations();
    return waitFor([&] { return servers.size() + conversations.size() + history.size() == 1; });
}

} // namespace

class TestForgottenReplies : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void nothingIsKeptAfterTheLogOut_data();
    void nothingIsKeptAfterTheLogOut();
    void nothingIsKeptForTheNextPerson_data();
    void nothingIsKeptForTheNextPerson();
};

// Buffers of some size go back to the system as soon as they are freed: what is found then is still kept.
void TestForgottenReplies::initTestCase()
{
    QCOMPARE(mallopt(M_MMAP_THRESHOLD, 1'024), 1);
}

void TestForgottenReplies::nothingIsKeptAfterTheLogOut_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<bool>("late");
    QTest::addColumn<bool>("tagged");
    const QByteArray conversations = "GET /api/chat/conversations";
    const QByteArray history = "GET /api/chat/history/bob";
    const QByteArray servers = "GET /api/groups"; // are kept by their tag alone
    QTest::newRow("conversations") << conversations << false << false;
    QTest::newRow("conversations with a tag") << conversations << false << true;
    QTest::newRow("history") << history << false << false;
    QTest::newRow("history with a tag") << history << false << true;
    QTest::newRow("servers with a tag") << servers << false << true;
    QTest::newRow("conversations while logging out") << conversations << true << false;
    QTest::newRow("history while logging out") << history << true << false;
    QTest::newRow("history with a tag while logging out") << history << true << true;
    QTest::newRow("servers with a tag while logging out") << servers << true << true;
}

void TestForgottenReplies::nothingIsKeptAfterTheLogOut()
{
    QFETCH(const QByteArray, request);
    QFETCH(const bool, late);
    QFETCH(const bool, tagged);
    LoopbackService service;
    service.answer("POST /api/auth/login", 200, "{}");
    service.answer("GET /api/groups", 200, "[]");
    service.answer(logout, 200, "{}");
    ApiClient client;
    QSignalSpy signedIn(&client, &ApiClient::loginSucceeded);
    client.login(u"alice"_s, u"pw"_s, false);
    QVERIFY(signedIn.wait());
    const QByteArray turnedMarker = SoughtSecrets::turned("Mark " + request.last(8) + (late ? "LATE" : "SOON")
                                                          + (tagged ? "TAG" : "NOT"));
    SoughtSecrets sought;
    sought.addTurned(turnedMarker);
    service.answer(request, 200, R"([{"text":")" + marked(turnedMarker) + R"("}])",
                   {{"ETag", tagged ? "\"v1\"" : ""}});
    service.hold(logout);
    if (late)
        client.logout();
    QVERIFY(fetch(client, request));
    service.answer(request, 200, "[]"); // and the service keeps nothing of it
    QVERIFY(settle(client));
    if (!late) {
        QVERIFY(sought.places().constFirst() > 0);
        client.logout();
    }
    service.release(logout);
    QTRY_COMPARE(client.currentUsername(), QString());
    QVERIFY(settle(client));
    QCOMPARE(sought.found(), 0);
}

void TestForgottenReplies::nothingIsKeptForTheNextPerson_data()
{
    QTest::addColumn<bool>("afterLogOut");
    QTest::newRow("asked for before the log-out") << false;
    QTest::newRow("asked for after the log-out") << true; // as for a message that was under way
}

void TestForgottenReplies::nothingIsKeptForTheNextPerson()
{
    QFETCH(const bool, afterLogOut);
    const QByteArray request = "GET /api/chat/history/bob";
    const QByteArray turnedMarker =
        SoughtSecrets::turned(afterLogOut ? "Mark of the next" : "Mark of the last");
    SoughtSecrets sought;
    sought.addTurned(turnedMarker);
    LoopbackService service;
    service.answer("POST /api/auth/login", 200, "{}");
    service.answer("GET /api/groups", 200, "[]");
    service.answer(request, 200, R"([{"text":")" + marked(turnedMarker) + R"("}])");
    service.hold(request);
    ApiClient client;
    QSignalSpy signedIn(&client, &ApiClient::loginSucceeded);
    client.login(u"alice"_s, u"pw"_s, false);
    QVERIFY(signedIn.wait());
    if (afterLogOut)
        client.clearReplyCaches();
    client.fetchHistory(u"bob"_s);
    QVERIFY(service.waitForRequests(request, 1));
    if (!afterLogOut)
        client.clearReplyCaches();
    client.login(u"carl"_s, u"pw"_s, false);
    QVERIFY(signedIn.wait());
    QSignalSpy loaded(&client, &ApiClient::historyLoaded);
    service.release(request);
    QVERIFY(loaded.wait());
    loaded.clear();
    service.answer(request, 200, "[]"); // and the service keeps nothing of it
    QVERIFY(settle(client));
    QCOMPARE(sought.found(), 0);
}

TIDELOFT_TEST_MAIN(TestForgottenReplies)
#include "tst_forgotten_replies.moc"
