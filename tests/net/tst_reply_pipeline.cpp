// Every reply is handed over once, with its outcome, and then deleted, even if nobody waits for it any more.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/reply_pipeline.h"
#include "tests/support/loopback_service.h"
#include "tests/support/test_main.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>

using namespace Qt::StringLiterals;
using namespace tideloft::net;
using tideloft::tests::LoopbackService;

class TestReplyPipeline : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void outcomeAndBodyAreHandedOver_data();
    void outcomeAndBodyAreHandedOver();
    void nothingIsHandedOverToWhoIsGone();
    void nothingIsHandedOverAfterDisconnecting();

private:
    QPointer<QNetworkReply> ask(const QObject *context);

    std::unique_ptr<LoopbackService> service;
    std::unique_ptr<QNetworkAccessManager> network;
    QStringList handed; ///< error text and body of each reply
};

void TestReplyPipeline::init()
{
    network = std::make_unique<QNetworkAccessManager>();
    service = std::make_unique<LoopbackService>();
    service->answer("GET /a", 200, "[1]");
    handed.clear();
}

QPointer<QNetworkReply> TestReplyPipeline::ask(const QObject *context)
{
    QNetworkReply *reply = network->get(QNetworkRequest(QUrl(service->url() + u"/a"_s)));
    handleReply(reply, context, [this](QNetworkReply &finished, const ReplyOutcome &outcome) {
        handed.append(outcome.errorText + u'|' + QString::fromUtf8(finished.readAll()));
    });
    return reply;
}

void TestReplyPipeline::outcomeAndBodyAreHandedOver_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("expected");
    QTest::newRow("success") << 200 << u"|[1]"_s;
    QTest::newRow("nobody is signed in") << 401 << u"Host requires authentication|[1]"_s;
}

void TestReplyPipeline::outcomeAndBodyAreHandedOver()
{
    QFETCH(const int, status);
    QFETCH(const QString, expected);
    service->answer("GET /a", status, "[1]");
    const QPointer<QNetworkReply> reply = ask(this);
    QTRY_VERIFY(!reply);
    QCOMPARE(handed, QStringList{expected});
}

void TestReplyPipeline::nothingIsHandedOverToWhoIsGone()
{
    auto context = std::make_unique<QObject>();
    const QPointer<QNetworkReply> reply = ask(context.get());
    context.reset();
    QTRY_VERIFY(!reply);
    QCOMPARE(service->requests().size(), 1);
    QVERIFY(handed.isEmpty());
}

void TestReplyPipeline::nothingIsHandedOverAfterDisconnecting()
{
    const QPointer<QNetworkReply> reply = ask(this);
    reply->disconnect(this);
    QTRY_VERIFY(!reply);
    QCOMPARE(service->requests().size(), 1);
    QVERIFY(handed.isEmpty());
}

TIDELOFT_TEST_MAIN(TestReplyPipeline)
#include "tst_reply_pipeline.moc"
