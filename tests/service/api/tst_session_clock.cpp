// Sessions while the clock of the computer is wrong.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/api_fixture.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using tideloft::tests::ApiFixture;

class TestSessionClock : public QObject
{
    Q_OBJECT

private slots:
    void clockThatJumpsSignsNobodyOut();

private:
    const QJsonObject alice{{u"username"_s, u"alice"_s}, {u"password"_s, u"a good password"_s}};
};

void TestSessionClock::clockThatJumpsSignsNobodyOut()
{
    ApiFixture fixture;
    const QByteArray before = fixture.signUp(u"alice"_s);
    fixture.jump = 40;
    QCOMPARE(fixture.get("/api/me", before).status, 200);
    const QByteArray meanwhile = ApiFixture::cookieOf(fixture.post("/api/auth/login", alice));
    for (const qint64 days : {40, 0, -40}) {
        fixture.jump = days;
        QCOMPARE(fixture.get("/api/me", before).status, 200);
        QCOMPARE(fixture.get("/api/me", meanwhile).status, 200);
    }
    fixture.jump = 40; // also one that is wrong at the start: who waits is signed in again
    ApiSettings settings;
    settings.scryptCost = {16, 8, 1};
    settings.now = [&] { return fixture.now.addDays(fixture.jump); };
    {
        const Api started({fixture.place()}, settings);
        const QByteArray body = QJsonDocument(alice).toJson();
        QCOMPARE(ApiFixture::finish(started.handle({"POST", "/api/auth/login", "application/json", {}, body}))
                     .status,
                 200);
    }
    fixture.jump = 0;
    const Api restarted({fixture.place()}, settings);
    QCOMPARE(ApiFixture::finish(restarted.handle({"GET", "/api/me", {}, before, {}})).status, 200);
}

TIDELOFT_TEST_MAIN(TestSessionClock)
#include "tst_session_clock.moc"
