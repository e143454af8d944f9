// How many statements a request sends to a server. Each is a way there and back; the commonest requests need
// two.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/api_fixture.h"
#include "tests/service/message_bodies.h"
#include "tests/service/stored_session.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestStatementCount : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { api.reset(); }
    void requestTakesFewStatements_data();
    void requestTakesFewStatements();
    void waitingRequestsAskForTheirSessionsTogether();
    void wrongPasswordTakesOneForEachLimit();

private:
    Response call(const QByteArray &method, const QByteArray &target, const QByteArray &tag = {}) const
    {
        Request request{method, target, "application/json", alice, {}, "peer"};
        request.ifNoneMatch = tag;
        return ApiFixture::finish(api->handle(request));
    }
    static QByteArray tagOf(const Response &response)
    {
        for (const auto &[name, value] : response.headers) {
            if (name == "ETag")
                return value;
        }
        return {};
    }
    static qsizetype statements() { return PostgresqlCluster::ofThisProcess().statements(); }

    std::unique_ptr<Api> api;
    QByteArray alice;
};

void TestStatementCount::initTestCase()
{
    const QString place = PostgresqlCluster::ofThisProcess().newPlace();
    {
        Store database(place);
        alice = storeSession(database, u"alice"_s);
    }
    StoreSettings storage{PostgresqlCluster::logged(place), 1};
    storage.writers = 1;
    ApiSettings settings;
    settings.scryptCost = {16, 8, 1};
    api = std::make_unique<Api>(storage, settings);
    const QByteArray body = QJsonDocument(plainMessage(u"alice"_s, u"hello"_s)).toJson();
    QCOMPARE(
        ApiFixture::finish(api->handle({"POST", "/api/chat/send", "application/json", alice, body, "peer"}))
            .status,
        201);
}

void TestStatementCount::requestTakesFewStatements_data()
{
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<bool>("isKnown");
    QTest::addColumn<int>("count");
    QTest::newRow("profile: session, profile") << QByteArray("/api/me") << false << 2;
    QTest::newRow("unchanged history: session, version")
        << QByteArray("/api/chat/history/alice") << true << 2;
    QTest::newRow("changed history: session, version, user, messages")
        << QByteArray("/api/chat/history/alice") << false << 4;
    QTest::newRow("unchanged conversations: session, version")
        << QByteArray("/api/chat/conversations") << true << 2;
    QTest::newRow("changed conversations: session, version, messages")
        << QByteArray("/api/chat/conversations") << false << 3;
}

// What is repeated was prepared the first time.
void TestStatementCount::requestTakesFewStatements()
{
    QFETCH(QByteArray, target);
    QFETCH(bool, isKnown);
    QFETCH(int, count);
    const Response first = call("GET", target);
    QCOMPARE(first.status, 200);
    const QByteArray tag = isKnown ? tagOf(first) : QByteArray();
    const qsizetype before = statements();
    QCOMPARE(call("GET", target, tag).status, isKnown ? 304 : 200);
    QCOMPARE(statements() - before, count);
}

// An attempt that may not go on is looked for, too: how long is there to wait?
void TestStatementCount::waitingRequestsAskForTheirSessionsTogether()
{
    const auto statementsOfThree = [this] {
        std::vector<Reply> waiting;
        waiting.reserve(3);
        for (int i = 0; i < 3; ++i)
            waiting.push_back(api->handle({"GET", "/api/me", {}, alice, {}, "peer"}));
        const qsizetype before = statements();
        for (const Reply &each : waiting) {
            if (ApiFixture::finish(each).status != 200)
                return qsizetype{-1};
        }
        return statements() - before;
    };
    QVERIFY(statementsOfThree() > 0);     // is prepared the first time
    QCOMPARE(statementsOfThree(), 1 + 3); // sessions, and each its profile
}

void TestStatementCount::wrongPasswordTakesOneForEachLimit()
{
    const QByteArray body =
        QJsonDocument(QJsonObject{{u"username"_s, u"alice"_s}, {u"password"_s, u"a bad password"_s}})
            .toJson();
    const auto signIn = [&] {
        return ApiFixture::finish(
            api->handle({"POST", "/api/auth/login", "application/json", {}, body, "peer"}));
    };
    QCOMPARE(signIn().status, 401);
    const qsizetype before = statements();
    QCOMPARE(signIn().status, 401);
    QCOMPARE(statements() - before, 3); // address, account, user
    for (int i = 2; i < 10; ++i)
        QCOMPARE(signIn().status, 401);
    QCOMPARE(signIn().status, 429);
    const qsizetype full = statements();
    QCOMPARE(signIn().status, 429);
    QCOMPARE(statements() - full, 2); // the address has had its attempts
}

TIDELOFT_TEST_MAIN(TestStatementCount)
#include "tst_statement_count.moc"
