// A connection that ends during the commit: who asked hears the truth, and everything is stored once.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/api_fixture.h"
#include "tests/service/cutting_relay.h"
#include "tests/service/key_material.h"
#include "tests/service/message_bodies.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestLostCommits : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup() { api.reset(); }
    void everythingIsStoredOnce_data();
    void everythingIsStoredOnce();
    void otherMessagesMayBeAlike();
    void whoNeverComesBackIsTold();

private:
    struct Change {
        const char *name;
        QByteArray target;
        QJsonObject body;
        QString table;
        int more; ///< rows in the table
    };
    static QList<Change> changes();
    std::unique_ptr<Api> makeApi(std::chrono::milliseconds longestDoubt) const;
    Response call(const QByteArray &method, const QByteArray &target, const QByteArray &body) const
    {
        return ApiFixture::finish(api->handle({method, target, "application/json", cookie, body, "peer"}));
    }
    Response post(const QByteArray &target, const QJsonObject &body) const
    {
        return call("POST", target, QJsonDocument(body).toJson());
    }
    qint64 rows(const QString &table) const { return database->number(u"SELECT count(*) FROM "_s + table); }

    QString place;
    std::unique_ptr<CuttingRelay> relay;
    std::unique_ptr<Store> database; ///< past the relay
    std::unique_ptr<Api> api;        ///< through it
    QByteArray cookie;
};

void TestLostCommits::initTestCase()
{
    relay = std::make_unique<CuttingRelay>(PostgresqlCluster::ofThisProcess().port());
}

std::unique_ptr<Api> TestLostCommits::makeApi(std::chrono::milliseconds longestDoubt) const
{
    const quint16 server = PostgresqlCluster::ofThisProcess().port();
    StoreSettings storage{QString(place).replace(u":%1/"_s.arg(server), u":%1/"_s.arg(relay->port()))};
    storage.longestDoubt = longestDoubt;
    ApiSettings settings;
    settings.scryptCost = {16, 8, 1};
    settings.signInsPerMinute = settings.registrationsPerMinute = 0;
    settings.registration = Registration::Invite;
    return std::make_unique<Api>(storage, settings);
}

void TestLostCommits::init()
{
    place = PostgresqlCluster::ofThisProcess().newPlace();
    database = std::make_unique<Store>(place);
    relay->open();
    for (const QString &name : {u"alice"_s, u"bob"_s})
        database->run(u"INSERT INTO invitations (name, created_at) VALUES (?, 0)"_s, {name});
    api = makeApi(std::chrono::seconds(30));
    cookie.clear();
    const QJsonObject alice{{u"username"_s, u"alice"_s}, {u"password"_s, u"a good password"_s}};
    QCOMPARE(post("/api/auth/register", alice).status, 201);
    cookie = ApiFixture::cookieOf(post("/api/auth/login", alice));
}

QList<TestLostCommits::Change> TestLostCommits::changes()
{
    return {
        {"plain message", "/api/chat/send", plainMessage(u"alice"_s, u"hello"_s), u"messages"_s, 1},
        {"sealed message", "/api/chat/send", sealedMessage(u"alice"_s), u"messages"_s, 1},
        {"account",
         "/api/auth/register",
         {{u"username"_s, u"bob"_s}, {u"password"_s, u"a good password"_s}},
         u"users"_s,
         1},
        {"session",
         "/api/auth/login",
         {{u"username"_s, u"alice"_s}, {u"password"_s, u"a good password"_s}},
         u"sessions"_s,
         1},
        {"server", "/api/groups", {{u"name"_s, u"Chess"_s}, {u"description"_s, u""_s}}, u"chat_groups"_s, 1},
        {"device key",
         "/api/chat/device-key",
         {{u"deviceId"_s, u"d1"_s}, {u"deviceName"_s, u"Desk"_s}, {u"publicKey"_s, rsaPublicKey(2048)}},
         u"device_keys"_s,
         1},
        {"profile", "/api/profile/update", {{u"bio"_s, u"I sail."_s}}, u"users WHERE bio = 'I sail.'"_s, 1},
        {"end of a session", "/api/auth/logout", {}, u"sessions"_s, -1},
    };
}

void TestLostCommits::everythingIsStoredOnce_data()
{
    QTest::addColumn<int>("where");
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<QJsonObject>("body");
    QTest::addColumn<QString>("table");
    QTest::addColumn<int>("more");
    const struct {
        const char *name;
        CuttingRelay::Cut where;
    } cuts[] = {{"before", CuttingRelay::Cut::BeforeCommit},
                {"with", CuttingRelay::Cut::WithCommit},
                {"after", CuttingRelay::Cut::AfterCommit}};
    for (const Change &change : changes()) {
        for (const auto &cut : cuts)
            QTest::addRow("%s, cut %s its commit", change.name, cut.name)
                << static_cast<int>(cut.where) << change.target << change.body << change.table << change.more;
    }
}

void TestLostCommits::everythingIsStoredOnce()
{
    QFETCH(int, where);
    QFETCH(QByteArray, target);
    QFETCH(QJsonObject, body);
    QFETCH(QString, table);
    QFETCH(int, more);
    const qint64 before = rows(table);
    const int cuts = relay->cuts();
    relay->cutNext(static_cast<CuttingRelay::Cut>(where));
    const int status = post(target, body).status;
    QCOMPARE(relay->cuts(), cuts + 1);
    QVERIFY2(status == 200 || status == 201, qPrintable(QString::number(status)));
    QCOMPARE(rows(table), before + more);
}

// Two that are the same in everything are two messages: nobody but their sender knows whether both were
// meant.
void TestLostCommits::otherMessagesMayBeAlike()
{
    const int cuts = relay->cuts();
    for (int i = 0; i < 3; ++i) {
        relay->cutNext(CuttingRelay::Cut::AfterCommit);
        QCOMPARE(post("/api/chat/send", plainMessage(u"alice"_s, u"hello"_s)).status, 201);
    }
    QCOMPARE(relay->cuts(), cuts + 3);
    QCOMPARE(rows(u"messages"_s), 3);
}

// Whether it was stored, nobody can say then.
void TestLostCommits::whoNeverComesBackIsTold()
{
    api = makeApi(std::chrono::milliseconds(100));
    const int cuts = relay->cuts();
    relay->cutNext(CuttingRelay::Cut::AfterCommit, true);
    const Response refused = post("/api/chat/send", plainMessage(u"alice"_s, u"hello"_s));
    QCOMPARE(relay->cuts(), cuts + 1);
    QCOMPARE(refused.status, 503);
    QCOMPARE(ApiFixture::message(refused),
             u"The service cannot store anything at the moment. Please try again later."_s);
    relay->open();
    QTRY_COMPARE_WITH_TIMEOUT(post("/api/chat/send", sealedMessage(u"alice"_s)).status, 201, 30'000);
    QCOMPARE(rows(u"messages"_s), 2);
}

TIDELOFT_TEST_MAIN(TestLostCommits)
#include "tst_lost_commits.moc"
