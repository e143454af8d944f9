// The requests of direct messaging, byte for byte, and the shapes that their replies may have.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/net/wire.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using tideloft::net::ApiClient;
using namespace tideloft::tests;

namespace
{

void addSuccess(const char *name, const char *signal, const Operation &operation, const char *reply,
                const QVariantList &expected)
{
    QTest::addRow("%s: %s", QByteArray(signal).split('(').first().constData(), name)
        << operation << QByteArray(signal) << QByteArray(reply) << expected;
}

void addLists()
{
    const QJsonArray one{QJsonObject{{u"peer"_s, u"bob"_s}}};
    const char *const conversations = "conversationsLoaded(QJsonArray)";
    const Operation fetchConversations = [](ApiClient &api) { api.fetchConversations(); };
    addSuccess("array", conversations, fetchConversations, R"([{"peer":"bob"}])", {one});
    addSuccess("object", conversations, fetchConversations, R"({"items":[1]})", {QJsonArray()});
    addSuccess("empty", conversations, fetchConversations, "", {QJsonArray()});
    addSuccess("HTML", conversations, fetchConversations, "<html>", {QJsonArray()});

    const char *const history = "historyLoaded(QString,QJsonArray)";
    const Operation fetchHistory = [](ApiClient &api) { api.fetchHistory(u" Bob"_s); };
    addSuccess("array, peer as passed", history, fetchHistory, R"([{"peer":"bob"}])", {u" Bob"_s, one});
    addSuccess("object", history, fetchHistory, R"({"peer":"bob"})", {u" Bob"_s, QJsonArray()});
    addSuccess("empty", history, fetchHistory, "", {u" Bob"_s, QJsonArray()});
}

void addKeys()
{
    const QJsonArray key{QJsonObject{{u"deviceId"_s, u"d"_s}, {u"publicKeyBase64"_s, u"K"_s}}};
    const char *const keyArray = R"([42,{"deviceId":"d","publicKey":"K"}])";
    const char *const keyObject = R"({"keys":[42,{"deviceId":"d","publicKey":"K"}]})";
    const char *const keyObjectWithLegacy = R"({"publicKey":"L","keys":[{"deviceId":"d","publicKey":"K"}]})";

    const char *const mine = "myDeviceKeysLoaded(QJsonArray)";
    const Operation fetchMine = &ApiClient::fetchMyDeviceKeys;
    addSuccess("object with keys", mine, fetchMine, keyObject, {key});
    addSuccess("bare array", mine, fetchMine, keyArray, {key});
    addSuccess("object without keys", mine, fetchMine, R"({"publicKey":"L"})", {QJsonArray()});
    addSuccess("keys that are no array", mine, fetchMine, R"({"keys":{"deviceId":"d"}})", {QJsonArray()});
    addSuccess("empty", mine, fetchMine, "", {QJsonArray()});

    const char *const users = "userPublicKeysLoaded(QString,QJsonArray,QString)";
    const Operation fetchUsers = [](ApiClient &api) { api.fetchUserPublicKeys(u" Bob"_s); };
    addSuccess("object with keys", users, fetchUsers, keyObject, {u" Bob"_s, key, QString()});
    addSuccess("keys and legacy key", users, fetchUsers, keyObjectWithLegacy, {u" Bob"_s, key, u"L"_s});
    addSuccess("legacy key alone", users, fetchUsers, R"({"publicKey":"L"})",
               {u" Bob"_s, QJsonArray(), u"L"_s});
    addSuccess("bare array", users, fetchUsers, keyArray, {u" Bob"_s, QJsonArray(), QString()});
    addSuccess("wrong types", users, fetchUsers, R"({"publicKey":7,"keys":"K"})",
               {u" Bob"_s, QJsonArray(), QString()});
    addSuccess("empty", users, fetchUsers, "", {u" Bob"_s, QJsonArray(), QString()});
}

} // namespace

class TestApiClientChat : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void requests_data();
    void requests();
    void namesStandInThePathAsTheyAre_data();
    void namesStandInThePathAsTheyAre();
    void successes_data();
    void successes();
    void failures_data();
    void failures();
    void noneOfThemSignsAnybodyIn();
    void historiesKeepTheirPeerInAnyOrder();

private:
    std::unique_ptr<LoopbackService> service;
    std::unique_ptr<ApiClient> client;
};

void TestApiClientChat::init()
{
    client.reset();
    service = std::make_unique<LoopbackService>();
    client = std::make_unique<ApiClient>();
}

void TestApiClientChat::requests_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QByteArray>("requestLine");
    QTest::addColumn<QByteArray>("body"); // %1: the device identifier; none for a GET
    const auto row = [](const char *name, const Operation &operation, const char *line, const char *body) {
        QTest::newRow(name) << operation << QByteArray(line) << QByteArray(body);
    };
    row(
        "fetchConversations", [](ApiClient &api) { api.fetchConversations(); }, "GET /api/chat/conversations",
        nullptr);
    row(
        "fetchHistory", [](ApiClient &api) { api.fetchHistory(u"bob"_s); }, "GET /api/chat/history/bob",
        nullptr);
    row("fetchMyDeviceKeys", &ApiClient::fetchMyDeviceKeys, "GET /api/chat/device-keys/me", nullptr);
    row(
        "fetchUserPublicKeys", [](ApiClient &api) { api.fetchUserPublicKeys(u"bob"_s); },
        "GET /api/chat/public-key/bob", nullptr);
    row(
        "registerDeviceKey", [](ApiClient &api) { api.registerDeviceKey(u"TUlJ+/=="_s); },
        "POST /api/chat/device-key",
        "{\n    \"deviceId\": \"%1\",\n    \"deviceName\": \"TideLoft Desktop\",\n"
        "    \"publicKey\": \"TUlJ+/==\"\n}\n");
    row(
        "sendMessage, encrypted: all nine fields, the recipient unchanged",
        [](ApiClient &api) {
            api.sendMessage(u" Bob "_s, u"Y2lwaGVy"_s, u"aXY="_s, u"a2V5"_s, u"c2Vs"_s,
                            {QJsonObject{{u"deviceId"_s, u"d1"_s}, {u"encryptedKey"_s, u"azE="_s}}}, {});
        },
        "POST /api/chat/send",
        "{\n    \"algorithm\": \"AES-GCM\",\n    \"encrypted\": 1,\n    \"encryptedKey\": \"a2V5\",\n"
        "    \"iv\": \"aXY=\",\n    \"recipientKeys\": [\n        {\n            \"deviceId\": \"d1\",\n"
        "            \"encryptedKey\": \"azE=\"\n        }\n    ],\n    \"senderEncryptedKey\": \"c2Vs\",\n"
        "    \"senderKeys\": [\n    ],\n    \"text\": \"Y2lwaGVy\",\n    \"to\": \" Bob \"\n}\n");
    row(
        "sendMessage, plain: all nine fields, the recipient normalised",
        [](ApiClient &api) { api.sendMessage(u" Bob "_s, u" Hej! "_s); }, "POST /api/chat/send",
        "{\n    \"algorithm\": \"plain\",\n    \"encrypted\": 0,\n    \"encryptedKey\": \"\",\n"
        "    \"iv\": \"\",\n    \"recipientKeys\": [\n    ],\n    \"senderEncryptedKey\": \"\",\n"
        "    \"senderKeys\": [\n    ],\n    \"text\": \" Hej! \",\n    \"to\": \"bob\"\n}\n");
}

void TestApiClientChat::requests()
{
    QFETCH(const Operation, operation);
    QFETCH(const QByteArray, requestLine);
    QFETCH(QByteArray, body);
    body.replace("%1", client->deviceId().toUtf8());
    operation(*client);
    QVERIFY(service->waitForRequests(requestLine, 1));
    const bool isGet = requestLine.startsWith("GET");
    QCOMPARE(ownHead(service->lastRequest()), jsonHead(requestLine, *client, isGet ? -1 : body.size()));
    QCOMPARE(service->lastRequest().body, body);
}

void TestApiClientChat::namesStandInThePathAsTheyAre_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("onTheWire");
    QTest::newRow("neither trimmed nor lower-cased") << u" Bob "_s << QByteArray("%20Bob%20");
    QTest::newRow("Swedish letters") << u"åsa"_s << QByteArray("%C3%A5sa");
    QTest::newRow("slash makes a longer path") << u"a/b"_s << QByteArray("a/b");
    QTest::newRow("question mark makes a query") << u"a?b"_s << QByteArray("a?b");
    QTest::newRow("looks encoded") << u"%41%2F"_s << QByteArray("A%2F");
    QTest::newRow("lone percent") << u"50%"_s << QByteArray("50%25");
}

void TestApiClientChat::namesStandInThePathAsTheyAre()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, onTheWire);
    client->fetchHistory(name);
    QVERIFY(service->waitForRequests("GET /api/chat/history/" + onTheWire, 1));
    client->fetchUserPublicKeys(name);
    QVERIFY(service->waitForRequests("GET /api/chat/public-key/" + onTheWire, 1));
}

void TestApiClientChat::successes_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QVariantList>("expected");
    addLists();
    addKeys();
    const Operation registerKey = [](ApiClient &api) { api.registerDeviceKey(u"K"_s); };
    const Operation sendSealed = [](ApiClient &api) { api.sendMessage(u"b"_s, u"t"_s, {}, {}, {}, {}, {}); };
    const Operation sendPlain = [](ApiClient &api) { api.sendMessage(u"b"_s, u"t"_s); };
    addSuccess("body ignored", "deviceKeyRegistered()", registerKey, "<html>", {});
    addSuccess("encrypted, body ignored", "messageSent()", sendSealed, "[]", {});
    addSuccess("plain, body ignored", "messageSent()", sendPlain, "", {});
}

void TestApiClientChat::successes()
{
    QFETCH(const Operation, operation);
    QFETCH(const QByteArray, signal);
    QFETCH(const QByteArray, reply);
    QFETCH(const QVariantList, expected);
    for (const char *key :
         {"GET /api/chat/conversations", "GET /api/chat/history/%20Bob", "GET /api/chat/device-keys/me",
          "GET /api/chat/public-key/%20Bob", "POST /api/chat/device-key", "POST /api/chat/send"})
        service->answer(key, 200, reply);
    const SignalLog log(*client);
    QSignalSpy succeeded(client.get(), QByteArray("2" + signal).constData());
    operation(*client);
    QVERIFY(succeeded.wait());
    QCOMPARE(succeeded.first(), expected);
    QCOMPARE(log.emitted(), QList<QByteArray>{signal.split('(').first()});
}

void TestApiClientChat::failures_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QVariantList>("expected");
    const auto row = [](const char *name, const char *signal, const Operation &operation,
                        const QVariantList &expected) {
        QTest::newRow(name) << operation << QByteArray(signal) << expected;
    };
    const QString no = u"Not now"_s;
    row("conversations", "conversationsFailed(QString)", [](ApiClient &api) { api.fetchConversations(); },
        {no});
    row("history", "historyFailed(QString)", [](ApiClient &api) { api.fetchHistory(u"bob"_s); }, {no});
    row("register", "deviceKeyRegisterFailed(QString)", [](ApiClient &api) { api.registerDeviceKey(u"K"_s); },
        {no});
    row("my keys", "myDeviceKeysFailed(QString)", &ApiClient::fetchMyDeviceKeys, {no});
    row("user's keys, with the name as passed", "userPublicKeysFailed(QString,QString)",
        [](ApiClient &api) { api.fetchUserPublicKeys(u" Bob"_s); }, {u" Bob"_s, no});
    row("send encrypted", "messageSendFailed(QString)",
        [](ApiClient &api) { api.sendMessage(u"b"_s, u"t"_s, {}, {}, {}, {}, {}); }, {no});
    row("send plain", "messageSendFailed(QString)", [](ApiClient &api) { api.sendMessage(u"b"_s, u"t"_s); },
        {no});
}

void TestApiClientChat::failures()
{
    QFETCH(const Operation, operation);
    QFETCH(const QByteArray, signal);
    QFETCH(const QVariantList, expected);
    for (const char *key :
         {"GET /api/chat/conversations", "GET /api/chat/history/bob", "GET /api/chat/device-keys/me",
          "GET /api/chat/public-key/%20Bob", "POST /api/chat/device-key", "POST /api/chat/send"})
        service->answer(key, 429, R"({"message":"Not now"})");
    const SignalLog log(*client);
    QSignalSpy failed(client.get(), QByteArray("2" + signal).constData());
    operation(*client);
    QVERIFY(failed.wait());
    QCOMPARE(failed.first(), expected);
    QCOMPARE(log.emitted(), QList<QByteArray>{signal.split('(').first()});
}

void TestApiClientChat::noneOfThemSignsAnybodyIn()
{
    service->answer("GET /api/chat/device-keys/me", 200, R"({"username":"mallory","deviceId":"x"})");
    const QString device = client->deviceId();
    QSignalSpy loaded(client.get(), &ApiClient::myDeviceKeysLoaded);
    client->fetchMyDeviceKeys();
    QVERIFY(loaded.wait());
    QVERIFY(!client->isSignedIn());
    QCOMPARE(client->deviceId(), device);
}

void TestApiClientChat::historiesKeepTheirPeerInAnyOrder()
{
    service->answer("GET /api/chat/history/bob", 200, "[1]");
    service->answer("GET /api/chat/history/eve", 200, "[2]");
    service->hold("GET /api/chat/history/bob");
    QSignalSpy loaded(client.get(), &ApiClient::historyLoaded);
    client->fetchHistory(u"bob"_s);
    QVERIFY(service->waitForRequests("GET /api/chat/history/bob", 1));
    client->fetchHistory(u"eve"_s);
    QVERIFY(loaded.wait());
    service->release("GET /api/chat/history/bob");
    QVERIFY(loaded.wait());
    QCOMPARE(loaded.at(0), (QVariantList{u"eve"_s, QJsonArray{2}}));
    QCOMPARE(loaded.at(1), (QVariantList{u"bob"_s, QJsonArray{1}}));
}

TIDELOFT_TEST_MAIN(TestApiClientChat)
#include "tst_api_client_chat.moc"
