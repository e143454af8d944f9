// Whose work is done next: nobody waits for all that another one wants.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/service/api_fixture.h"
#include "tests/support/test_main.h"

#include <mutex>

using namespace Qt::StringLiterals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestTasks : public QObject
{
    Q_OBJECT

private slots:
    void oneAddressLeavesOthersTheirTurnToHash();
    void oneAddressLeavesOthersTheirTurnToRead();
};

void TestTasks::oneAddressLeavesOthersTheirTurnToHash()
{
    ApiFixture fixture([](ApiSettings &settings) {
        settings.scryptCost = {1 << 15, 8, 1};
        settings.waitingHashes = 8;
    });
    const QByteArray body(R"({"username": "nobody", "password": "a good password"})");
    const auto signIn = [&](const QByteArray &peer) {
        return ApiFixture::begin(
            fixture.api.handle({"POST", "/api/auth/login", "application/json", {}, body, peer}));
    };
    std::vector<std::shared_ptr<ApiFixture::Begun>> many;
    many.reserve(10);
    for (int i = 0; i < 10; ++i)
        many.push_back(signIn("1"));
    QTRY_COMPARE(fixture.api.queues().reads, std::size_t{0});
    const auto other = signIn("2");
    other->finished.acquire();
    QCOMPARE(other->response.status, 401);
    int refused = 0;
    for (const auto &one : many) {
        one->finished.acquire();
        refused += one->response.status == 503 ? 1 : 0;
    }
    QVERIFY(refused > 0);
}

void TestTasks::oneAddressLeavesOthersTheirTurnToRead()
{
    ApiFixture fixture;
    Semaphore held;
    Semaphore mayGoOn;
    for (int reader = 0; reader < 2; ++reader)
        QVERIFY(fixture.api.countSessions([&](const auto &) {
            held.release();
            mayGoOn.acquire();
        }));
    held.acquire(2);
    std::mutex mutex;
    QByteArrayList answered;
    Semaphore finished;
    for (const char *peer : {"much", "much", "much", "little"}) {
        const Reply reply = fixture.api.handle({"GET", "/api/me", {}, "tideloft_session=none", {}, peer});
        std::get<Later<Response>>(reply).start([&, peer](const Response &) {
            const std::lock_guard lock(mutex);
            answered << peer;
            finished.release();
        });
    }
    mayGoOn.release(); // one of the two
    finished.acquire(4);
    mayGoOn.release();
    QCOMPARE(answered, (QByteArrayList{"much", "little", "much", "much"}));
}

TIDELOFT_TEST_MAIN(TestTasks)
#include "tst_tasks.moc"
