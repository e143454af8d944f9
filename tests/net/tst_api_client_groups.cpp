// Group requests: byte for byte, with failures in the toolkit's words.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/net/wire.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using tideloft::net::ApiClient;
using namespace tideloft::tests;

class TestApiClientGroups : public QObject
{
    Q_OBJECT

private slots:
    void requests_data();
    void requests();
    void successes_data();
    void successes();
    void failuresShareOneSignalAndIgnoreTheBody_data();
    void failuresShareOneSignalAndIgnoreTheBody();
    void aServiceThatIsDown();
};

void TestApiClientGroups::requests_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QByteArray>("requestLine");
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("fetchServers") << Operation(&ApiClient::fetchServers) << QByteArray("GET /api/groups")
                                  << QByteArray();
    QTest::newRow("fetchServer") << Operation([](ApiClient &api) { api.fetchServer(u"g 1"_s); })
                                 << QByteArray("GET /api/groups/g%201") << QByteArray();
    QTest::newRow("createServer, empty description is sent")
        << Operation([](ApiClient &api) { api.createServer(u" Harbour "_s, {}); })
        << QByteArray("POST /api/groups")
        << QByteArray("{\n    \"description\": \"\",\n    \"name\": \" Harbour \"\n}\n");
}

void TestApiClientGroups::requests()
{
    QFETCH(const Operation, operation);
    QFETCH(const QByteArray, requestLine);
    QFETCH(const QByteArray, body);
    LoopbackService service;
    ApiClient client;
    operation(client);
    QVERIFY(service.waitForRequests(requestLine, 1));
    QCOMPARE(ownHead(service.lastRequest()),
             jsonHead(requestLine, client, body.isEmpty() ? -1 : body.size()));
    QCOMPARE(service.lastRequest().body, body);
}

void TestApiClientGroups::successes_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QVariant>("expected");
    const auto row = [](const char *name, const char *signal, const Operation &operation, const char *reply,
                        const QVariant &expected) {
        QTest::newRow(name) << operation << QByteArray(signal) << QByteArray(reply) << expected;
    };
    const Operation list = &ApiClient::fetchServers;
    const Operation one = [](ApiClient &api) { api.fetchServer(u"g1"_s); };
    const Operation create = [](ApiClient &api) { api.createServer(u"n"_s, u"d"_s); };
    const QJsonObject group{{u"groupId"_s, u"g1"_s}};
    row("list", "serversLoaded(QJsonArray)", list, R"([{"groupId":"g1"}])", QJsonArray{group});
    row("list: object", "serversLoaded(QJsonArray)", list, R"({"groupId":"g1"})", QJsonArray());
    row("list: empty", "serversLoaded(QJsonArray)", list, "", QJsonArray());
    row("one", "serverLoaded(QJsonObject)", one, R"({"groupId":"g1"})", group);
    row("one: array", "serverLoaded(QJsonObject)", one, "[1]", QJsonObject());
    row("create", "serverCreated(QJsonObject)", create, R"({"groupId":"g1"})", group);
    row("create: array", "serverCreated(QJsonObject)", create, R"([{"groupId":"g1"}])", QJsonObject());
    row("create: HTML", "serverCreated(QJsonObject)", create, "<html>", QJsonObject());
}

void TestApiClientGroups::successes()
{
    QFETCH(const Operation, operation);
    QFETCH(const QByteArray, signal);
    QFETCH(const QByteArray, reply);
    QFETCH(const QVariant, expected);
    LoopbackService service;
    for (const char *key : {"GET /api/groups", "GET /api/groups/g1", "POST /api/groups"})
        service.answer(key, 200, reply);
    ApiClient client;
    const SignalLog log(client);
    QSignalSpy succeeded(&client, QByteArray("2" + signal).constData());
    operation(client);
    QVERIFY(succeeded.wait());
    QCOMPARE(succeeded.first(), QVariantList{expected});
    QCOMPARE(log.emitted(), QList<QByteArray>{signal.split('(').first()});
}

void TestApiClientGroups::failuresShareOneSignalAndIgnoreTheBody_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("path");
    QTest::newRow("list") << Operation(&ApiClient::fetchServers) << u"/api/groups"_s;
    QTest::newRow("one") << Operation([](ApiClient &api) { api.fetchServer(u"g1"_s); })
                         << u"/api/groups/g1"_s;
    QTest::newRow("create") << Operation([](ApiClient &api) { api.createServer({}, {}); })
                            << u"/api/groups"_s;
}

void TestApiClientGroups::failuresShareOneSignalAndIgnoreTheBody()
{
    QFETCH(const Operation, operation);
    QFETCH(const QString, path);
    LoopbackService service;
    for (const char *key : {"GET /api/groups", "GET /api/groups/g1", "POST /api/groups"})
        service.answer(key, 403, R"({"message":"Not a member"})");
    ApiClient client;
    const SignalLog log(client);
    QSignalSpy failed(&client, &ApiClient::serversFailed);
    operation(client);
    QVERIFY(failed.wait());
    const QString text = u"Error transferring %1 - server replied: Forbidden"_s.arg(service.url() + path);
    QCOMPARE(failed.first(), QVariantList{text});
    QCOMPARE(log.emitted(), QList<QByteArray>{"serversFailed"});
}

void TestApiClientGroups::aServiceThatIsDown()
{
    LoopbackService service;
    service.stop();
    ApiClient client;
    QSignalSpy failed(&client, &ApiClient::serversFailed);
    client.fetchServers();
    QVERIFY(failed.wait());
    QCOMPARE(failed.first(), QVariantList{u"Connection refused"_s});
}

TIDELOFT_TEST_MAIN(TestApiClientGroups)
#include "tst_api_client_groups.moc"
