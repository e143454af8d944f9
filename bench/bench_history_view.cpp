// What the rows of both lists cost, as ratios measured in one run. Prints a line for each figure:
//     QT_QPA_PLATFORM=offscreen bench_history_view
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/figures.h"
#include "bench/list_window.h"
#include "bench/naive_rows.h"

#include <QApplication>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <malloc.h>

using namespace Qt::StringLiterals;
using namespace tideloft;

namespace
{

constexpr int runs = 5;

QList<ui::HistoryRow> history(int count)
{
    const QString words = u"The quick brown fox jumps over the lazy dog and does not look back. "_s;
    QList<ui::DisplayRecord> records;
    const QDateTime start(QDate(2024, 5, 1), QTime(8, 0));
    for (int i = 0; i < count; ++i) {
        const bool isMine = i / 3 % 2;
        records.append(
            {.from = isMine ? u"alice"_s : u"bob"_s,
             .text = QString::number(i) + u' ' + words.repeated(1 + i % 5 / 2).left(12 + i * 37 % 180),
             .time = start.addSecs(qint64(i) * 97),
             .isMine = isMine});
    }
    return ui::historyRows(records, start.date(), ui::Language::English);
}

QList<ui::ConversationRowModel> conversations(int count)
{
    QList<ui::ConversationRowModel> rows;
    for (int i = 0; i < count; ++i)
        rows.append(
            {u"peer-%1"_s.arg(i), u"The quick brown fox jumps over the lazy dog %1"_s.arg(i), u"12:00"_s});
    return rows;
}

/// The middle one of several times, each after PREPARE.
double median(const std::function<void()> &prepare, const std::function<void()> &work)
{
    QList<double> times;
    for (int i = 0; i < runs; ++i) {
        prepare();
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        times.append(bench::drawnMilliseconds(work));
    }
    std::sort(times.begin(), times.end());
    return times.at(runs / 2);
}

double heapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return double(info.uordblks) + double(info.hblkhd);
}

/// Bytes on the heap that FILL leaves behind in a fresh window.
double bytesOf(const std::function<void(bench::ListWindow &)> &fill)
{
    bench::ListWindow window(u"messageList"_s);
    const double before = heapBytes();
    fill(window);
    while (!window.history->isSettled())
        QApplication::processEvents();
    QApplication::processEvents();
    return heapBytes() - before;
}

void print(const char *figure, const char *unit, double ours, double other, double ratio)
{
    std::printf("%-58s %10.3f %s %10.3f %s %9.2f\n", figure, ours, unit, other, unit, ratio);
    std::fflush(stdout);
}

// "12.3 ms, NAME 456.7 ms"
QByteArray both(double ours, double other, const char *unit, const char *name)
{
    return QByteArray::number(ours, 'f', 2) + unit + ", " + name + ' ' + QByteArray::number(other, 'f', 2)
           + unit;
}

void reportFaster(const QByteArray &figure, double ours, double naive, double target)
{
    bench::report(figure,
                  QByteArray::number(naive / ours, 'f', 1) + " times (" + both(ours, naive, " ms", "naive")
                      + ')',
                  "at least " + QByteArray::number(target, 'f', 0) + " times", naive >= target * ours);
}

void measureHistory(int count, bool withNaive)
{
    const QList<ui::HistoryRow> rows = history(count);
    bench::ListWindow window(u"messageList"_s);
    const auto clear = [&] { window.list->clear(); };
    const auto show = [&] { window.history->show(rows); };
    const double opened = median(clear, show);
    const double unchanged = median([] {}, show);
    const QList<ui::HistoryRow> shorter = rows.first(rows.size() - 1);
    const double appended = median([&] { window.history->show(shorter); }, show);
    const QList<ui::HistoryRow> later = rows.sliced(2);
    const double inserted = median([&] { window.history->show(later); }, show);
    window.list->clear();
    const double naive = withNaive ? median(clear, [&] { bench::showHistoryNaively(window.list, rows); }) : 0;
    std::printf("history of %d messages\n", count);
    print("  opening vs one row at a time", "ms", opened, naive, naive / opened);
    print("  unchanged vs one row at a time", "ms", unchanged, naive, naive / unchanged);
    print("  one new message at the end vs one row at a time", "ms", appended, naive, naive / appended);
    print("  one new message in front vs one row at a time", "ms", inserted, naive, naive / inserted);
    if (count != 1000 || !withNaive)
        return;
    reportFaster("widget part of an unchanged history refresh, 1,000 rows, vs one row at a time", unchanged,
                 naive, 500);
    reportFaster("widget part of one new message at the end of 1,000 vs one row at a time", appended, naive,
                 200);
    reportFaster("opening 1,000: widget part vs one row at a time", opened, naive, 8);
}

void measureGrowth()
{
    const auto opening = [](int count) {
        const QList<ui::HistoryRow> rows = history(count);
        bench::ListWindow window(u"messageList"_s);
        return median([&] { window.list->clear(); }, [&] { window.history->show(rows); });
    };
    const double small = opening(500);
    const double large = opening(5000);
    print("opening 5,000 messages vs 500", "ms", large, small, large / small);
    bench::reportRatio("opening: widget part, 5,000 vs 500 rows", large / small, 12,
                       both(large, small, " ms", "500 rows"));
}

void measureConversations(int count)
{
    const QList<ui::ConversationRowModel> rows = conversations(count);
    bench::ListWindow window(u"dmList"_s);
    const double naive = median([] {}, [&] { bench::showConversationsNaively(window.list, rows); });
    const double opened = median([&] { window.list->clear(); }, [&] { window.conversations->show(rows); });
    const double unchanged = median([] {}, [&] { window.conversations->show(rows); });
    std::printf("%d conversations\n", count);
    print("  opening vs one row at a time", "ms", opened, naive, naive / opened);
    print("  unchanged vs one row at a time", "ms", unchanged, naive, naive / unchanged);
    if (count == 200)
        reportFaster("unchanged conversation list refresh, 200 rows, vs one row at a time", unchanged, naive,
                     200);
}

void measureMemory()
{
    const QList<ui::HistoryRow> rows = history(1000);
    bytesOf(
        [&](bench::ListWindow &window) { window.history->show(history(50)); }); // fonts and the like, once
    const double ours = bytesOf([&](bench::ListWindow &window) { window.history->show(rows); });
    const double naive =
        bytesOf([&](bench::ListWindow &window) { bench::showHistoryNaively(window.list, rows); });
    print("memory a message, 1,000 messages, vs one row at a time", "kB", ours / 1e6, naive / 1e6,
          ours / naive);
    bench::reportRatio("memory a message at 1,000 vs one row at a time", ours / naive, 0.9,
                       both(ours / 1e6, naive / 1e6, " kB", "naive"));
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const QString only = arguments.value(1);
    std::printf("%-58s %10s    %10s    %9s\n", "median of 5", "measured", "other", "ratio");
    for (const int count : {50, 200, 1000, 5000}) {
        if (only.isEmpty() || only == QString::number(count))
            measureHistory(count, count <= 1000);
    }
    if (only.isEmpty() || only == u"growth"_s)
        measureGrowth();
    for (const int count : {20, 200, 1000}) {
        if (only.isEmpty() || only == u"conversations"_s)
            measureConversations(count);
    }
    if (only.isEmpty() || only == u"memory"_s)
        measureMemory();
    return 0;
}
