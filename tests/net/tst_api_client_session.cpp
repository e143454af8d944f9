// The session: cookies that the service sets, and where redirects take them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/net/wire.h"
#include "tests/support/test_home.h"
#include "tests/support/test_main.h"

#include <QDirIterator>

using namespace Qt::StringLiterals;
using tideloft::net::ApiClient;
using namespace tideloft::tests;

namespace
{

bool fetchMe(ApiClient &client)
{
    QSignalSpy loaded(&client, &ApiClient::meLoaded);
    client.fetchMe();
    return loaded.wait();
}

} // namespace

class TestApiClientSession : public QObject
{
    Q_OBJECT

private slots:
    void cookiesAreSentBackAndKeptInMemoryOnly();
    void aClientStartsWithoutTheOtherOnesCookies();
    void theSessionsCookieOutlivesALogOut();
    void noChallengeIsAnswered_data();
    void noChallengeIsAnswered();
    void redirectsAreFollowed();
    void redirectsToAnotherOriginRepeatEverything();
    void redirectsThatNeverEndFail();
};

void TestApiClientSession::cookiesAreSentBackAndKeptInMemoryOnly()
{
    LoopbackService service;
    service.answer("POST /api/auth/login", 200, "{}",
                   {{"Set-Cookie", "session=s3cret; Path=/; HttpOnly; Max-Age=2592000"}});
    service.answer("GET /api/me", 200, "{}");
    ApiClient client;
    QSignalSpy signedIn(&client, &ApiClient::loginSucceeded);
    client.login(u"alice"_s, u"pw"_s, true);
    QVERIFY(signedIn.wait());
    QVERIFY(!service.lastRequest("POST /api/auth/login").hasHeader("Cookie"));
    QVERIFY(fetchMe(client));
    QCOMPARE(service.lastRequest("GET /api/me").header("Cookie"), QByteArray("session=s3cret"));
    QStringList files;
    for (QDirIterator all(QDir::homePath(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
         all.hasNext();)
        files.append(QFileInfo(all.next()).fileName());
    QCOMPARE(files, QStringList{u"device_id.txt"_s});
}

void TestApiClientSession::aClientStartsWithoutTheOtherOnesCookies()
{
    LoopbackService service;
    service.answer("GET /api/me", 200, "{}", {{"Set-Cookie", "session=one"}});
    ApiClient first;
    QVERIFY(fetchMe(first));
    ApiClient second;
    QVERIFY(fetchMe(second));
    QVERIFY(!service.lastRequest().hasHeader("Cookie"));
}

// As it is documented: the cookies live as long as the program, whatever the service said of the log-out.
void TestApiClientSession::theSessionsCookieOutlivesALogOut()
{
    LoopbackService service;
    service.answer("GET /api/me", 200, "{}", {{"Set-Cookie", "session=one; Path=/"}});
    service.answer("POST /api/auth/login", 200, "{}");
    ApiClient client;
    QVERIFY(fetchMe(client));
    QSignalSpy signedIn(&client, &ApiClient::loginSucceeded);
    client.logout();
    client.login(u"bob"_s, u"pw"_s, false);
    QVERIFY(signedIn.wait());
    QCOMPARE(service.lastRequest("POST /api/auth/login").header("Cookie"), QByteArray("session=one"));
}

void TestApiClientSession::noChallengeIsAnswered_data()
{
    QTest::addColumn<QByteArray>("challenge");
    QTest::newRow("Basic") << QByteArray("Basic realm=\"x\"");
    QTest::newRow("Digest") << QByteArray(R"(Digest realm="x", nonce="abc", qop="auth")");
    QTest::newRow("NTLM") << QByteArray("NTLM");
    QTest::newRow("Negotiate, without a ticket") << QByteArray("Negotiate");
}

// Of itself the toolkit would ask again, and begin to introduce the user of the computer.
void TestApiClientSession::noChallengeIsAnswered()
{
    QFETCH(const QByteArray, challenge);
    LoopbackService service;
    const HeaderList headers{{"WWW-Authenticate", challenge}};
    service.answer("GET /api/me", 401, R"({"message":"no"})", headers);
    service.answer("POST /api/profile/avatar/upload", 401, "", headers);
    const QTemporaryDir pictures;
    const QString picture = pictures.filePath(u"me.png"_s);
    QVERIFY(QFile(picture).open(QIODevice::WriteOnly));
    ApiClient client;
    QSignalSpy failed(&client, &ApiClient::meFailed);
    QSignalSpy uploaded(&client, &ApiClient::avatarUploaded);
    client.fetchMe();
    QVERIFY(failed.wait());
    QCOMPARE(failed.first().first().toString(), u"no"_s);
    client.uploadAvatar(picture);
    QVERIFY(uploaded.wait());
    QCOMPARE(uploaded.first().first().toBool(), false);
    QCOMPARE(service.requests().size(), 2);
    for (const RecordedRequest &request : service.requests())
        QVERIFY(!request.hasHeader("Authorization"));
}

void TestApiClientSession::redirectsAreFollowed()
{
    LoopbackService service;
    service.answer("GET /api/me", 302, "", {{"Location", "/elsewhere"}});
    service.answer("GET /elsewhere", 200, R"({"username":"alice"})");
    ApiClient client;
    QVERIFY(fetchMe(client));
    QCOMPARE(client.currentUsername(), u"alice"_s);
    // The toolkit leaves out the type of a body that a redirected GET has not got.
    const QByteArray expected = jsonHead("GET /elsewhere", client);
    QCOMPARE(ownHead(service.lastRequest()),
             QByteArray(expected).replace("Content-Type: application/json\r\n", ""));
}

// The toolkit copies headers and body to wherever the service points, and the cookie to every port of its
// host: the service is trusted with it.
void TestApiClientSession::redirectsToAnotherOriginRepeatEverything()
{
    LoopbackService elsewhere;
    LoopbackService service;
    elsewhere.answer("POST /login", 200, "{}");
    service.answer("GET /api/me", 200, "{}", {{"Set-Cookie", "session=one; Path=/"}});
    service.answer("POST /api/auth/login", 307, "", {{"Location", elsewhere.url().toUtf8() + "/login"}});
    ApiClient client;
    QVERIFY(fetchMe(client));
    client.login(u"alice"_s, u"pw"_s, false);
    // Asked of the service: the toolkit, having moved a body, does not always tell how the request ended.
    QVERIFY(elsewhere.waitForRequests("POST /login", 1));
    const RecordedRequest repeated = elsewhere.lastRequest("POST /login");
    QCOMPARE(repeated.body, service.lastRequest().body);
    QCOMPARE(repeated.header("X-Device-Token"), client.deviceId().toUtf8());
    QCOMPARE(repeated.header("Cookie"), QByteArray("session=one"));
}

void TestApiClientSession::redirectsThatNeverEndFail()
{
    LoopbackService service;
    service.answer("GET /api/me", 302, "", {{"Location", "/api/me"}});
    ApiClient client;
    QSignalSpy failed(&client, &ApiClient::meFailed);
    client.fetchMe();
    QVERIFY(failed.wait());
    QCOMPARE(failed.first().first().toString(), u"Too many redirects"_s);
}

TIDELOFT_TEST_MAIN(TestApiClientSession)
#include "tst_api_client_session.moc"
