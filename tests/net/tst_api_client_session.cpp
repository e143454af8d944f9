// The session: cookies that the service sets, and where redirects take them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/test_home.h"
#include "tests/support/test_main.h"
#include "wire.h"

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
