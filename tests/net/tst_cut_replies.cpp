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

QStringList reportsOf(const Endpoint &endpoint, const ReplyContent &content, const ReportLog &log)
{
    return endpoint.outcome(content).replaceInStrings(u"%1"_s, log.picturePath());
}

} // namespace

class TestCutReplies : public QObject
{
    Q_OBJECT

private slots:
    void aBodyShorterThanItsLengthIsAFailure_data() { addEndpoints(); }
    void aBodyShorterThanItsLengthIsAFailure();
    void chunksWithoutEndAreAFailureOrReadAsTheyAre_data();
    void chunksWithoutEndAreAFailureOrReadAsTheyAre();
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

void TestCutReplies::chunksWithoutEndAreAFailureOrReadAsTheyAre_data()
{
    QTest::addColumn<int>("endpoint");
    QTest::addColumn<QByteArray>("chunk");
    QTest::addColumn<QByteArray>("readsAs");
    for (int i = 0; i < endpoints().size(); ++i) {
        QTest::addRow("%s: in a chunk", endpoints().at(i).name)
            << i << QByteArray("ff\r\n[{\"peer\":\"bo") << QByteArray();
        QTest::addRow("%s: without the last chunk", endpoints().at(i).name)
            << i << QByteArray("b\r\n{\"keys\":[]}\r\n") << QByteArray(R"({"keys":[]})");
    }
}

// There is no length to compare with: what the toolkit does not notice reads as what has come of it.
void TestCutReplies::chunksWithoutEndAreAFailureOrReadAsTheyAre()
{
    QFETCH(const int, endpoint);
    QFETCH(const QByteArray, chunk);
    QFETCH(const QByteArray, readsAs);
    const Endpoint &asked = endpoints().at(endpoint);
    const CuttingService service("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + chunk);
    ReportLog log;
    FinishedReplies finished;
    asked.ask(log);
    QVERIFY(finished.reach(1));
    const QJsonDocument document = QJsonDocument::fromJson(readsAs);
    const QStringList reports = log.reports();
    QVERIFY2(reports == reportsOf(asked, {u"Connection closed"_s, document}, log)
                 || reports == reportsOf(asked, {{}, document}, log),
             qPrintable(reports.join(u" | "_s)));
}

TIDELOFT_TEST_MAIN(TestCutReplies)
#include "tst_cut_replies.moc"
