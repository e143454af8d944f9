// What goes first once a service answers again that has left every connection hanging.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/request_priority.h"
#include "tests/support/loopback_service.h"
#include "tests/support/net/endpoints.h"
#include "tests/support/request_names.h"
#include "tests/support/test_main.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using tideloft::net::ApiClient;
using tideloft::net::RequestPriority;
using namespace tideloft::tests;

namespace
{

constexpr int connections = 6; // that the toolkit opens to one host
constexpr int refreshes = 200; // ten minutes' worth

} // namespace

class TestRequestOrder : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void theUsersRequestPassesAllRefreshes_data();
    void theUsersRequestPassesAllRefreshes();
    void allOfTheUsersRequestsPassTheRefreshes();
    void everyRefreshIsAnsweredInTheEnd();

private:
    void refresh(int times);
    bool hang();
    std::unique_ptr<LoopbackService> service;
    std::unique_ptr<ReportLog> log;
};

void TestRequestOrder::init()
{
    log.reset();
    service = std::make_unique<LoopbackService>();
    log = std::make_unique<ReportLog>();
    service->answer(requests::listConversations, 200, "[]");
    service->answer("GET /api/chat/history/carol", 200, "[]");
}

void TestRequestOrder::refresh(int times)
{
    for (int i = 0; i < times; ++i) {
        log->client.fetchConversations(RequestPriority::Refresh);
        log->client.fetchHistory(u"carol"_s, RequestPriority::Refresh);
    }
}

// Every connection waits for an answer, and many refreshes wait for a connection.
bool TestRequestOrder::hang()
{
    service->hold(requests::listConversations);
    service->hold("GET /api/chat/history/carol");
    refresh(refreshes);
    return waitFor([this] { return service->requests().size() == connections; });
}

void TestRequestOrder::theUsersRequestPassesAllRefreshes_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < endpoints().size(); ++i) {
        if (endpoints().at(i).key != requests::listConversations) // on the wire no different from a refresh
            QTest::newRow(endpoints().at(i).name) << i;
    }
}

void TestRequestOrder::theUsersRequestPassesAllRefreshes()
{
    QFETCH(const int, index);
    const Endpoint &endpoint = endpoints().at(index);
    QVERIFY(hang());
    service->clear();
    endpoint.ask(*log);
    service->releaseAt(requests::listConversations, 0); // one of six recovers
    QTRY_VERIFY(!service->requests().isEmpty());
    const RecordedRequest first = service->requests().first();
    QVERIFY2(first.matches(endpoint.key), first.target.constData());
}

void TestRequestOrder::allOfTheUsersRequestsPassTheRefreshes()
{
    service->answer("POST /api/chat/send", 200, "{}");
    QVERIFY(hang());
    service->clear();
    log->client.fetchUserPublicKeys(u"bob"_s);
    log->client.sendMessage(u"bob"_s, u"hello"_s);
    log->client.searchUsers(u"eve"_s);
    service->releaseAt(requests::listConversations, 0);
    QTRY_VERIFY(service->requests().size() >= 4);
    QList<QByteArray> first;
    for (int i = 0; i < 3; ++i)
        first.append(service->requests().at(i).target);
    // A body takes a moment longer to be handed over, so that those without one may pass it.
    std::sort(first.begin(), first.end());
    QCOMPARE(first,
             (QList<QByteArray>{"/api/chat/public-key/bob", "/api/chat/send", "/api/users/search?q=eve"}));
}

void TestRequestOrder::everyRefreshIsAnsweredInTheEnd()
{
    QSignalSpy lists(&log->client, &ApiClient::conversationsLoaded);
    QSignalSpy histories(&log->client, &ApiClient::historyLoaded);
    QVERIFY(hang());
    service->release(requests::listConversations);
    service->release("GET /api/chat/history/carol");
    QTRY_COMPARE(lists.size(), refreshes);
    QTRY_COMPARE(histories.size(), refreshes);
}

TIDELOFT_TEST_MAIN(TestRequestOrder)
#include "tst_request_order.moc"
