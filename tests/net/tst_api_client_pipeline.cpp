// What all JSON requests share: their head, the failure texts, and how replies of every kind end.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/net/wire.h"
#include "tests/support/test_main.h"

#include <QNetworkReply>

using namespace Qt::StringLiterals;
using tideloft::net::ApiClient;
using namespace tideloft::tests;

namespace
{

// Notes the deferred deletion of every reply in the program.
class ReplyDeletions : public QObject
{
public:
    explicit ReplyDeletions(QStringList &log) : events(log) { qApp->installEventFilter(this); }

    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        if (event->type() == QEvent::DeferredDelete && qobject_cast<QNetworkReply *>(receiver))
            events.append(u"reply deleted"_s);
        return false;
    }

private:
    QStringList &events;
};

} // namespace

class TestApiClientPipeline : public QObject
{
    Q_OBJECT

private slots:
    void init() { service = std::make_unique<LoopbackService>(); }
    void constructionSendsNothing();
    void getRequestsCarryTypeAndDeviceHeaders();
    void failureTexts_data();
    void failureTexts();
    void aServiceThatIsDown();
    void aDroppedConnection();
    void aTruncatedBody();
    void aCompressedBodyIsRead();
    void aChunkedBodyIsRead();
    void anEmptyBodyIsASuccess();
    void aSlowReplyIsWaitedFor();
    void repliesArriveInTheServicesOrder();
    void repliesAreReleasedAfterTheirContinuation();
    void aDestroyedClientEmitsNothing();
    void aClientMayGoWhileItReports();

private:
    QString failureOf(ApiClient &client) const;
    std::unique_ptr<LoopbackService> service;
};

QString TestApiClientPipeline::failureOf(ApiClient &client) const
{
    QSignalSpy failed(&client, &ApiClient::meFailed);
    client.fetchMe();
    return failed.wait() ? failed.first().first().toString() : u"(no failure)"_s;
}

void TestApiClientPipeline::constructionSendsNothing()
{
    QObject parent;
    auto *client = new ApiClient(&parent);
    QCOMPARE(client->parent(), &parent);
    service->answer("GET /api/groups/settle", 500, "");
    QVERIFY(settle(*client));
    QCOMPARE(service->requests().size(), 1);
}

void TestApiClientPipeline::getRequestsCarryTypeAndDeviceHeaders()
{
    ApiClient client;
    failureOf(client);
    QCOMPARE(service->requests().size(), 1);
    const RecordedRequest request = service->lastRequest();
    QCOMPARE(ownHead(request), jsonHead("GET /api/me", client));
    QCOMPARE(request.body, QByteArray());
    QVERIFY(!request.hasHeader("Authorization"));
    QVERIFY(!request.hasHeader("Cookie"));
}

void TestApiClientPipeline::failureTexts_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("expected"); // %1: the URL
    const QString unauthorized = u"Host requires authentication"_s;
    const auto row = [](const char *name, int status, const char *body, const QString &expected) {
        QTest::newRow(name) << status << QByteArray(body) << expected;
    };
    row("message", 401, R"({"message":"Wrong password"})", u"Wrong password"_s);
    row("error", 401, R"({"error":"No session"})", u"No session"_s);
    row("message before error", 409, R"({"error":"b","message":"a"})", u"a"_s);
    row("neither key", 401, R"({"detail":"x"})", u"Unknown error"_s);
    row("empty object", 500, "{}", u"Unknown error"_s);
    row("message that is no text", 400, R"({"message":7,"error":"b"})", QString());
    row("error that is no text", 400, R"({"error":["b"]})", QString());
    row("empty message", 400, R"({"message":"","error":"b"})", QString());
    row("HTML", 401, "<html>Sign in</html>", unauthorized);
    row("HTML of a broken gateway", 503, "<html>Sorry</html>",
        u"Error transferring %1 - server replied: Service Unavailable"_s);
    row("empty body", 500, "", u"Error transferring %1 - server replied: Internal Server Error"_s);
    row("array", 404, R"([{"message":"no"}])", u"Error transferring %1 - server replied: Not Found"_s);
    row("text", 403, R"("message")", u"Error transferring %1 - server replied: Forbidden"_s);
}

void TestApiClientPipeline::failureTexts()
{
    QFETCH(const int, status);
    QFETCH(const QByteArray, body);
    QFETCH(QString, expected);
    service->answer("GET /api/me", status, body);
    ApiClient client;
    if (expected.contains(u"%1"_s))
        expected = expected.arg(service->url() + u"/api/me"_s);
    QCOMPARE(failureOf(client), expected);
}

void TestApiClientPipeline::aServiceThatIsDown()
{
    service->stop();
    ApiClient client;
    const SignalLog log(client);
    QCOMPARE(failureOf(client), u"Connection refused"_s);
    QCOMPARE(log.emitted(), QList<QByteArray>{"meFailed"}); // and not networkError
}

void TestApiClientPipeline::aDroppedConnection()
{
    service->drop("GET /api/me");
    ApiClient client;
    QCOMPARE(failureOf(client), u"Connection closed"_s);
}

void TestApiClientPipeline::aTruncatedBody()
{
    service->raw("GET /api/chat/conversations", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n[1,2]");
    ApiClient client;
    const SignalLog log(client);
    QSignalSpy failed(&client, &ApiClient::conversationsFailed);
    client.fetchConversations();
    QVERIFY2(failed.wait(), log.emitted().join(' ').constData());
    QCOMPARE(failed.first().first().toString(), u"Connection closed"_s);
    QCOMPARE(log.emitted(), QList<QByteArray>{"conversationsFailed"});
}

void TestApiClientPipeline::aCompressedBodyIsRead()
{
    const QByteArray zlib = qCompress(R"([{"peer":"bob"}])").mid(4); // what follows the toolkit's own length
    service->answer("GET /api/chat/conversations", 200, zlib, {{"Content-Encoding", "deflate"}});
    ApiClient client;
    QSignalSpy loaded(&client, &ApiClient::conversationsLoaded);
    client.fetchConversations();
    QVERIFY(loaded.wait());
    QCOMPARE(loaded.first().first().toJsonArray(), (QJsonArray{QJsonObject{{u"peer"_s, u"bob"_s}}}));
}

void TestApiClientPipeline::aChunkedBodyIsRead()
{
    service->raw("GET /api/chat/conversations",
                 "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\n[1,\r\n2\r\n2]\r\n0\r\n\r\n");
    ApiClient client;
    QSignalSpy loaded(&client, &ApiClient::conversationsLoaded);
    client.fetchConversations();
    QVERIFY(loaded.wait());
    QCOMPARE(loaded.first().first().toJsonArray(), (QJsonArray{1, 2}));
}

void TestApiClientPipeline::anEmptyBodyIsASuccess()
{
    service->answer("GET /api/chat/conversations", 200, "");
    ApiClient client;
    QSignalSpy loaded(&client, &ApiClient::conversationsLoaded);
    client.fetchConversations();
    QVERIFY(loaded.wait());
    QCOMPARE(loaded.first().first().toJsonArray(), QJsonArray());
}

void TestApiClientPipeline::aSlowReplyIsWaitedFor()
{
    service->answer("GET /api/me", 200, "{}");
    service->hold("GET /api/me");
    ApiClient client;
    const SignalLog log(client);
    client.fetchMe();
    QVERIFY(service->waitForRequests("GET /api/me", 1));
    QVERIFY(settle(client)); // others pass it meanwhile
    QCOMPARE(log.emitted(), QList<QByteArray>{"serversFailed"});
    QSignalSpy loaded(&client, &ApiClient::meLoaded);
    service->release("GET /api/me");
    QVERIFY(loaded.wait());
}

void TestApiClientPipeline::repliesArriveInTheServicesOrder()
{
    service->hold("GET /api/chat/history/bob");
    ApiClient client;
    QSignalSpy loaded(&client, &ApiClient::historyLoaded);
    client.fetchHistory(u"bob"_s);
    QVERIFY(service->waitForRequests("GET /api/chat/history/bob", 1));
    client.fetchHistory(u"bob"_s);
    QVERIFY(service->waitForRequests("GET /api/chat/history/bob", 2)); // neither waits for the other
    service->answerOnce("GET /api/chat/history/bob", 200, "[2]");
    service->releaseAt("GET /api/chat/history/bob", 1);
    QVERIFY(loaded.wait());
    service->answerOnce("GET /api/chat/history/bob", 200, "[1]");
    service->releaseAt("GET /api/chat/history/bob", 0);
    QVERIFY(loaded.wait());
    QCOMPARE(loaded.at(0).at(1).toJsonArray(), QJsonArray{2});
    QCOMPARE(loaded.at(1).at(1).toJsonArray(), QJsonArray{1});
}

void TestApiClientPipeline::repliesAreReleasedAfterTheirContinuation()
{
    ApiClient client;
    QStringList events;
    const ReplyDeletions watch(events);
    connect(&client, &ApiClient::meFailed, this, [&] {
        // A deferred deletion waits for the loop that it was asked in, so this is no chance for it.
        QCoreApplication::processEvents();
        events.append(u"reported"_s);
    });
    client.fetchMe();
    QTRY_COMPARE(events, (QStringList{u"reported"_s, u"reply deleted"_s}));
}

void TestApiClientPipeline::aDestroyedClientEmitsNothing()
{
    service->hold("GET /api/me");
    service->hold("POST /api/profile/update");
    int reports = 0;
    auto client = std::make_unique<ApiClient>();
    connect(client.get(), &ApiClient::meLoaded, this, [&] { ++reports; });
    connect(client.get(), &ApiClient::meFailed, this, [&] { ++reports; });
    client->fetchMe();
    client->updateProfile({}, u"bio"_s, [&](bool, const QString &) { ++reports; });
    QVERIFY(service->waitForRequests("GET /api/me", 1));
    QVERIFY(service->waitForRequests("POST /api/profile/update", 1));
    client.reset();
    service->release("GET /api/me");
    service->release("POST /api/profile/update");
    ApiClient another;
    QVERIFY(settle(another));
    QCOMPARE(reports, 0);
}

// A window may be closed from within what it does about a reply.
void TestApiClientPipeline::aClientMayGoWhileItReports()
{
    auto *client = new ApiClient;
    const QPointer<ApiClient> watched(client);
    connect(client, &ApiClient::meFailed, client, &QObject::deleteLater);
    client->fetchMe();
    QTRY_VERIFY(!watched);
}

TIDELOFT_TEST_MAIN(TestApiClientPipeline)
#include "tst_api_client_pipeline.moc"
