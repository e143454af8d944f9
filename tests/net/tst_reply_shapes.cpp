// Every shape of a reply at every endpoint: what is reported of it, and that the next request works.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/long_form.h"
#include "tests/support/loopback_service.h"
#include "tests/support/net/endpoints.h"
#include "tests/support/net/finished_replies.h"
#include "tests/support/net/reply_shapes.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

QList<ReplyShape> shapes()
{
    static const QList<ReplyShape> all = documentShapes() + wireShapes();
    return all;
}

// What is only sent looks at a huge reply no closer than at a small one.
bool isForTheLongForm(const Endpoint &endpoint, const ReplyShape &shape)
{
    return rounds(0, 1) == 0 && endpoint.key.startsWith("POST") && shape.bytes.size() > 200'000;
}

// Long ones would fill the screen.
QString excerpt(const QStringList &reports)
{
    const QString text = reports.join(u" | "_s);
    return text.size() > 300 ? text.left(300) + u"... of %1"_s.arg(text.size()) : text;
}

} // namespace

class TestReplyShapes : public QObject
{
    Q_OBJECT

private slots:
    void init() { service = std::make_unique<LoopbackService>(); }
    void everyShapeAtEveryEndpoint_data();
    void everyShapeAtEveryEndpoint();

private:
    QStringList expected(const Endpoint &endpoint, ReplyContent content, const ReportLog &log) const;
    std::unique_ptr<LoopbackService> service;
};

// The short form takes every third pair: each shape at a third of the endpoints, each endpoint with a third
// of the shapes.
void TestReplyShapes::everyShapeAtEveryEndpoint_data()
{
    QTest::addColumn<int>("endpoint");
    QTest::addColumn<int>("shape");
    for (int i = 0; i < endpoints().size(); ++i) {
        for (int j = 0; j < shapes().size(); ++j) {
            if ((i + j) % rounds(3, 1) != 0 || isForTheLongForm(endpoints().at(i), shapes().at(j)))
                continue;
            QTest::addRow("%s: %s", endpoints().at(i).name, shapes().at(j).name.constData()) << i << j;
        }
    }
}

QStringList TestReplyShapes::expected(const Endpoint &endpoint, ReplyContent content,
                                      const ReportLog &log) const
{
    const QString path = QString::fromLatin1(endpoint.key.mid(endpoint.key.indexOf(' ') + 1));
    const QString query = endpoint.key.endsWith("/search") ? u"?q=eve"_s : QString();
    if (content.error.contains(u"%1"_s))
        content.error = content.error.arg(service->url() + path + query);
    QStringList reports = endpoint.outcome(content);
    return reports.replaceInStrings(u"%1"_s, log.picturePath());
}

void TestReplyShapes::everyShapeAtEveryEndpoint()
{
    QFETCH(const int, endpoint);
    QFETCH(const int, shape);
    const Endpoint &asked = endpoints().at(endpoint);
    const ReplyShape sent = shapes().at(shape);
    ReportLog log;
    FinishedReplies finished;

    service->raw(asked.key, sent.bytes, sent.closes);
    asked.ask(log);
    QVERIFY(finished.reach(1));
    const QStringList wanted = expected(asked, {sent.error, QJsonDocument::fromJson(sent.readsAs)}, log);
    QVERIFY2(log.reports() == wanted,
             qPrintable(u"reported: %1\nwanted: %2"_s.arg(excerpt(log.reports()), excerpt(wanted))));

    log.forget();
    service->answer(asked.key, 200, R"({"username":"alice"})");
    asked.ask(log);
    QVERIFY(finished.reach(2));
    QCOMPARE(log.reports(), expected(asked, {{}, QJsonDocument::fromJson(R"({"username":"alice"})")}, log));
}

TIDELOFT_TEST_MAIN(TestReplyShapes)
#include "tst_reply_shapes.moc"
