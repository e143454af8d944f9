// Creating accounts, signing in and out, and how long a session lasts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/api_fixture.h"
#include "tests/support/test_main.h"

#include <QCryptographicHash>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using tideloft::tests::ApiFixture;

class TestAccounts : public QObject
{
    Q_OBJECT

private slots:
    void registering_data();
    void registering();
    void nameIsTakenInAnySpelling();
    void nameTakenWhileHashing();
    void wrongPasswordAndUnknownUserLookTheSame();
    void passwordsOfNobodyAreHashedToo();
    void signInNormalisesTheName();
    void cookieOfARememberedSession();
    void cookieOfAPlainSession();
    void cookieOverPlainHttpIsNotSecure();
    void onlyTheHashOfTheCookieIsStored();
    void everySignInHasItsOwnSession();
    void sessionRunsOut_data();
    void sessionRunsOut();
    void oldSessionsAreDeleted();
    void signingOutEndsTheSession();
    void endpointsNeedASession_data();
    void endpointsNeedASession();

private:
    static QJsonObject credentials(const QString &name, const QString &password = u"a good password"_s)
    {
        return {{u"username"_s, name}, {u"password"_s, password}};
    }
    static QJsonObject remembered(const QString &name)
    {
        QJsonObject body = credentials(name);
        body.insert(u"rememberMe"_s, true);
        return body;
    }
};

void TestAccounts::registering_data()
{
    QTest::addColumn<QJsonObject>("body");
    QTest::addColumn<int>("status");
    QTest::newRow("good") << credentials(u" Alice "_s) << 201;
    QTest::newRow("bad name") << credentials(u"a/b/c"_s) << 400;
    QTest::newRow("name is a number")
        << QJsonObject{{u"username"_s, 123}, {u"password"_s, u"a good password"_s}} << 400;
    QTest::newRow("password of 7") << credentials(u"alice"_s, u"1234567"_s) << 400;
    QTest::newRow("password of 8") << credentials(u"alice"_s, u"12345678"_s) << 201;
    QTest::newRow("password of 7 emoji") << credentials(u"alice"_s, u"😀😀😀😀😀😀😀"_s) << 400;
    QTest::newRow("password of 8 blanks") << credentials(u"alice"_s, QString(8, u' ')) << 201;
    QTest::newRow("password of 256") << credentials(u"alice"_s, QString(256, u'x')) << 201;
    QTest::newRow("password of 257") << credentials(u"alice"_s, QString(257, u'x')) << 400;
    QTest::newRow("no password") << QJsonObject{{u"username"_s, u"alice"_s}} << 400;
}

void TestAccounts::registering()
{
    QFETCH(QJsonObject, body);
    QFETCH(int, status);
    ApiFixture fixture;
    const Response response = fixture.post("/api/auth/register", body);
    QCOMPARE(response.status, status);
    QCOMPARE(ApiFixture::message(response).isEmpty(), status == 201);
    QCOMPARE(ApiFixture::setCookieOf(response), QByteArray());
    QCOMPARE(fixture.database.run(u"SELECT 1 FROM users WHERE name = 'alice'"_s).next(), status == 201);
}

void TestAccounts::nameIsTakenInAnySpelling()
{
    ApiFixture fixture;
    QCOMPARE(fixture.post("/api/auth/register", credentials(u"alice"_s)).status, 201);
    const Response second = fixture.post("/api/auth/register", credentials(u" ALICE"_s));
    QCOMPARE(second.status, 409);
    QCOMPARE(ApiFixture::message(second), u"This user name is already taken."_s);
}

void TestAccounts::nameTakenWhileHashing()
{
    ApiFixture fixture;
    const QByteArray body = QJsonDocument(credentials(u"alice"_s)).toJson();
    const Request request{"POST", "/api/auth/register", "application/json", {}, body};
    const auto first = ApiFixture::begin(fixture.api.handle(request));
    const auto second = ApiFixture::begin(fixture.api.handle(request));
    first->finished.acquire();
    second->finished.acquire();
    QCOMPARE(qMin(first->response.status, second->response.status), 201);
    QCOMPARE(qMax(first->response.status, second->response.status), 409);
}

void TestAccounts::wrongPasswordAndUnknownUserLookTheSame()
{
    ApiFixture fixture;
    fixture.signUp(u"alice"_s);
    const Response wrong = fixture.post("/api/auth/login", credentials(u"alice"_s, u"another one"_s));
    const Response unknown = fixture.post("/api/auth/login", credentials(u"nobody"_s));
    const Response noName = fixture.post("/api/auth/login", credentials(u"' OR 1=1 --"_s));
    QCOMPARE(wrong.status, 401);
    QCOMPARE(ApiFixture::setCookieOf(wrong), QByteArray());
    QCOMPARE(unknown.status, 401);
    QCOMPARE(unknown.body, wrong.body);
    QCOMPARE(noName.body, wrong.body);
}

// An answer that came at once would tell that there is no such user. Here nobody hashes, so whoever needs a
// hash is refused.
void TestAccounts::passwordsOfNobodyAreHashedToo()
{
    ApiFixture fixture;
    fixture.signUp(u"alice"_s);
    ApiSettings settings;
    settings.waitingHashes = 0;
    const Api busy({fixture.place()}, settings);
    for (const QString &name : {u"alice"_s, u"nobody"_s, u"' OR 1=1 --"_s}) {
        const QByteArray body = QJsonDocument(credentials(name)).toJson();
        const Response response =
            ApiFixture::finish(busy.handle({"POST", "/api/auth/login", "application/json", {}, body}));
        QCOMPARE(response.status, 503);
        QCOMPARE(response.headers.value(0), qMakePair(QByteArray("Retry-After"), QByteArray("1")));
        QVERIFY(!ApiFixture::message(response).isEmpty());
    }
}

void TestAccounts::signInNormalisesTheName()
{
    ApiFixture fixture;
    fixture.signUp(u"alice"_s);
    const Response response = fixture.post("/api/auth/login", credentials(u" Alice "_s));
    QCOMPARE(response.status, 200);
    QCOMPARE(ApiFixture::object(response).value(u"username"_s).toString(), u"alice"_s);
}

void TestAccounts::cookieOfARememberedSession()
{
    ApiFixture fixture;
    fixture.signUp(u"alice"_s);
    const QByteArray cookie =
        ApiFixture::setCookieOf(fixture.post("/api/auth/login", remembered(u"alice"_s)));
    const QByteArray token = cookie.split(';').constFirst().split('=').value(1);
    QCOMPARE(QByteArray::fromBase64(token, QByteArray::Base64UrlEncoding).size(), 32);
    QCOMPARE(cookie,
             "tideloft_session=" + token + "; Path=/; HttpOnly; SameSite=Strict; Secure; Max-Age=2592000");
}

void TestAccounts::cookieOfAPlainSession()
{
    ApiFixture fixture;
    fixture.signUp(u"alice"_s);
    const QByteArray cookie =
        ApiFixture::setCookieOf(fixture.post("/api/auth/login", credentials(u"alice"_s)));
    QVERIFY(cookie.endsWith("; Path=/; HttpOnly; SameSite=Strict; Secure"));
}

void TestAccounts::cookieOverPlainHttpIsNotSecure()
{
    ApiFixture fixture;
    fixture.signUp(u"alice"_s);
    ApiSettings settings;
    settings.scryptCost = {16, 8, 1};
    settings.secureCookies = false;
    const Api plain({fixture.place()}, settings);
    const QByteArray body = QJsonDocument(credentials(u"alice"_s)).toJson();
    const Response response =
        ApiFixture::finish(plain.handle({"POST", "/api/auth/login", "application/json", {}, body}));
    QVERIFY(ApiFixture::setCookieOf(response).endsWith("; SameSite=Strict"));
}

void TestAccounts::onlyTheHashOfTheCookieIsStored()
{
    ApiFixture fixture;
    const QByteArray token = fixture.signUp(u"alice"_s).split('=').value(1);
    Rows query = fixture.database.run(u"SELECT token_hash FROM sessions"_s);
    QVERIFY(query.next());
    QCOMPARE(query.value(0).toByteArray(), QCryptographicHash::hash(token, QCryptographicHash::Sha256));
    QVERIFY(!query.next());
}

void TestAccounts::everySignInHasItsOwnSession()
{
    ApiFixture fixture;
    const QByteArray first = fixture.signUp(u"alice"_s);
    const QByteArray second = ApiFixture::cookieOf(fixture.post("/api/auth/login", credentials(u"alice"_s)));
    QVERIFY(first != second);
    QCOMPARE(fixture.get("/api/me", first).status, 200);
    QCOMPARE(fixture.get("/api/me", second).status, 200);
}

void TestAccounts::sessionRunsOut_data()
{
    QTest::addColumn<bool>("remember");
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<int>("status");
    const qint64 day = 24 * 60 * 60;
    QTest::newRow("just under a day") << false << day - 1 << 200;
    QTest::newRow("a day") << false << day << 401;
    QTest::newRow("remembered, just under 30 days") << true << 30 * day - 1 << 200;
    QTest::newRow("remembered, 30 days") << true << 30 * day << 401;
}

void TestAccounts::sessionRunsOut()
{
    QFETCH(bool, remember);
    QFETCH(qint64, seconds);
    QFETCH(int, status);
    ApiFixture fixture;
    fixture.signUp(u"alice"_s);
    QJsonObject body = credentials(u"alice"_s);
    body.insert(u"rememberMe"_s, remember);
    const QByteArray cookie = ApiFixture::cookieOf(fixture.post("/api/auth/login", body));
    fixture.now = fixture.now.addSecs(seconds);
    QCOMPARE(fixture.get("/api/me", cookie).status, status);
}

void TestAccounts::oldSessionsAreDeleted()
{
    ApiFixture fixture;
    fixture.signUp(u"alice"_s);
    fixture.now = fixture.now.addDays(62);
    fixture.post("/api/auth/login", credentials(u"alice"_s));
    Rows query = fixture.database.run(u"SELECT count(*) FROM sessions"_s);
    QVERIFY(query.next());
    QCOMPARE(query.value(0).toInt(), 1);
}

void TestAccounts::signingOutEndsTheSession()
{
    ApiFixture fixture;
    const QByteArray cookie = fixture.signUp(u"alice"_s);
    const QByteArray other = ApiFixture::cookieOf(fixture.post("/api/auth/login", credentials(u"alice"_s)));
    const Response response = fixture.call("POST", "/api/auth/logout", {}, cookie);
    QCOMPARE(response.status, 200);
    QVERIFY(ApiFixture::setCookieOf(response).startsWith("tideloft_session=; "));
    QVERIFY(ApiFixture::setCookieOf(response).endsWith("; Max-Age=0"));
    QCOMPARE(fixture.get("/api/me", cookie).status, 401);
    QCOMPARE(fixture.get("/api/me", other).status, 200);
}

void TestAccounts::endpointsNeedASession_data()
{
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<QByteArray>("target");
    for (const char *target :
         {"/api/me", "/api/users/search?q=a", "/api/chat/conversations", "/api/chat/history/bob",
          "/api/chat/device-keys/me", "/api/chat/public-key/bob"})
        QTest::newRow(target) << QByteArray("GET") << QByteArray(target);
    for (const char *target :
         {"/api/auth/logout", "/api/profile/update", "/api/chat/device-key", "/api/chat/send"})
        QTest::newRow(target) << QByteArray("POST") << QByteArray(target);
}

void TestAccounts::endpointsNeedASession()
{
    QFETCH(QByteArray, method);
    QFETCH(QByteArray, target);
    ApiFixture fixture;
    fixture.signUp(u"alice"_s);
    for (const char *cookie : {"", "tideloft_session=", "tideloft_session=AAAA", "other=1"}) {
        const Response response = fixture.call(method, target, "{}", cookie);
        QCOMPARE(response.status, 401);
        QCOMPARE(ApiFixture::message(response), u"Please sign in first."_s);
    }
}

TIDELOFT_TEST_MAIN(TestAccounts)
#include "tst_account_handlers.moc"
