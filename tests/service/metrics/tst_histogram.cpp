// Counting by bounds.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/metrics/histogram.h"
#include "tests/support/test_main.h"

using namespace tideloft::service;

class TestHistogram : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsCountedAtFirst();
    void boundsCountWhatIsAsLong();
    void sumIsKept();
};

void TestHistogram::nothingIsCountedAtFirst()
{
    const Histogram histogram({1, 2});
    QCOMPARE(histogram.atMost(0), 0U);
    QCOMPARE(histogram.count(), 0U);
    QCOMPARE(histogram.sum(), 0.0);
}

void TestHistogram::boundsCountWhatIsAsLong()
{
    Histogram histogram({1, 2});
    for (const double seconds : {0.5, 1.0, 1.5, 2.0, 2.5, 100.0})
        histogram.observe(seconds);
    QCOMPARE(histogram.atMost(0), 2U);
    QCOMPARE(histogram.atMost(1), 4U);
    QCOMPARE(histogram.count(), 6U);
}

void TestHistogram::sumIsKept()
{
    Histogram histogram({1});
    histogram.observe(0.25);
    histogram.observe(4);
    QCOMPARE(histogram.sum(), 4.25);
}

TIDELOFT_TEST_MAIN(TestHistogram)
#include "tst_histogram.moc"
