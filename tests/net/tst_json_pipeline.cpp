// Replies in JSON with and without a cache: what has not changed is handed over as it was.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "net/json_pipeline.h"
#include "net/reply_caches.h"
#include "tests/support/loopback_service.h"
#include "tests/support/test_main.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>

using namespace Qt::StringLiterals;
using namespace tideloft::net;
using tideloft::tests::LoopbackService;

class TestJsonPipeline : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void statusAndDocumentAreHandedOver();
    void whatHasNotChangedIsHandedOverAsItWas();
    void nothingIsHandedOverOnceTheCacheIsCleared();
    void withoutACacheNothingIsCached();

private:
    QPointer<QNetworkReply> ask(ReplyCache *cache);

    std::unique_ptr<LoopbackService> service;
    std::unique_ptr<QNetworkAccessManager> network;
    std::unique_ptr<ReplyCaches> caches;
    QStringList handed; ///< status and document of each reply
};

void TestJsonPipeline::init()
{
    network = std::make_unique<QNetworkAccessManager>();
    service = std::make_unique<LoopbackService>();
    service->answer("GET /a", 200, "[1]", {{"ETag", "\"v1\""}});
    caches = std::make_unique<ReplyCaches>();
    caches->open();
    handed.clear();
}

QPointer<QNetworkReply> TestJsonPipeline::ask(ReplyCache *cache)
{
    QNetworkReply *reply = caches->tags.get(*network, QNetworkRequest(QUrl(service->url() + u"/a"_s)));
    handleJson(reply, this, *caches, cache, [this](const JsonReply &content, const ReplyOutcome &outcome) {
        handed.append(QString::number(content.httpStatus) + u' '
                      + QString::fromUtf8(content.document.toJson(QJsonDocument::Compact))
                      + outcome.errorText);
    });
    return reply;
}

void TestJsonPipeline::statusAndDocumentAreHandedOver()
{
    service->answer("GET /a", 401, R"({"message":"no"})");
    const QPointer<QNetworkReply> reply = ask(nullptr);
    QTRY_VERIFY(!reply);
    QCOMPARE(handed, QStringList{uR"(401 {"message":"no"}Host requires authentication)"_s});
}

void TestJsonPipeline::whatHasNotChangedIsHandedOverAsItWas()
{
    ask(&caches->history);
    QTRY_COMPARE(handed, QStringList{u"200 [1]"_s});
    service->answer("GET /a", 304, {});
    ask(&caches->history);
    QTRY_COMPARE(handed, (QStringList{u"200 [1]"_s, u"304 [1]"_s}));
    QCOMPARE(service->lastRequest().header("If-None-Match"), QByteArray("\"v1\""));
}

void TestJsonPipeline::nothingIsHandedOverOnceTheCacheIsCleared()
{
    ask(&caches->history);
    QTRY_COMPARE(handed.size(), 1);
    service->answer("GET /a", 304, {});
    const QPointer<QNetworkReply> reply = ask(&caches->history);
    caches->clear();
    QTRY_VERIFY(!reply);
    QCOMPARE(handed.size(), 1);
}

void TestJsonPipeline::withoutACacheNothingIsCached()
{
    ask(nullptr);
    QTRY_COMPARE(handed.size(), 1);
    ask(nullptr);
    QTRY_COMPARE(handed.size(), 2);
    QVERIFY(!service->lastRequest().hasHeader("If-None-Match"));
}

TIDELOFT_TEST_MAIN(TestJsonPipeline)
#include "tst_json_pipeline.moc"
