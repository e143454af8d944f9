// Which handler gets a request, and what becomes of its failures.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/router.h"
#include "tests/service/api_fixture.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using tideloft::tests::ApiFixture;

class TestRouter : public QObject
{
    Q_OBJECT

private slots:
    void paths_data();
    void paths();
    void wrongMethodNamesTheRightOnes();
    void uploadsAreExpectedWhereTheyWereAnnounced_data();
    void uploadsAreExpectedWhereTheyWereAnnounced();
    void failuresBecomeReplies();

private:
    static Response ask(const QByteArray &method, const QByteArray &target);
};

Response TestRouter::ask(const QByteArray &method, const QByteArray &target)
{
    Router router;
    router.add("GET", "/a/{name}", [](const Request &request) {
        return jsonResponse(QJsonObject{{u"got"_s, request.parameters.join(u'|')}});
    });
    router.add("POST", "/a/b", [](const Request &) -> Reply { throw Refusal(418, u"no"_s); });
    router.add("GET", "/broken", [](const Request &) -> Reply { throw std::runtime_error("pipe\nburst"); });
    router.add("GET", "/later", [](const Request &) -> Reply {
        return Later<Response>{[](const Finish<Response> &finish) { finish(jsonResponse(QJsonArray())); }};
    });
    return ApiFixture::finish(router.handle({method, target, {}, {}, {}}));
}

void TestRouter::paths_data()
{
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("parameter");
    QTest::newRow("plain") << QByteArray("/a/x") << 200 << u"x"_s;
    QTest::newRow("percent-encoded") << QByteArray("/a/%C3%A5%20x") << 200 << u"å x"_s;
    QTest::newRow("encoded slash stays inside") << QByteArray("/a/x%2Fy") << 200 << u"x/y"_s;
    QTest::newRow("query is cut off") << QByteArray("/a/x?a=/b/c") << 200 << u"x"_s;
    QTest::newRow("empty placeholder") << QByteArray("/a/") << 404 << QString();
    QTest::newRow("one segment too many") << QByteArray("/a/x/y") << 404 << QString();
    QTest::newRow("unknown") << QByteArray("/") << 404 << QString();
    QTest::newRow("dots are no way out") << QByteArray("/a/../broken") << 404 << QString();
}

void TestRouter::paths()
{
    QFETCH(QByteArray, target);
    QFETCH(int, status);
    QFETCH(QString, parameter);
    const Response response = ask("GET", target);
    QCOMPARE(response.status, status);
    QCOMPARE(ApiFixture::object(response).value(u"got"_s).toString(), parameter);
    QCOMPARE(response.route, status == 200 ? QByteArray("/a/{name}") : QByteArray());
}

void TestRouter::wrongMethodNamesTheRightOnes()
{
    const Response response = ask("DELETE", "/a/b");
    QCOMPARE(response.status, 405);
    QCOMPARE(response.headers.value(0), qMakePair(QByteArray("Allow"), QByteArray("GET, POST")));
    QVERIFY(!ApiFixture::message(response).isEmpty());
}

void TestRouter::uploadsAreExpectedWhereTheyWereAnnounced_data()
{
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<bool>("expected");
    const QByteArray upload = "POST";
    QTest::newRow("its path") << upload << QByteArray("/a/x/icon") << true;
    QTest::newRow("with a query") << upload << QByteArray("/a/x/icon?b") << true;
    QTest::newRow("other method") << QByteArray("PUT") << QByteArray("/a/x/icon") << false;
    QTest::newRow("longer path") << upload << QByteArray("/a/x/icon/") << false;
    QTest::newRow("empty placeholder") << upload << QByteArray("/a//icon") << false;
    QTest::newRow("other route") << upload << QByteArray("/a/x") << false;
    QTest::newRow("no route") << upload << QByteArray("/") << false;
}

void TestRouter::uploadsAreExpectedWhereTheyWereAnnounced()
{
    QFETCH(QByteArray, method);
    QFETCH(QByteArray, target);
    const auto answer = [](const Request &) { return Response(); };
    Router router;
    router.add("POST", "/a/{id}", answer);
    router.add("POST", "/a/{id}/icon", answer, BodySize::Upload);
    QTEST(router.bodySize({method, target, {}, {}, {}}) == BodySize::Upload, "expected");
}

void TestRouter::failuresBecomeReplies()
{
    QCOMPARE(ask("POST", "/a/b").status, 418);
    QCOMPARE(ApiFixture::message(ask("POST", "/a/b")), u"no"_s);
    const Response broken = ask("GET", "/broken");
    QCOMPARE(broken.status, 500);
    QCOMPARE(broken.problem, QByteArray("pipe\nburst"));
    QVERIFY(!broken.body.contains("burst"));
    QCOMPARE(broken.route, QByteArray("/broken"));
    QCOMPARE(ask("GET", "/a/x").route, QByteArray("/a/{name}"));
    QCOMPARE(ask("GET", "/nowhere").route, QByteArray());
    QCOMPARE(ask("GET", "/later").status, 200);
    QCOMPARE(ask("GET", "/later").route, QByteArray("/later"));
}

TIDELOFT_TEST_MAIN(TestRouter)
#include "tst_router.moc"
