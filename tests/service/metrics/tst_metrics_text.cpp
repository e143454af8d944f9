// The text format, byte for byte, and the reader that other tests check it with.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/metrics/metrics_text.h"
#include "tests/service/metrics_parser.h"
#include "tests/support/test_main.h"

using namespace tideloft::service;
using namespace tideloft::tests;

class TestMetricsText : public QObject
{
    Q_OBJECT

private slots:
    void samplesAreWritten();
    void labelsAndHelpAreEscaped();
    void histogramIsCumulative();
    void largeNumbersAreWhole();
    void readerRefuses_data();
    void readerRefuses();
};

void TestMetricsText::samplesAreWritten()
{
    MetricsText text;
    text.begin("a_total", "counter", "What is counted.");
    text.sample({}, 3);
    text.sample({{"b", "c"}, {"d", "e"}}, 0.5);
    text.begin("g", "gauge", "What is.");
    text.sample({}, -1);
    QCOMPARE(text.text(),
             QByteArray("# HELP a_total What is counted.\n# TYPE a_total counter\na_total 3\n"
                        "a_total{b=\"c\",d=\"e\"} 0.5\n# HELP g What is.\n# TYPE g gauge\ng -1\n"));
    QCOMPARE(parsedMetrics(text.text()).problem, QString());
}

void TestMetricsText::labelsAndHelpAreEscaped()
{
    MetricsText text;
    text.begin("g", "gauge", "a\\b\nc\"d");
    text.sample({{"l", "a\\b\nc\"d}"}}, 1);
    QCOMPARE(text.text(),
             QByteArray("# HELP g a\\\\b\\nc\"d\n# TYPE g gauge\ng{l=\"a\\\\b\\nc\\\"d}\"} 1\n"));
    QCOMPARE(parsedMetrics(text.text()).problem, QString());
}

void TestMetricsText::histogramIsCumulative()
{
    Histogram histogram({0.5, 2});
    for (const double seconds : {0.25, 1.0, 1.0, 4.0})
        histogram.observe(seconds);
    MetricsText text;
    text.begin("h", "histogram", "How long.");
    text.sample({{"r", "x"}}, histogram);
    QCOMPARE(text.text(),
             QByteArray("# HELP h How long.\n# TYPE h histogram\n"
                        "h_bucket{r=\"x\",le=\"0.5\"} 1\nh_bucket{r=\"x\",le=\"2\"} 3\n"
                        "h_bucket{r=\"x\",le=\"+Inf\"} 4\nh_sum{r=\"x\"} 6.25\nh_count{r=\"x\"} 4\n"));
    QCOMPARE(parsedMetrics(text.text()).problem, QString());
}

void TestMetricsText::largeNumbersAreWhole()
{
    MetricsText text;
    text.begin("g", "gauge", "Bytes.");
    text.sample({}, 123456789012345);
    QVERIFY(text.text().endsWith("\ng 123456789012345\n"));
}

void TestMetricsText::readerRefuses_data()
{
    QTest::addColumn<QByteArray>("text");
    const QByteArray gauge = "# HELP g x\n# TYPE g gauge\n";
    const QByteArray histogram = "# HELP h x\n# TYPE h histogram\n";
    QTest::newRow("no line break at the end") << gauge + "g 1";
    QTest::newRow("no type") << QByteArray("# HELP g x\ng 1\n");
    QTest::newRow("sample of another metric") << gauge + "f 1\n";
    QTest::newRow("twice") << gauge + "g 1\ng 1\n";
    QTest::newRow("metric twice") << gauge + gauge;
    QTest::newRow("open quotation mark") << gauge + "g{a=\"b} 1\n";
    QTest::newRow("sign that is not escaped") << gauge + "g{a=\"b\"c\"} 1\n";
    QTest::newRow("two values") << gauge + "g 1 x\n";
    QTest::newRow("no number") << gauge + "g one\n";
    QTest::newRow("counter by another name") << QByteArray("# HELP g x\n# TYPE g counter\ng 1\n");
    QTest::newRow("no last bucket") << histogram + "h_bucket{le=\"1\"} 1\nh_sum 1\nh_count 1\n";
    QTest::newRow("falling") << histogram
                                    + "h_bucket{le=\"1\"} 2\nh_bucket{le=\"+Inf\"} 1\nh_sum 1\nh_count 1\n";
    QTest::newRow("bounds out of order") << histogram + "h_bucket{le=\"2\"} 1\nh_bucket{le=\"1\"} 1\n";
    QTest::newRow("another count") << histogram + "h_bucket{le=\"+Inf\"} 1\nh_sum 1\nh_count 2\n";
    QTest::newRow("no sum") << histogram + "h_bucket{le=\"+Inf\"} 1\nh_count 1\n";
    QTest::newRow("no count") << histogram + "h_bucket{le=\"+Inf\"} 1\nh_sum 1\n";
}

void TestMetricsText::readerRefuses()
{
    QFETCH(QByteArray, text);
    QVERIFY(!parsedMetrics(text).problem.isEmpty());
}

TIDELOFT_TEST_MAIN(TestMetricsText)
#include "tst_metrics_text.moc"
