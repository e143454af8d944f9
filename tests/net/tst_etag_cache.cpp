// Lists that have not changed: asked for by their tag, and shown as before without being sent again.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/net/wire.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using tideloft::net::ApiClient;
using namespace tideloft::tests;

namespace
{

const QByteArray withBob = QByteArrayLiteral("GET /api/chat/history/bob");
const QByteArray withCarol = QByteArrayLiteral("GET /api/chat/history/carol");
const QByteArray login = QByteArrayLiteral("POST /api/auth/login");
const QByteArray list = QByteArrayLiteral(R"([{"text":"hej","peer":"bob"},{"text":"hopp"}])");

const auto tagged = [](const QByteArray &tag) { return HeaderList{{"ETag", tag}}; };

} // namespace

class TestETagCache : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void unchangedListsAreShownAsBefore_data();
    void unchangedListsAreShownAsBefore();
    void withoutATagTheRequestIsAsEver_data();
    void withoutATagTheRequestIsAsEver();
    void changedListTakesThePlace();
    void everyAddressHasItsOwn();
    void onlyTheLatestAddressesAreKept();
    void failureForgetsNothing();
    void laterReplyDoesNotChangeWhatWasNamed();
    void tagsThatAreNoneAreNotRepeated_data();
    void tagsThatAreNoneAreNotRepeated();
    void redirectedRepliesAreNotKept();
    void nothingIsNamedBeforeSigningIn();
    void signingOutForgets();
    void signingInForgets();
    void unchangedAfterSigningOutShowsNothing();

private:
    void signIn(const QString &name = u"alice"_s);
    void ask(const QByteArray &key);
    /// What is emitted for one more request of KEY.
    QJsonArray shown(const QByteArray &key);
    QByteArray named(const QByteArray &key) const
    {
        return service->lastRequest(key).header("If-None-Match");
    }

    std::unique_ptr<LoopbackService> service;
    std::unique_ptr<ApiClient> client;
    QList<QJsonArray> arrays;
};

void TestETagCache::init()
{
    client.reset();
    service = std::make_unique<LoopbackService>();
    client = std::make_unique<ApiClient>();
    arrays.clear();
    const auto keep = [this](const QJsonArray &array) { arrays << array; };
    connect(client.get(), &ApiClient::conversationsLoaded, this, keep);
    connect(client.get(), &ApiClient::serversLoaded, this, keep);
    connect(client.get(), &ApiClient::historyLoaded, this,
            [keep](const QString &, const QJsonArray &items) { keep(items); });
    service->answer(login, 200, "{}");
    signIn();
}

void TestETagCache::signIn(const QString &name)
{
    QSignalSpy signedIn(client.get(), &ApiClient::loginSucceeded);
    client->login(name, u"pw"_s, false);
    QVERIFY(signedIn.wait());
}

void TestETagCache::ask(const QByteArray &key)
{
    if (key == requests::listServers)
        client->fetchServers();
    else if (key == requests::listConversations)
        client->fetchConversations();
    else
        client->fetchHistory(QString::fromLatin1(key.split('/').last()));
}

QJsonArray TestETagCache::shown(const QByteArray &key)
{
    const qsizetype before = arrays.size();
    ask(key);
    const bool came = waitFor([&] { return arrays.size() > before; });
    return came ? arrays.last() : QJsonArray{u"nothing was shown"_s};
}

void TestETagCache::unchangedListsAreShownAsBefore_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::newRow("servers") << requests::listServers;
    QTest::newRow("conversations") << requests::listConversations;
    QTest::newRow("history") << withBob;
}

void TestETagCache::unchangedListsAreShownAsBefore()
{
    QFETCH(const QByteArray, key);
    service->answer(key, 200, list, tagged("\"v1\""));
    const QJsonArray first = shown(key);
    QCOMPARE(first, QJsonDocument::fromJson(list).array());
    QVERIFY(!service->lastRequest(key).hasHeader("If-None-Match"));
    service->answer(key, 304, {}, tagged("\"v1\""));
    SignalLog log(*client);
    for (int time = 0; time < 2; ++time) {
        QCOMPARE(shown(key), first);
        QCOMPARE(named(key), QByteArray("\"v1\""));
    }
    QCOMPARE(log.emitted().size(), 2);
    QCOMPARE(log.emitted().constFirst(), log.emitted().constLast()); // and so no failure
}

void TestETagCache::withoutATagTheRequestIsAsEver_data()
{
    unchangedListsAreShownAsBefore_data();
}

void TestETagCache::withoutATagTheRequestIsAsEver()
{
    QFETCH(const QByteArray, key);
    service->answer(key, 200, list);
    for (int time = 0; time < 3; ++time) {
        QCOMPARE(shown(key), QJsonDocument::fromJson(list).array());
        QCOMPARE(ownHead(service->lastRequest(key)), jsonHead(key, *client));
    }
}

void TestETagCache::changedListTakesThePlace()
{
    service->answer(withBob, 200, "[1]", tagged("\"v1\""));
    QCOMPARE(shown(withBob), QJsonArray{1});
    service->answer(withBob, 200, "[1,2]", tagged("W/\"v2\""));
    QCOMPARE(shown(withBob), (QJsonArray{1, 2}));
    service->answer(withBob, 304, {});
    QCOMPARE(shown(withBob), (QJsonArray{1, 2}));
    QCOMPARE(named(withBob), QByteArray("W/\"v2\""));
    service->answer(withBob, 200, "[3]"); // a service that has stopped giving tags
    QCOMPARE(shown(withBob), QJsonArray{3});
    QCOMPARE(shown(withBob), QJsonArray{3});
    QVERIFY(!service->lastRequest(withBob).hasHeader("If-None-Match"));
}

void TestETagCache::everyAddressHasItsOwn()
{
    service->answer(withBob, 200, "[1]", tagged("\"b\""));
    service->answer(withCarol, 200, "[2]", tagged("\"c\""));
    shown(withBob);
    shown(withCarol);
    service->answer(withBob, 304, {});
    service->answer(withCarol, 304, {});
    QCOMPARE(shown(withBob), QJsonArray{1});
    QCOMPARE(named(withBob), QByteArray("\"b\""));
    QCOMPARE(shown(withCarol), QJsonArray{2});
    QCOMPARE(named(withCarol), QByteArray("\"c\""));
}

void TestETagCache::onlyTheLatestAddressesAreKept()
{
    const auto key = [](int i) { return "GET /api/chat/history/peer" + QByteArray::number(i); };
    for (int i = 0; i < 9; ++i) {
        service->answer(key(i), 200, "[1]", tagged("\"v\""));
        shown(key(i));
    }
    shown(key(1));
    QCOMPARE(named(key(1)), QByteArray("\"v\""));
    shown(key(0));
    QVERIFY(!service->lastRequest(key(0)).hasHeader("If-None-Match"));
}

void TestETagCache::failureForgetsNothing()
{
    service->answer(withBob, 200, "[1]", tagged("\"v1\""));
    shown(withBob);
    service->answer(withBob, 503, R"({"message":"busy"})", tagged("\"v2\""));
    QSignalSpy failed(client.get(), &ApiClient::historyFailed);
    ask(withBob);
    QVERIFY(failed.wait());
    QCOMPARE(failed.first().first().toString(), u"busy"_s);
    service->answer(withBob, 304, {});
    QCOMPARE(shown(withBob), QJsonArray{1});
    QCOMPARE(named(withBob), QByteArray("\"v1\""));
}

void TestETagCache::laterReplyDoesNotChangeWhatWasNamed()
{
    service->answer(withBob, 200, "[1]", tagged("\"v1\""));
    shown(withBob);
    service->hold(withBob);
    ask(withBob);
    ask(withBob);
    QVERIFY(service->waitForRequests(withBob, 3));
    service->answerOnce(withBob, 200, "[1,2]", tagged("\"v2\""));
    service->releaseAt(withBob, 0);
    QTRY_COMPARE(arrays.size(), 2);
    service->answer(withBob, 304, {});
    service->release(withBob);
    QTRY_COMPARE(arrays.size(), 3);
    QCOMPARE(arrays.last(), QJsonArray{1});
}

void TestETagCache::tagsThatAreNoneAreNotRepeated_data()
{
    QTest::addColumn<QByteArray>("tag");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("without quotes") << QByteArray("v1");
    QTest::newRow("one quote") << QByteArray("\"");
    QTest::newRow("quote inside") << QByteArray(R"("a"b")");
    QTest::newRow("blank inside") << QByteArray("\"a b\"");
    QTest::newRow("control character") << QByteArray("\"a\x01\"");
    QTest::newRow("too long") << '"' + QByteArray(200, 'a') + '"';
    QTest::newRow("not ASCII") << QByteArray("\"\xc3\xa5\"");
}

void TestETagCache::tagsThatAreNoneAreNotRepeated()
{
    QFETCH(const QByteArray, tag);
    service->answer(withBob, 200, "[1]", tagged(tag));
    shown(withBob);
    QCOMPARE(shown(withBob), QJsonArray{1});
    QVERIFY(!service->lastRequest(withBob).hasHeader("If-None-Match"));
}

void TestETagCache::redirectedRepliesAreNotKept()
{
    service->answer(withBob, 302, {}, {{"Location", "/elsewhere"}});
    service->answer("GET /elsewhere", 200, "[1]", tagged("\"v1\""));
    shown(withBob);
    QCOMPARE(shown(withBob), QJsonArray{1});
    QVERIFY(!service->lastRequest(withBob).hasHeader("If-None-Match"));
}

void TestETagCache::nothingIsNamedBeforeSigningIn()
{
    client->clearReplyCaches();
    service->answer(withBob, 200, "[1]", tagged("\"v1\""));
    shown(withBob);
    QCOMPARE(shown(withBob), QJsonArray{1});
    QVERIFY(!service->lastRequest(withBob).hasHeader("If-None-Match"));
    service->answer(withBob, 304, {}); // unasked, it is an empty reply like any other
    QCOMPARE(shown(withBob), QJsonArray());
}

void TestETagCache::signingOutForgets()
{
    service->answer(withBob, 200, "[1]", tagged("\"v1\""));
    shown(withBob);
    client->clearReplyCaches();
    signIn();
    QCOMPARE(shown(withBob), QJsonArray{1});
    QVERIFY(!service->lastRequest(withBob).hasHeader("If-None-Match"));
}

void TestETagCache::signingInForgets()
{
    service->answer(withBob, 200, "[1]", tagged("\"v1\""));
    shown(withBob);
    signIn(u"carl"_s);
    QCOMPARE(shown(withBob), QJsonArray{1});
    QVERIFY(!service->lastRequest(withBob).hasHeader("If-None-Match"));
}

void TestETagCache::unchangedAfterSigningOutShowsNothing()
{
    for (const QByteArray &key : {withBob, requests::listServers}) {
        service->answer(key, 200, "[1]", tagged("\"v1\""));
        shown(key);
        service->answer(key, 304, {});
        service->hold(key);
        ask(key);
        QVERIFY(service->waitForRequests(key, 2));
        SignalLog log(*client);
        client->clearReplyCaches();
        service->release(key);
        service->answer("GET /api/me", 200, "[]"); // which tells nothing
        client->fetchMe();
        QVERIFY(service->waitForRequests("GET /api/me", 1));
        QVERIFY(waitFor([&] { return client->findChildren<QNetworkReply *>().isEmpty(); }));
        QCOMPARE(log.emitted(), QList<QByteArray>());
        signIn();
        service->clear();
    }
}

TIDELOFT_TEST_MAIN(TestETagCache)
#include "tst_etag_cache.moc"
