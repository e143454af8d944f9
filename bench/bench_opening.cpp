// What it takes to open a long conversation and to keep it open, as ratios measured in one run. Prints a line
// for each figure:
//     QT_QPA_PLATFORM=offscreen bench_opening
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/history_client.h"
#include "bench/paired_times.h"
#include "bench/raw_unwraps.h"
#include "crypto/keys/device_key_pair.h"
#include "tests/support/eager_history.h"
#include "tests/support/test_home.h"

#include <malloc.h>

using namespace Qt::StringLiterals;
using namespace tideloft;
using bench::HistoryClient;
using bench::medianOf;
using bench::millisecondsOf;
using bench::sealedHistory;

namespace
{

constexpr int runs = 5;
constexpr int many = 5'000;

/// Two times of one round.
struct Pair {
    double ours = 0;
    double other = 0;
};

/// The median of the ratios, and those of the times.
void reportMedian(const QByteArray &figure, const QList<Pair> &pairs, double target)
{
    QList<double> ratios;
    QList<double> ours;
    QList<double> others;
    for (const Pair &pair : pairs) {
        ratios.append(pair.ours / pair.other);
        ours.append(pair.ours);
        others.append(pair.other);
    }
    bench::reportRatio(figure, medianOf(ratios), target,
                       QByteArray::number(medianOf(ours), 'f', 1) + " ms to "
                           + QByteArray::number(medianOf(others), 'f', 1) + " ms");
}

/// Bytes of their own, as from the network: those of an earlier reply would be recognised by their place.
QByteArray arrivedBytes(const QByteArray &body)
{
    return {body.constData(), body.size()};
}

double parsing(const QByteArray &body)
{
    net::ReplyCache reply;
    return millisecondsOf([&reply, arrived = arrivedBytes(body)] { (void)reply.read(arrived); });
}

double opening(const QByteArray &body)
{
    HistoryClient client;
    return millisecondsOf([&client, arrived = arrivedBytes(body)] { client.show(arrived); });
}

void measureFirstScreen()
{
    const QByteArray longBody = sealedHistory(many);
    const QByteArray shortBody = sealedHistory(40);
    QList<Pair> whole;
    QList<Pair> unparsed;
    for (int i = 0; i < runs; ++i) {
        const Pair times{opening(longBody), opening(shortBody)};
        whole.append(times);
        unparsed.append({times.ours - parsing(longBody), times.other - parsing(shortBody)});
    }
    reportMedian("opening 5,000 sealed messages vs 40, reply's bytes to first screen painted, without JSON",
                 unparsed, 1.5);
    reportMedian("the same with JSON", whole, 3);
}

/// The longest turn of the event loop while somebody types and older messages are opened.
double longestTurn(const QByteArray &body)
{
    HistoryClient client;
    client.show(body);
    double longest = 0;
    while (!client.history()->isSettled()) {
        client.typeLetter();
        longest = qMax(longest, millisecondsOf([] { QApplication::processEvents(); }));
    }
    return longest;
}

void measureTurns()
{
    QList<double> longest;
    for (int i = 0; i < runs; ++i)
        longest.append(longestTurn(sealedHistory(many)));
    bench::report("longest turn of the event loop until 5,000 are opened and measured, typing meanwhile",
                  QByteArray::number(medianOf(longest), 'f', 1) + " ms", "at most 16 ms",
                  medianOf(longest) <= 16);
}

/// All MANY messages, and as many raw unwraps. Both take turns: a moment in which the machine is busy with
/// something else falls on both.
Pair allOpened(const QByteArray &body, bench::RawUnwraps &raw)
{
    constexpr int part = 25; // takes about as long as a slice
    HistoryClient client;
    Pair times;
    times.ours = millisecondsOf([&client, arrived = arrivedBytes(body)] { client.show(arrived); });
    for (int left = many; left > 0 || !client.history()->isSettled(); left -= part) {
        times.ours += millisecondsOf([] { QApplication::processEvents(); });
        if (left > 0)
            times.other += millisecondsOf([&] { raw.run(part); });
    }
    times.ours += millisecondsOf([&client] { client.finish(); });
    return times;
}

void measureAll()
{
    const QByteArray body = sealedHistory(many);
    bench::RawUnwraps raw;
    QList<Pair> times;
    for (int i = 0; i < runs; ++i)
        times.append(allOpened(body, raw));
    reportMedian("all 5,000 opened, measured and painted vs 5,000 raw unwraps", times, 1.5);
}

/// The time from a reply's bytes to what SHOW makes of its rows, painted.
template <typename Show> double refresh(HistoryClient &client, const QByteArray &body, Show show)
{
    return millisecondsOf([&, arrived = arrivedBytes(body)] {
        show(client.read(arrived));
        QApplication::sendPostedEvents();
    });
}

void measureRefresh()
{
    const QByteArray body = sealedHistory(many);
    HistoryClient client;
    client.show(body);
    client.finish();
    bench::ListWindow other(u"messageList"_s);
    delete other.history; // one of the two is enough
    auto *eager = new tests::EagerHistory(other.list);
    const auto lazily = [&](const QList<ui::HistoryRow> &rows) { client.history()->show(rows); };
    const auto eagerly = [&](const QList<ui::HistoryRow> &rows) { eager->show(rows); };
    refresh(client, body, eagerly);
    QList<Pair> unchanged;
    for (int i = 0; i < runs; ++i)
        unchanged.append({refresh(client, body, lazily), refresh(client, body, eagerly)});
    reportMedian("unchanged refresh of 5,000 vs a list that has all its widgets", unchanged, 1);
    QList<double> appended;
    for (int i = 1; i <= runs; ++i) {
        appended.append(refresh(client, sealedHistory(many + i), lazily));
        client.finish();
    }
    bench::report("one new message in 5,000, reply's bytes to painted",
                  QByteArray::number(medianOf(appended), 'f', 1) + " ms", "at most 12 ms",
                  medianOf(appended) <= 12);
}

double heapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return double(info.uordblks) + double(info.hblkhd);
}

double bytesOpen(int count)
{
    const QByteArray body = sealedHistory(count);
    const double before = heapBytes();
    HistoryClient client;
    client.show(body);
    client.finish();
    return heapBytes() - before;
}

void measureMemory()
{
    bytesOpen(200); // fonts and the like, once
    const double few = bytesOpen(200);
    const double each = (bytesOpen(20'000) - few) / 19'800 / 1e3;
    bench::report("memory of each message beyond the newest 200, 20,000 open",
                  QByteArray::number(each, 'f', 2) + " kB", "at most 4 kB", each <= 4);
}

} // namespace

int main(int argc, char **argv)
{
    const tests::TestHome home;
    const QApplication application(argc, argv);
    if (!crypto::ensureKeyPair())
        qFatal("No key pair.");
    measureFirstScreen();
    measureTurns();
    measureAll();
    measureRefresh();
    measureMemory();
    return 0;
}
