// Who may make an account: everybody, those who are invited, or nobody.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/accounts.h"
#include "service/store/invitations.h"
#include "tests/service/api_fixture.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using tideloft::tests::ApiFixture;

class TestRegistration : public QObject
{
    Q_OBJECT

private slots:
    void registering_data();
    void registering();
    void invitationIsForOneAccount();
    void revokedWhileHashing();
    void refusalTellsNoNames();
    void nameOfADeletedAccountIsTaken();
    void refusalsAreCountedToo();

private:
    static std::function<void(ApiSettings &)> with(Registration registration)
    {
        return [registration](ApiSettings &settings) { settings.registration = registration; };
    }
    static Response registerAs(const ApiFixture &fixture, const QString &name)
    {
        return fixture.post("/api/auth/register",
                            {{u"username"_s, name}, {u"password"_s, u"a good password"_s}});
    }
};

void TestRegistration::registering_data()
{
    QTest::addColumn<int>("registration");
    QTest::addColumn<bool>("isInvited");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("message");
    const QString uninvited = u"This user name is not invited. Please ask the person who runs the service."_s;
    const QString closed =
        u"New accounts cannot be created here. Please ask the person who runs the service."_s;
    QTest::newRow("open") << int(Registration::Open) << false << 201 << QString();
    QTest::newRow("open, invited") << int(Registration::Open) << true << 201 << QString();
    QTest::newRow("by invitation") << int(Registration::Invite) << false << 403 << uninvited;
    QTest::newRow("by invitation, invited") << int(Registration::Invite) << true << 201 << QString();
    QTest::newRow("closed") << int(Registration::Closed) << false << 403 << closed;
    QTest::newRow("closed, invited") << int(Registration::Closed) << true << 403 << closed;
}

void TestRegistration::registering()
{
    QFETCH(int, registration);
    QFETCH(bool, isInvited);
    QFETCH(int, status);
    QFETCH(QString, message);
    ApiFixture fixture(with(Registration(registration)));
    if (isInvited)
        addInvitation(fixture.database, u"erin"_s, 1);
    const Response response = registerAs(fixture, u" Erin"_s);
    QCOMPARE(response.status, status);
    QCOMPARE(ApiFixture::message(response), message);
    QCOMPARE(findUser(fixture.database, u"erin"_s).has_value(), status == 201);
    QCOMPARE(invitations(fixture.database).size(), isInvited && status != 201 ? 1 : 0);
}

void TestRegistration::invitationIsForOneAccount()
{
    ApiFixture fixture(with(Registration::Invite));
    addInvitation(fixture.database, u"erin"_s, 1);
    QCOMPARE(registerAs(fixture, u"frank"_s).status, 403);
    QCOMPARE(registerAs(fixture, u"erin"_s).status, 201);
    QCOMPARE(registerAs(fixture, u"erin"_s).status, 403);
}

void TestRegistration::revokedWhileHashing()
{
    ApiFixture fixture([](ApiSettings &settings) {
        settings.registration = Registration::Invite;
        settings.scryptCost = {1U << 15U, 8, 3};
    });
    addInvitation(fixture.database, u"erin"_s, 1);
    const QByteArray body = R"({"username": "erin", "password": "a good password"})";
    const auto begun =
        ApiFixture::begin(fixture.api.handle({"POST", "/api/auth/register", "application/json", {}, body}));
    const auto again =
        ApiFixture::begin(fixture.api.handle({"POST", "/api/auth/register", "application/json", {}, body}));
    begun->finished.acquire();
    again->finished.acquire(); // both were let in, and there is one invitation
    QCOMPARE(qMin(begun->response.status, again->response.status), 201);
    QCOMPARE(qMax(begun->response.status, again->response.status), 403);
}

// Who is not invited learns nothing about who is here.
void TestRegistration::refusalTellsNoNames()
{
    ApiFixture fixture(with(Registration::Invite));
    addUser(fixture.database, u"alice"_s, "hash", 1);
    const Response taken = registerAs(fixture, u"alice"_s);
    const Response free = registerAs(fixture, u"erin"_s);
    QCOMPARE(taken.status, free.status);
    QCOMPARE(taken.body, free.body);
}

void TestRegistration::nameOfADeletedAccountIsTaken()
{
    ApiFixture fixture;
    fixture.signUp(u"alice"_s);
    deleteUser(fixture.database, *findUser(fixture.database, u"alice"_s));
    const Response response = registerAs(fixture, u"alice"_s);
    QCOMPARE(response.status, 409);
    QCOMPARE(ApiFixture::message(response), u"This user name is already taken."_s);
}

void TestRegistration::refusalsAreCountedToo()
{
    ApiFixture fixture([](ApiSettings &settings) {
        settings.registration = Registration::Closed;
        settings.registrationsPerMinute = 1;
    });
    QCOMPARE(registerAs(fixture, u"erin"_s).status, 403);
    QCOMPARE(registerAs(fixture, u"erin"_s).status, 429);
}

TIDELOFT_TEST_MAIN(TestRegistration)
#include "tst_registration.moc"
