// The own profile, finding users, and the answer for who watches over the service.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/facts.h"
#include "tests/service/api_fixture.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using tideloft::tests::ApiFixture;

class TestProfile : public QObject
{
    Q_OBJECT

private slots:
    void healthNeedsNoSession();
    void profileOfANewUser();
    void bio_data();
    void bio();
    void search_data();
    void search();
    void searchIsLimited();
    void searchesOfOneUserAreLimited();
    void healthIsAskedForOnceAtATime();

private:
    static QStringList found(ApiFixture &fixture, const QByteArray &query, const QByteArray &cookie);
};

void TestProfile::healthNeedsNoSession()
{
    ApiFixture fixture;
    const Response response = fixture.get("/healthz", {});
    QCOMPARE(response.status, 200);
    QCOMPARE(response.body, QByteArray("{\"status\":\"ok\"}"));
}

void TestProfile::profileOfANewUser()
{
    ApiFixture fixture;
    const QByteArray cookie = fixture.signUp(u"Alice"_s);
    const QJsonObject expected{{u"username"_s, u"alice"_s}, {u"bio"_s, u""_s}, {u"avatarUrl"_s, u""_s}};
    QCOMPARE(ApiFixture::object(fixture.get("/api/me", cookie)), expected);
}

void TestProfile::bio_data()
{
    QTest::addColumn<QJsonValue>("bio");
    QTest::addColumn<int>("status");
    QTest::newRow("text") << QJsonValue(u"Hej 😀\nsecond line"_s) << 200;
    QTest::newRow("empty") << QJsonValue(u""_s) << 200;
    QTest::newRow("SQL is only text") << QJsonValue(u"'); DROP TABLE users; --"_s) << 200;
    QTest::newRow("1000 characters") << QJsonValue(QString(1000, u'x')) << 200;
    QTest::newRow("1001 characters") << QJsonValue(QString(1001, u'x')) << 400;
    QTest::newRow("number") << QJsonValue(5) << 400;
    QTest::newRow("missing") << QJsonValue(QJsonValue::Undefined) << 400;
}

void TestProfile::bio()
{
    QFETCH(QJsonValue, bio);
    QFETCH(int, status);
    ApiFixture fixture;
    const QByteArray cookie = fixture.signUp(u"alice"_s);
    const QByteArray other = fixture.signUp(u"bob"_s);
    fixture.post("/api/profile/update", {{u"bio"_s, u"before"_s}}, cookie);
    QCOMPARE(fixture.post("/api/profile/update", {{u"bio"_s, bio}}, cookie).status, status);
    const QString expected = status == 200 ? bio.toString() : u"before"_s;
    QCOMPARE(ApiFixture::object(fixture.get("/api/me", cookie)).value(u"bio"_s).toString(), expected);
    QCOMPARE(ApiFixture::object(fixture.get("/api/me", other)).value(u"bio"_s).toString(), QString());
}

QStringList TestProfile::found(ApiFixture &fixture, const QByteArray &query, const QByteArray &cookie)
{
    QStringList names;
    const QJsonArray users = ApiFixture::array(fixture.get("/api/users/search" + query, cookie));
    for (const QJsonValue &user : users)
        names << user[u"username"_s].toString();
    return names;
}

void TestProfile::search_data()
{
    QTest::addColumn<QByteArray>("query");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("prefix before substring")
        << QByteArray("?q=bob") << QStringList{u"bob"_s, u"bob_2"_s, u"a.bob"_s};
    QTest::newRow("any case, blanks around") << QByteArray("?q=%20BOB_%20") << QStringList{u"bob_2"_s};
    QTest::newRow("never oneself") << QByteArray("?q=alice") << QStringList();
    QTest::newRow("underscore is no wildcard") << QByteArray("?q=b_b") << QStringList();
    QTest::newRow("percent is no wildcard") << QByteArray("?q=%25") << QStringList();
    QTest::newRow("quote") << QByteArray("?q=%27") << QStringList();
    QTest::newRow("one character") << QByteArray("?q=2") << QStringList{u"bob_2"_s};
    QTest::newRow("nobody") << QByteArray("?q=%F0%9F%98%80") << QStringList();
    QTest::newRow("empty") << QByteArray("?q=") << QStringList();
    QTest::newRow("missing") << QByteArray() << QStringList();
}

void TestProfile::search()
{
    QFETCH(QByteArray, query);
    QFETCH(QStringList, names);
    ApiFixture fixture;
    const QByteArray cookie = fixture.signUp(u"alice"_s);
    for (const QString &name : {u"a.bob"_s, u"bob_2"_s, u"bob"_s})
        fixture.signUp(name);
    QCOMPARE(found(fixture, query, cookie), names);
}

void TestProfile::searchIsLimited()
{
    ApiFixture fixture;
    const QByteArray cookie = fixture.signUp(u"alice"_s);
    for (int i = 10; i < 35; ++i)
        fixture.signUp(u"user%1"_s.arg(i));
    const QStringList names = found(fixture, "?q=user", cookie);
    QCOMPARE(names.size(), 20);
    QCOMPARE(names.constFirst(), u"user10"_s);
}

void TestProfile::searchesOfOneUserAreLimited()
{
    ApiFixture fixture([](ApiSettings &settings) { settings.searchesPerMinute = 2; });
    const QByteArray alice = fixture.signUp(u"alice"_s);
    const QByteArray bob = fixture.signUp(u"bob"_s);
    for (int i = 0; i < 2; ++i)
        QCOMPARE(fixture.get("/api/users/search?q=b", alice).status, 200);
    const Response refused = fixture.get("/api/users/search?q=b", alice);
    QCOMPARE(refused.status, 429);
    QVERIFY(refused.headers.contains(qMakePair(QByteArray("Retry-After"), QByteArray("60"))));
    QVERIFY(!ApiFixture::message(refused).isEmpty());
    QCOMPARE(fixture.get("/api/users/search?q=a", bob).status, 200);
    fixture.now = fixture.now.addSecs(60);
    QCOMPARE(fixture.get("/api/users/search?q=b", alice).status, 200);
}

// While nothing can be written, however many ask, one write waits; all get its answer.
void TestProfile::healthIsAskedForOnceAtATime()
{
    ApiFixture fixture;
    std::vector<std::shared_ptr<ApiFixture::Begun>> asked;
    {
        const Transaction nobodyElseWrites(fixture.database);
        setFact(fixture.database, u"probe"_s, 0); // where others may write, not this row
        for (int i = 0; i < 20; ++i)
            asked.push_back(ApiFixture::begin(fixture.api.handle({"GET", "/healthz", {}, {}, {}})));
        QVERIFY(fixture.api.queues().writes <= 1);
        fixture.now = fixture.now.addSecs(1); // it has had its second
        const Reply late = fixture.api.handle({"GET", "/healthz", {}, {}, {}});
        QVERIFY(std::holds_alternative<Response>(late));
        QCOMPARE(std::get<Response>(late).status, 503);
    }
    for (const auto &one : asked)
        one->finished.acquire();
    const int status = asked.front()->response.status; // the write may have had its turn in time
    QVERIFY2(status == 200 || status == 503, qPrintable(QString::number(status)));
    for (const auto &one : asked)
        QCOMPARE(one->response.status, status);
    QCOMPARE(fixture.get("/healthz", {}).status, 200);
}

TIDELOFT_TEST_MAIN(TestProfile)
#include "tst_profile_handlers.moc"
