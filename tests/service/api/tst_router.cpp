// Which handler gets a request, and what becomes of its failures; the log's lines.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/http/access_log.h"
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
    void queryValues_data();
    void queryValues();
    void cookies_data();
    void cookies();
    void logLinesCannotBeForged();

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
    router.add("GET", "/late", [](const Request &) -> Reply {
        return Deferred{[]() -> Continuation { throw std::runtime_error("late"); }, {}};
    });
    router.add("GET", "/later", [](const Request &) -> Reply {
        return Deferred{[]() -> Continuation { return []() -> Response { throw Refusal(409, u"later"_s); }; },
                        {}};
    });
    return ApiFixture::finish(router.handle({method, target, {}, {}, {}, {}}));
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
    QTEST(router.bodySize({method, target, {}, {}, {}, {}}) == BodySize::Upload, "expected");
}

void TestRouter::failuresBecomeReplies()
{
    QCOMPARE(ask("POST", "/a/b").status, 418);
    QCOMPARE(ApiFixture::message(ask("POST", "/a/b")), u"no"_s);
    const Response broken = ask("GET", "/broken");
    QCOMPARE(broken.status, 500);
    QCOMPARE(broken.problem, QByteArray("pipe\nburst"));
    QVERIFY(!broken.body.contains("burst"));
    QCOMPARE(ask("GET", "/late").status, 500);
    QCOMPARE(ask("GET", "/late").route, QByteArray("/late"));
    QCOMPARE(ask("GET", "/later").status, 409);
}

void TestRouter::queryValues_data()
{
    QTest::addColumn<QByteArray>("query");
    QTest::addColumn<QString>("value");
    QTest::newRow("plain") << QByteArray("?q=bob") << u"bob"_s;
    QTest::newRow("encoded plus") << QByteArray("?q=a%2Bb") << u"a+b"_s;
    QTest::newRow("plus is a blank") << QByteArray("?q=a+b") << u"a b"_s;
    QTest::newRow("encoded percent") << QByteArray("?q=%2541") << u"%41"_s;
    QTest::newRow("ampersand and hash") << QByteArray("?q=a%26b%23c") << u"a&b#c"_s;
    QTest::newRow("letters beyond ASCII") << QByteArray("?q=%C3%85%C3%84%C3%96%F0%9F%98%80") << u"ÅÄÖ😀"_s;
    QTest::newRow("second item") << QByteArray("?x=1&q=2&q=3") << u"2"_s;
    QTest::newRow("equals in the value") << QByteArray("?q=a=b") << u"a=b"_s;
    QTest::newRow("no value") << QByteArray("?q") << QString();
    QTest::newRow("other item") << QByteArray("?qq=1") << QString();
    QTest::newRow("no query") << QByteArray() << QString();
}

void TestRouter::queryValues()
{
    QFETCH(QByteArray, query);
    QFETCH(QString, value);
    QCOMPARE(queryValue({"GET", "/search" + query, {}, {}, {}, {}}, "q"), value);
}

void TestRouter::cookies_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("alone") << QByteArray("id=1") << QByteArray("1");
    QTest::newRow("among others") << QByteArray("a=0; id=1; b=2") << QByteArray("1");
    QTest::newRow("longer name") << QByteArray("idx=2; xid=3") << QByteArray();
    QTest::newRow("none") << QByteArray() << QByteArray();
}

void TestRouter::cookies()
{
    QFETCH(QByteArray, header);
    QFETCH(QByteArray, value);
    QCOMPARE(cookieValue({"GET", "/", {}, header, {}, {}}, "id"), value);
}

void TestRouter::logLinesCannotBeForged()
{
    QCOMPARE(logLine("GET", ask("GET", "/a/x")), QByteArray("GET /a/{name} 200"));
    QCOMPARE(logLine("", ask("GET", "/nowhere")), QByteArray("- - 404"));
    QCOMPARE(logLine("GET", ask("GET", "/broken")), QByteArray("GET /broken 500: pipe\\x0aburst"));
    QCOMPARE(logLine("G\x1b[2J", ask("GET", "/x")), QByteArray("G\\x1b[2J - 404"));
}

TIDELOFT_TEST_MAIN(TestRouter)
#include "tst_router.moc"
