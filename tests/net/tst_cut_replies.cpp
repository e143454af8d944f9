// Replies that are cut off in their body: whether the client notices, at whichever moment the end comes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/net/cutting_service.h"
#include "tests/support/net/endpoints.h"
#include "tests/support/net/finished_replies.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace tideloft::tests;

namespace
{

void addEndpoints()
{
    QTest::addColumn<int>("endpoint");
    for (int i = 0; i < endpoints().size(); ++i)
        QTest::newRow(endpoints().at(i).name) << i;
}

QStringList reportsOf(const Endpoint &endpoint, const ReplyContent &content, const ReportLog &log)
{
    QStringList reports = endpoint.outcome(content);
    reports.replaceInStrings(u"%1"_s, log.picturePath());
    return reports;
}

} // namespace

class TestCutReplies : public QObject
{
    Q_OBJECT

private slots:
    void aBodyShorterThanItsLengthIsAFailure_data() { addEndpoints(); }
    void aBodyShorterThanItsLengthIsAFailure();
    void withoutALengthACutIsAFailureOrReadsAsItIs_data();
    void withoutALengthACutIsAFailureOrReadsAsItIs();
};

// Many times, for what the toolkit makes of it depends on the moment at which it hears of the end.
void TestCutReplies::aBodyShorterThanItsLengthIsAFailure()
{
    QFETCH(const int, endpoint);
    const Endpoint &asked = endpoints().at(endpoint);
    const CuttingService service("HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\n[{\"peer\":\"bo");
    ReportLog log;
    FinishedReplies finished;
    for (int round = 1; round <= 12; ++round) {
        asked.ask(log);
        QVERIFY(finished.reach(round));
        QCOMPARE(log.reports(), reportsOf(asked, {u"Connection closed"_s, {}}, log));
        log.forget();
    }
}

void TestCutReplies::withoutALengthACutIsAFailureOrReadsAsItIs_data()
{
    QTest::addColumn<int>("endpoint");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QByteArray>("readsAs");
    const QByteArray chunks = "Transfer-Encoding: chunked\r\n\r\n";
    const QByteArray zipped = "Content-Encoding: gzip\r\nContent-Length: 33\r\n\r\n";
    for (int i = 0; i < endpoints().size(); ++i) {
        const auto row = [i](const char *name, const QByteArray &reply, const QByteArray &readsAs = {}) {
            QTest::addRow("%s: %s", endpoints().at(i).name, name) << i << reply << readsAs;
        };
        row("in a chunk", chunks + "ff\r\n[{\"peer\":\"bo");
        row("without the last chunk", chunks + "b\r\n{\"keys\":[]}\r\n", R"({"keys":[]})");
        row("in compressed bytes", zipped + QByteArray::fromHex("1f8b0800000000000003ab56"));
        row("where the connection's end is the body's", "\r\n[{\"peer\":\"bo");
    }
}

// There is nothing to compare with: what the toolkit does not notice reads as what has come of it.
void TestCutReplies::withoutALengthACutIsAFailureOrReadsAsItIs()
{
    QFETCH(const int, endpoint);
    QFETCH(const QByteArray, reply);
    QFETCH(const QByteArray, readsAs);
    const Endpoint &asked = endpoints().at(endpoint);
    const CuttingService service("HTTP/1.1 200 OK\r\n" + reply);
    const QJsonDocument document = QJsonDocument::fromJson(readsAs);
    ReportLog log;
    FinishedReplies finished;
    for (const int round : {1, 2}) {
        asked.ask(log);
        QVERIFY(finished.reach(round));
        const QStringList reports = log.reports();
        QVERIFY2(reports == reportsOf(asked, {u"Connection closed"_s, document}, log)
                     || reports == reportsOf(asked, {{}, document}, log),
                 qPrintable(reports.join(u" | "_s)));
        log.forget();
    }
}

TIDELOFT_TEST_MAIN(TestCutReplies)
#include "tst_cut_replies.moc"
