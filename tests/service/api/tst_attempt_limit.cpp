// How often one may try, and that nobody else is kept waiting for it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/api/attempt_limit.h"
#include "tests/service/api_fixture.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using tideloft::tests::ApiFixture;
using tideloft::tests::ChosenStorage;

class TestAttemptLimit : public QObject
{
    Q_OBJECT

private slots:
    void attemptsOfAMinuteAreCounted();
    void everyKeyIsCountedAlone();
    void noLimit();
    void floodOfKeysIsForgotten();
    void floodForgetsTheOldestAlone();
    void guessesAtOneAccountAreRefused();
    void guessesOfOneAddressAreRefused();
    void registrationsOfOneAddressAreRefused();

private:
    static Response ask(const Api &api, const QByteArray &path, const QString &name, const QByteArray &peer)
    {
        const QJsonObject body{{u"username"_s, name}, {u"password"_s, u"a good password"_s}};
        return ApiFixture::finish(
            api.handle({"POST", path, "application/json", {}, QJsonDocument(body).toJson(), peer}));
    }
    static QByteArray retryAfter(const Response &response)
    {
        for (const auto &[name, value] : response.headers) {
            if (name == "Retry-After")
                return value;
        }
        return {};
    }
    // How much is left of the minute depends on how long the test has taken, where a server's clock counts.
    static bool isWaitOfAMinute(const Response &response)
    {
        const int seconds = retryAfter(response).toInt();
        return ChosenStorage::isPostgresql() ? seconds > 0 && seconds <= 60 : seconds == 60;
    }
    void passMinute(ApiFixture &fixture)
    {
        now += 60'000;
        if (ChosenStorage::isPostgresql())
            fixture.database.run(u"UPDATE attempts SET at = at - INTERVAL '1 minute'"_s);
    }
    ApiSettings settings()
    {
        ApiSettings wanted;
        wanted.scryptCost = {16, 8, 1};
        wanted.signInsPerMinute = 2;
        wanted.registrationsPerMinute = 2;
        wanted.steadyNow = [this] { return now; };
        return wanted;
    }

    qint64 now = 5;
};

void TestAttemptLimit::attemptsOfAMinuteAreCounted()
{
    AttemptLimit limit(2);
    QCOMPARE(limit.attempt("a", 0), 0);
    QCOMPARE(limit.attempt("a", 10'000), 0);
    QCOMPARE(limit.attempt("a", 10'001), 50);
    QCOMPARE(limit.attempt("a", 59'999), 1);
    QCOMPARE(limit.attempt("a", 60'000), 0);
    QCOMPARE(limit.attempt("a", 60'000), 10);
}

void TestAttemptLimit::everyKeyIsCountedAlone()
{
    AttemptLimit limit(1);
    QCOMPARE(limit.attempt("a", 0), 0);
    QCOMPARE(limit.attempt("b", 0), 0);
    QVERIFY(limit.attempt("a", 0) > 0);
}

void TestAttemptLimit::noLimit()
{
    AttemptLimit limit(0);
    for (int i = 0; i < 100; ++i)
        QCOMPARE(limit.attempt("a", 0), 0);
}

void TestAttemptLimit::floodOfKeysIsForgotten()
{
    AttemptLimit limit(1);
    QCOMPARE(limit.attempt("honest", 0), 0);
    for (int i = 0; i < 5000; ++i)
        QCOMPARE(limit.attempt(QByteArray::number(i), 0), 0);
    QVERIFY(limit.attempt("honest", 0) > 0); // as long as it counts
    for (int i = 0; i < 20'000; ++i)
        QCOMPARE(limit.attempt(QByteArray::number(i), 60'000), 0);
    QCOMPARE(limit.attempt("honest", 60'000), 0);
}

void TestAttemptLimit::floodForgetsTheOldestAlone()
{
    AttemptLimit limit(1, 3);
    for (const char *key : {"a", "b", "c"})
        QCOMPARE(limit.attempt(key, 0), 0);
    QVERIFY(limit.attempt("a", 1) > 0); // which did not go on, so the attempt before is its last
    QCOMPARE(limit.attempt("d", 2), 0);
    for (const char *key : {"b", "c", "d"})
        QVERIFY2(limit.attempt(key, 3) > 0, key);
    QCOMPARE(limit.attempt("a", 4), 0);
}

void TestAttemptLimit::guessesAtOneAccountAreRefused()
{
    ApiFixture fixture;
    fixture.signUp(u"alice"_s);
    fixture.signUp(u"bob"_s);
    const Api api({fixture.place()}, settings());
    const auto guess = [&](const QString &name, const QByteArray &peer) {
        return ask(api, "/api/auth/login", name, peer);
    };
    QCOMPARE(guess(u"alice"_s, "1").status, 200);
    QCOMPARE(guess(u" ALICE"_s, "2").status, 200);
    const Response refused = guess(u"alice"_s, "3");
    QCOMPARE(refused.status, 429);
    QVERIFY2(isWaitOfAMinute(refused), retryAfter(refused).constData());
    QCOMPARE(ApiFixture::message(refused), u"Too many attempts. Please try again in a minute."_s);
    QCOMPARE(guess(u"nobody"_s, "4").status, 401);
    QCOMPARE(guess(u"nobody"_s, "5").status, 401);
    QCOMPARE(guess(u"nobody"_s, "6").status, 429); // as for who exists
    QCOMPARE(guess(u"bob"_s, "7").status, 200);
    passMinute(fixture);
    QCOMPARE(guess(u"alice"_s, "8").status, 200);
}

void TestAttemptLimit::guessesOfOneAddressAreRefused()
{
    ApiFixture fixture;
    for (const QString &name : {u"alice"_s, u"bob"_s, u"carol"_s})
        fixture.signUp(name);
    const Api api({fixture.place()}, settings());
    QCOMPARE(ask(api, "/api/auth/login", u"alice"_s, "1").status, 200);
    QCOMPARE(ask(api, "/api/auth/login", u"bob"_s, "1").status, 200);
    QCOMPARE(ask(api, "/api/auth/login", u"carol"_s, "1").status, 429);
    QCOMPARE(ask(api, "/api/auth/login", u"carol"_s, "2").status, 200); // that attempt did not count
    QCOMPARE(ask(api, "/api/auth/login", u"carol"_s, "2").status, 200);
}

void TestAttemptLimit::registrationsOfOneAddressAreRefused()
{
    ApiFixture fixture;
    const Api api({fixture.place()}, settings());
    QCOMPARE(ask(api, "/api/auth/register", u"alice"_s, "1").status, 201);
    QCOMPARE(ask(api, "/api/auth/register", u"alice"_s, "1").status, 409);
    const Response refused = ask(api, "/api/auth/register", u"bob"_s, "1");
    QCOMPARE(refused.status, 429);
    QVERIFY2(isWaitOfAMinute(refused), retryAfter(refused).constData());
    QCOMPARE(ask(api, "/api/auth/register", u"bob"_s, "2").status, 201);
}

TIDELOFT_TEST_MAIN(TestAttemptLimit)
#include "tst_attempt_limit.moc"
