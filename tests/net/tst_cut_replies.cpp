// Replies that are cut off in their body: whether the client notices, at whichever moment the end comes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "cutting_service.h"
#include "endpoints.h"
#include "finished_replies.h"
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

// What has to be reported of a reply that says nothing.
QStringList reportsOf(const Endpoint &endpoint, const QString &error, const ReportLog &log)
{
    return endpoint.outcome({error, {}}).replaceInStrings(u"%1"_s, log.picturePath());
}

} // namespace

class TestCutReplies : public QObject
{
    Q_OBJECT

private slots:
    void aBodyShorterThanItsLengthIsAFailure_data() { addEndpoints(); }
    void aBodyShorterThanItsLengthIsAFailure();
    void aChunkThatIsCutOffIsAFailureOrSaysNothing_data() { addEndpoints(); }
    void aChunkThatIsCutOffIsAFailureOrSaysNothing();
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
        QCOMPARE(log.reports(), reportsOf(asked, u"Connection closed"_s, log));
        log.forget();
    }
}

// There is no length to compare with: what the toolkit does not notice reads as an empty list or object.
void TestCutReplies::aChunkThatIsCutOffIsAFailureOrSaysNothing()
{
    QFETCH(const int, endpoint);
    const Endpoint &asked = endpoints().at(endpoint);
    const CuttingService service(
        "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nff\r\n[{\"peer\":\"bo");
    ReportLog log;
    FinishedReplies finished;
    asked.ask(log);
    QVERIFY(finished.reach(1));
    const QStringList reports = log.reports();
    QVERIFY2(reports == reportsOf(asked, u"Connection closed"_s, log) || reports == reportsOf(asked, {}, log),
             qPrintable(reports.join(u" | "_s)));
}

TIDELOFT_TEST_MAIN(TestCutReplies)
#include "tst_cut_replies.moc"
