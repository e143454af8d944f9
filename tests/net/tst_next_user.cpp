// Replies that come when the next user is signed in already: what the last one asked for is dropped.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/loopback_service.h"
#include "tests/support/net/endpoints.h"
#include "tests/support/net/finished_replies.h"
#include "tests/support/test_main.h"
#include "tests/support/waiting.h"

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

const QByteArray me = QByteArrayLiteral("GET /api/me");

QByteArray profileOf(const QByteArray &name)
{
    return R"({"username":")" + name + R"("})";
}

/// NAME's profile comes, while earlier requests of the same path may still wait.
bool becomes(ReportLog &log, LoopbackService &service, const QByteArray &name)
{
    QSignalSpy loaded(&log.client, &tideloft::net::ApiClient::meLoaded);
    service.answer(me, 200, profileOf(name));
    const auto before = service.heldCount(me);
    log.client.fetchMe();
    if (before > 0 && waitFor([&] { return service.heldCount(me) > before; }))
        service.releaseAt(me, before);
    return loaded.wait();
}

} // namespace

class TestNextUser : public QObject
{
    Q_OBJECT

private slots:
    void onlySignInsAreReportedToTheNextUser_data();
    void onlySignInsAreReportedToTheNextUser();
};

void TestNextUser::onlySignInsAreReportedToTheNextUser_data()
{
    QTest::addColumn<int>("endpoint");
    QTest::addColumn<QByteArray>("next");
    QTest::addColumn<bool>("isReported");
    const QList<QByteArray> signIns{"POST /api/auth/login", "POST /api/auth/register", me};
    for (int i = 0; i < endpoints().size(); ++i) {
        const Endpoint &asked = endpoints().at(i);
        QTest::addRow("%s, the same user", asked.name) << i << QByteArray("alice") << true;
        QTest::addRow("%s, another user", asked.name)
            << i << QByteArray("bob") << signIns.contains(asked.key);
    }
}

void TestNextUser::onlySignInsAreReportedToTheNextUser()
{
    QFETCH(const int, endpoint);
    QFETCH(const QByteArray, next);
    QFETCH(const bool, isReported);
    const Endpoint &asked = endpoints().at(endpoint);
    LoopbackService service;
    ReportLog log;
    QVERIFY(becomes(log, service, "alice"));
    service.hold(asked.key);
    asked.ask(log);
    QTRY_COMPARE(service.heldCount(asked.key), 1);
    QVERIFY(becomes(log, service, next));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the replies so far
    FinishedReplies finished;
    log.forget();
    const QByteArray reply = profileOf(next);
    service.answer(asked.key, 200, reply);
    service.release(asked.key);
    QVERIFY(finished.reach(1));
    QStringList expected = asked.outcome({{}, QJsonDocument::fromJson(reply)});
    if (!isReported)
        expected.clear();
    expected.replaceInStrings(u"%1"_s, log.picturePath());
    QCOMPARE(log.reports(), expected);
    const bool hasLeft = isReported && asked.key == "POST /api/auth/logout";
    if (asked.key != "POST /api/auth/login")
        QCOMPARE(log.client.currentUsername(), hasLeft ? QString() : QString::fromUtf8(next));
}

TIDELOFT_TEST_MAIN(TestNextUser)
#include "tst_next_user.moc"
