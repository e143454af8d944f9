// Accounts that were disabled or deleted while the service runs.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/store/accounts.h"
#include "tests/service/api_fixture.h"
#include "tests/service/message_bodies.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestAccountStates : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void disabledIsToldSo();
    void wrongPasswordOfADisabledAccountTellsNothing();
    void disabledWhileHashingIsNotSignedIn();
    void passwordThatChangedWhileHashingIsRefused();
    void nothingIsStoredForADisabledAccount();
    void deletedWhileAMessageWaitsGetsNothing();
    void enabledIsAsBefore();
    void deletedLooksAsIfItHadNeverBeen();
    void deletedStaysInTheListsOfOthers();

private:
    User user(const QString &name) const { return *findUserOrDeleted(fixture->database, name); }
    Response signIn(const QString &password = u"a good password"_s) const
    {
        return fixture->post("/api/auth/login", {{u"username"_s, u"alice"_s}, {u"password"_s, password}});
    }

    QScopedPointer<ApiFixture> fixture;
    QByteArray alice;
    QByteArray bob;
};

void TestAccountStates::init()
{
    fixture.reset(new ApiFixture);
    alice = fixture->signUp(u"alice"_s);
    bob = fixture->signUp(u"bob"_s);
    QCOMPARE(fixture->post("/api/chat/send", plainMessage(u"bob"_s, u"hello"_s), alice).status, 201);
}

void TestAccountStates::disabledIsToldSo()
{
    disableUser(fixture->database, user(u"alice"_s));
    const Response response = signIn();
    QCOMPARE(response.status, 403);
    QCOMPARE(ApiFixture::message(response),
             u"This account is disabled. Please ask the person who runs the service."_s);
    QCOMPARE(ApiFixture::setCookieOf(response), QByteArray());
    QTRY_COMPARE(fixture->get("/api/me", alice).status, 401);
    QCOMPARE(fixture->get("/api/me", bob).status, 200);
    QCOMPARE(fixture->post("/api/chat/send", plainMessage(u"alice"_s, u"wait"_s), bob).status, 201);
}

void TestAccountStates::wrongPasswordOfADisabledAccountTellsNothing()
{
    const QByteArray before = signIn(u"a bad password"_s).body;
    disableUser(fixture->database, user(u"alice"_s));
    const Response response = signIn(u"a bad password"_s);
    QCOMPARE(response.status, 401);
    QCOMPARE(response.body, before);
}

void TestAccountStates::disabledWhileHashingIsNotSignedIn()
{
    Transaction nobodyElseWrites(fixture->database);
    lockUser(fixture->database, user(u"alice"_s));
    const QByteArray body = R"({"username": "alice", "password": "a good password"})";
    const auto begun =
        ApiFixture::begin(fixture->api.handle({"POST", "/api/auth/login", "application/json", {}, body}));
    disableUser(fixture->database, user(u"alice"_s));
    nobodyElseWrites.commit();
    begun->finished.acquire();
    QCOMPARE(begun->response.status, 403);
}

void TestAccountStates::passwordThatChangedWhileHashingIsRefused()
{
    Transaction nobodyElseWrites(fixture->database);
    lockUser(fixture->database, user(u"alice"_s));
    const QByteArray body = R"({"username": "alice", "password": "a good password"})";
    const auto begun =
        ApiFixture::begin(fixture->api.handle({"POST", "/api/auth/login", "application/json", {}, body}));
    setPassword(fixture->database, user(u"alice"_s), "another");
    nobodyElseWrites.commit();
    begun->finished.acquire();
    QCOMPARE(begun->response.status, 401);
}

// The session is still known in memory then.
void TestAccountStates::nothingIsStoredForADisabledAccount()
{
    QCOMPARE(fixture->get("/api/me", alice).status, 200);
    disableUser(fixture->database, user(u"alice"_s));
    const Response response = fixture->post("/api/chat/send", plainMessage(u"bob"_s, u"more"_s), alice);
    QCOMPARE(response.status, 401);
    QCOMPARE(ApiFixture::array(fixture->get("/api/chat/history/alice", bob)).size(), 1);
}

void TestAccountStates::deletedWhileAMessageWaitsGetsNothing()
{
    Transaction nobodyElseWrites(fixture->database);
    lockUser(fixture->database, user(u"alice"_s));
    const QByteArray body = QJsonDocument(plainMessage(u"alice"_s, u"too late"_s)).toJson();
    const auto begun =
        ApiFixture::begin(fixture->api.handle({"POST", "/api/chat/send", "application/json", bob, body}));
    QTRY_COMPARE(fixture->api.queues().reads, std::size_t{0});
    deleteUser(fixture->database, user(u"alice"_s));
    nobodyElseWrites.commit();
    begun->finished.acquire();
    QCOMPARE(begun->response.status, 404);
    QCOMPARE(ApiFixture::message(begun->response), u"There is no user with this name."_s);
    QCOMPARE(ApiFixture::array(fixture->get("/api/chat/history/alice", bob)).size(), 1);
}

void TestAccountStates::enabledIsAsBefore()
{
    disableUser(fixture->database, user(u"alice"_s));
    enableUser(fixture->database, user(u"alice"_s));
    const Response response = signIn();
    QCOMPARE(response.status, 200);
    QCOMPARE(fixture->get("/api/me", ApiFixture::cookieOf(response)).status, 200);
}

void TestAccountStates::deletedLooksAsIfItHadNeverBeen()
{
    const auto answers = [this](const QByteArray &name) {
        const QString to = QString::fromLatin1(name);
        const Response signedIn =
            fixture->post("/api/auth/login", {{u"username"_s, to}, {u"password"_s, u"a good password"_s}});
        const Response sent = fixture->post("/api/chat/send", plainMessage(to, u"hello"_s), bob);
        const Response keys = fixture->get("/api/chat/public-key/" + name, bob);
        const Response found = fixture->get("/api/users/search?q=" + name, bob);
        return QList<QByteArray>{signedIn.body, sent.body, keys.body, found.body};
    };
    deleteUser(fixture->database, user(u"alice"_s));
    QCOMPARE(answers("alice"), answers("nobody"));
}

void TestAccountStates::deletedStaysInTheListsOfOthers()
{
    deleteUser(fixture->database, user(u"alice"_s));
    QTRY_COMPARE(fixture->get("/api/me", alice).status, 401);
    const QJsonArray conversations = ApiFixture::array(fixture->get("/api/chat/conversations", bob));
    QCOMPARE(conversations.size(), 1);
    QCOMPARE(conversations[0][u"peer"_s].toString(), u"alice"_s);
    const QJsonArray history = ApiFixture::array(fixture->get("/api/chat/history/alice", bob));
    QCOMPARE(history.size(), 1);
    QCOMPARE(history[0][u"from"_s].toString(), u"alice"_s);
}

TIDELOFT_TEST_MAIN(TestAccountStates)
#include "tst_account_states.moc"
