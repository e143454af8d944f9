// The account's requests: what goes out, byte for byte, and what each reply is made into.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/net/wire.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using tideloft::net::ApiClient;
using namespace tideloft::tests;

class TestApiClientAccount : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void requests_data();
    void requests();
    void loginSendsTheNameAsTypedAndReportsItNormalised();
    void loginIgnoresTheReplysBody();
    void registerKeepsTheNameAsTyped();
    void failuresHaveTheirOwnSignals_data();
    void failuresHaveTheirOwnSignals();
    void logoutClearsTheNameWhateverTheAnswer_data();
    void logoutClearsTheNameWhateverTheAnswer();
    void fetchMeTakesTheServicesSpelling();
    void fetchMeDropsWhatIsNoObject_data();
    void fetchMeDropsWhatIsNoObject();
    void searchGivesTheTopLevelArray_data();
    void searchGivesTheTopLevelArray();
    void updateProfileReportsToItsCallback();
    void updateProfileShowsTheToolkitsTextOnly();
    void updateProfileWithoutCallback();

private:
    std::unique_ptr<LoopbackService> service;
    std::unique_ptr<ApiClient> client;
};

void TestApiClientAccount::init()
{
    client.reset();
    service = std::make_unique<LoopbackService>();
    client = std::make_unique<ApiClient>();
}

void TestApiClientAccount::requests_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QByteArray>("requestLine");
    QTest::addColumn<QByteArray>("body");
    const auto row = [](const char *name, const Operation &operation, const char *line, const char *body) {
        QTest::newRow(name) << operation << QByteArray(line) << QByteArray(body);
    };
    row(
        "login, remembered", [](ApiClient &api) { api.login(u" Alice "_s, u"p\"å"_s, true); },
        "POST /api/auth/login",
        "{\n    \"password\": \"p\\\"å\",\n    \"rememberMe\": true,\n    \"username\": \" Alice \"\n}\n");
    row(
        "login, not remembered", [](ApiClient &api) { api.login(u"a"_s, u"b"_s, false); },
        "POST /api/auth/login",
        "{\n    \"password\": \"b\",\n    \"rememberMe\": false,\n    \"username\": \"a\"\n}\n");
    row(
        "registerAccount", [](ApiClient &api) { api.registerAccount(u" Alice "_s, u"pw"_s); },
        "POST /api/auth/register", "{\n    \"password\": \"pw\",\n    \"username\": \" Alice \"\n}\n");
    row(
        "logout", [](ApiClient &api) { api.logout(); }, "POST /api/auth/logout", "");
    row(
        "updateProfile", [](ApiClient &api) { api.updateProfile(u"Alice A."_s, u"Hi\nall"_s, {}); },
        "POST /api/profile/update", "{\n    \"bio\": \"Hi\\nall\"\n}\n");
}

void TestApiClientAccount::requests()
{
    QFETCH(const Operation, operation);
    QFETCH(const QByteArray, requestLine);
    QFETCH(const QByteArray, body);
    operation(*client);
    QVERIFY(service->waitForRequests(requestLine, 1));
    QCOMPARE(ownHead(service->lastRequest()), jsonHead(requestLine, *client, body.size()));
    QCOMPARE(service->lastRequest().body, body);
}

void TestApiClientAccount::loginSendsTheNameAsTypedAndReportsItNormalised()
{
    service->answer("POST /api/auth/login", 200, R"({"username":"somebody else"})");
    const SignalLog log(*client);
    QSignalSpy succeeded(client.get(), &ApiClient::loginSucceeded);
    client->login(u" Alice "_s, u"pw"_s, true);
    QVERIFY(!client->isSignedIn());
    QVERIFY(succeeded.wait());
    QCOMPARE(succeeded.first().first().toString(), u"alice"_s);
    QCOMPARE(client->currentUsername(), u"alice"_s);
    QVERIFY(client->isSignedIn());
    QVERIFY(service->lastRequest().body.contains("\"username\": \" Alice \""));
    QCOMPARE(log.emitted(), QList<QByteArray>{"loginSucceeded"});
}

void TestApiClientAccount::loginIgnoresTheReplysBody()
{
    service->answer("POST /api/auth/login", 200, "<html>");
    QSignalSpy succeeded(client.get(), &ApiClient::loginSucceeded);
    client->login(u"alice"_s, u"pw"_s, false);
    client->login(u"bob"_s, u"pw"_s, false); // a second one is neither held back nor merged
    QTRY_COMPARE(succeeded.size(), 2);
    QCOMPARE(service->count("POST /api/auth/login"), 2);
}

void TestApiClientAccount::registerKeepsTheNameAsTyped()
{
    service->answer("POST /api/auth/register", 201, "{}");
    QSignalSpy succeeded(client.get(), &ApiClient::registerSucceeded);
    client->registerAccount(u" Alice "_s, u"pw"_s);
    QVERIFY(succeeded.wait());
    QCOMPARE(succeeded.first().first().toString(), u" Alice "_s);
    QCOMPARE(client->currentUsername(), QString());
}

void TestApiClientAccount::failuresHaveTheirOwnSignals_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("signal");
    const auto row = [](const char *signal, const char *key, const Operation &operation) {
        QTest::newRow(signal) << operation << QByteArray(key) << QByteArray(signal);
    };
    row("loginFailed", "POST /api/auth/login", [](ApiClient &api) { api.login(u"a"_s, u"b"_s, true); });
    row("registerFailed", "POST /api/auth/register",
        [](ApiClient &api) { api.registerAccount(u"a"_s, u"b"_s); });
    row("meFailed", "GET /api/me", [](ApiClient &api) { api.fetchMe(); });
    row("searchFailed", "GET /api/users/search", [](ApiClient &api) { api.searchUsers(u"a"_s); });
}

void TestApiClientAccount::failuresHaveTheirOwnSignals()
{
    QFETCH(const Operation, operation);
    QFETCH(const QByteArray, key);
    QFETCH(const QByteArray, signal);
    service->answer(key, 422, R"({"message":"Not like this"})");
    const SignalLog log(*client);
    QSignalSpy failed(client.get(), QByteArray("2" + signal + "(QString)").constData());
    operation(*client);
    QVERIFY(failed.wait());
    QCOMPARE(failed.first().first().toString(), u"Not like this"_s);
    QCOMPARE(log.emitted(), QList<QByteArray>{signal});
    QVERIFY(!client->isSignedIn());
}

void TestApiClientAccount::logoutClearsTheNameWhateverTheAnswer_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("agreed") << 200;
    QTest::newRow("refused") << 500;
}

void TestApiClientAccount::logoutClearsTheNameWhateverTheAnswer()
{
    QFETCH(const int, status);
    service->answer("POST /api/auth/login", 200, "{}");
    service->answer("POST /api/auth/logout", status, R"({"message":"no"})");
    QSignalSpy signedIn(client.get(), &ApiClient::loginSucceeded);
    client->login(u"alice"_s, u"pw"_s, true);
    QVERIFY(signedIn.wait());
    const SignalLog log(*client);
    client->logout();
    QVERIFY(client->isSignedIn()); // until the reply is here
    QTRY_VERIFY(!client->isSignedIn());
    QCOMPARE(log.emitted(), QList<QByteArray>());
}

void TestApiClientAccount::fetchMeTakesTheServicesSpelling()
{
    service->answer("GET /api/me", 200, R"({"username":" Alice","bio":"Hi","extra":[1]})");
    QSignalSpy loaded(client.get(), &ApiClient::meLoaded);
    client->fetchMe();
    QVERIFY(loaded.wait());
    QCOMPARE(client->currentUsername(), u" Alice"_s);
    QCOMPARE(loaded.first().first().toJsonObject(),
             (QJsonObject{{u"username"_s, u" Alice"_s}, {u"bio"_s, u"Hi"_s}, {u"extra"_s, QJsonArray{1}}}));
}

void TestApiClientAccount::fetchMeDropsWhatIsNoObject_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("array") << QByteArray(R"([{"username":"mallory"}])");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("HTML") << QByteArray("<html>");
}

void TestApiClientAccount::fetchMeDropsWhatIsNoObject()
{
    QFETCH(const QByteArray, body);
    service->answer("POST /api/auth/login", 200, "{}");
    service->answer("GET /api/me", 200, body);
    QSignalSpy signedIn(client.get(), &ApiClient::loginSucceeded);
    client->login(u"alice"_s, u"pw"_s, true);
    QVERIFY(signedIn.wait());
    const SignalLog log(*client);
    client->fetchMe();
    QVERIFY(service->waitForRequests("GET /api/me", 1));
    QVERIFY(settle(*client));
    QCOMPARE(log.emitted(), QList<QByteArray>{"serversFailed"}); // settle's own
    QCOMPARE(client->currentUsername(), u"alice"_s);
}

void TestApiClientAccount::searchGivesTheTopLevelArray_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QJsonArray>("expected");
    QTest::newRow("array") << QByteArray(R"([{"username":"bob"},7])")
                           << QJsonArray{QJsonObject{{u"username"_s, u"bob"_s}}, 7};
    QTest::newRow("object") << QByteArray(R"({"users":[1]})") << QJsonArray();
    QTest::newRow("empty") << QByteArray() << QJsonArray();
}

void TestApiClientAccount::searchGivesTheTopLevelArray()
{
    QFETCH(const QByteArray, body);
    QFETCH(const QJsonArray, expected);
    service->answer("GET /api/users/search", 200, body);
    QSignalSpy loaded(client.get(), &ApiClient::searchLoaded);
    client->searchUsers(u" tom & jerry"_s);
    QVERIFY(loaded.wait());
    QCOMPARE(loaded.first().first().toJsonArray(), expected);
    const QByteArray line = "GET /api/users/search?q=%20tom%20%26%20jerry";
    QCOMPARE(ownHead(service->lastRequest()), jsonHead(line, *client));
}

void TestApiClientAccount::updateProfileReportsToItsCallback()
{
    service->answer("POST /api/profile/update", 200, "not even JSON");
    const SignalLog log(*client);
    QStringList reports;
    client->updateProfile(u"Alice"_s, u"Hi"_s, [&](bool ok, const QString &message) {
        reports.append(u"%1:%2"_s.arg(ok).arg(message));
    });
    QVERIFY(reports.isEmpty());
    QTRY_COMPARE(reports, QStringList{u"1:"_s});
    QCOMPARE(log.emitted(), QList<QByteArray>());
}

void TestApiClientAccount::updateProfileShowsTheToolkitsTextOnly()
{
    service->answer("POST /api/profile/update", 400, R"({"message":"Bio too long"})");
    QStringList reports;
    client->updateProfile({}, u"Hi"_s, [&](bool ok, const QString &message) {
        reports.append(u"%1:%2"_s.arg(ok).arg(message));
    });
    const QString url = service->url() + u"/api/profile/update"_s;
    QTRY_COMPARE(reports, QStringList{u"0:Error transferring %1 - server replied: Bad Request"_s.arg(url)});
}

void TestApiClientAccount::updateProfileWithoutCallback()
{
    const SignalLog log(*client);
    client->updateProfile({}, u"Hi"_s, {});
    QVERIFY(service->waitForRequests("POST /api/profile/update", 1));
    QVERIFY(settle(*client));
    QCOMPARE(log.emitted(), QList<QByteArray>{"serversFailed"}); // settle's own
}

TIDELOFT_TEST_MAIN(TestApiClientAccount)
#include "tst_api_client_account.moc"
