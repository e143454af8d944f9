// What is counted of requests and commits.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/metrics/counters.h"
#include "tests/service/metrics_parser.h"
#include "tests/support/test_main.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace tideloft::service;
using namespace tideloft::tests;

class TestCounters : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsCountedAtFirst();
    void requestsAreCountedByRouteAndStatus();
    void strangersDoNotMakeRoutes();
    void durationsAreCounted();

private:
    static ParsedMetrics written(const Counters &counters)
    {
        MetricsText text;
        counters.write(text);
        return parsedMetrics(text.text());
    }
};

void TestCounters::nothingIsCountedAtFirst()
{
    const ParsedMetrics metrics = written(Counters());
    QCOMPARE(metrics.problem, QString());
    QCOMPARE(metrics.samples.value(u"tideloftd_commit_duration_seconds_count"_s, -1), 0.0);
}

void TestCounters::requestsAreCountedByRouteAndStatus()
{
    Counters counters;
    for (const int status : {200, 200, 404})
        counters.requestFinished("GET", "/a/{b}", status, 1ms);
    counters.requestFinished("POST", "/a/{b}", 201, 1ms);
    const ParsedMetrics metrics = written(counters);
    QCOMPARE(metrics.problem, QString());
    const QString requests = u"tideloftd_requests_total{method=\"%1\",route=\"/a/{b}\",status=\"%2\"}"_s;
    QCOMPARE(metrics.samples.value(requests.arg(u"GET"_s, u"200"_s)), 2.0);
    QCOMPARE(metrics.samples.value(requests.arg(u"GET"_s, u"404"_s)), 1.0);
    QCOMPARE(metrics.samples.value(requests.arg(u"POST"_s, u"201"_s)), 1.0);
}

void TestCounters::strangersDoNotMakeRoutes()
{
    Counters counters;
    for (const char *method : {"GET", "BREW", "\"\\\n"})
        counters.requestFinished(method, {}, 404, 1ms);
    const ParsedMetrics metrics = written(counters);
    QCOMPARE(metrics.problem, QString());
    QCOMPARE(
        metrics.samples.value(u"tideloftd_requests_total{method=\"other\",route=\"other\",status=\"404\"}"_s),
        3.0);
}

void TestCounters::durationsAreCounted()
{
    Counters counters;
    counters.requestFinished("GET", "/a", 200, 3ms);
    counters.requestFinished("GET", "/a", 500, 2s);
    counters.commitFinished(20ms);
    const ParsedMetrics metrics = written(counters);
    const QString of = u"{method=\"GET\",route=\"/a\"%1}"_s;
    const auto atMost = [&](const QString &bound) {
        const QString name = u"tideloftd_request_duration_seconds_bucket"_s;
        return metrics.samples.value(name + of.arg(u",le=\"%1\""_s.arg(bound)));
    };
    QCOMPARE(atMost(u"0.0025"_s), 0.0);
    QCOMPARE(atMost(u"0.005"_s), 1.0);
    QCOMPARE(atMost(u"2.5"_s), 2.0);
    QCOMPARE(metrics.samples.value(u"tideloftd_request_duration_seconds_sum"_s + of.arg(QString())), 2.003);
    QCOMPARE(metrics.samples.value(u"tideloftd_commit_duration_seconds_sum"_s), 0.02);
    QCOMPARE(metrics.samples.value(u"tideloftd_commit_duration_seconds_count"_s), 1.0);
}

TIDELOFT_TEST_MAIN(TestCounters)
#include "tst_counters.moc"
