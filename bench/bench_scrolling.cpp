// What a step of scrolling through a long conversation takes beside one through a short conversation. Prints
// a line for each figure, or for the one that is named:
//     QT_QPA_PLATFORM=offscreen bench_scrolling [wheel|page]
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/history_client.h"
#include "bench/paired_times.h"
#include "crypto/keys/device_key_pair.h"
#include "tests/support/test_home.h"

#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace tideloft;
using bench::HistoryClient;
using bench::medianOf;

namespace
{

constexpr int runs = 5;
constexpr int longHistory = 5'000;
constexpr int shortHistory = 200;

using Step = void (*)(const HistoryClient &client);

void turnWheel(const HistoryClient &client)
{
    QWidget *viewport = client.list()->viewport();
    QWheelEvent turned(QPointF(20, 20), viewport->mapToGlobal(QPointF(20, 20)), {}, {0, 120}, {}, {},
                       Qt::NoScrollPhase, false);
    QApplication::sendEvent(viewport, &turned);
}

void turnPage(const HistoryClient &client)
{
    client.list()->verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepSub);
}

/// The steps from the end of a conversation to its beginning, painted, in milliseconds. What waits until
/// nothing else is to do comes between two steps.
QList<double> stepsThrough(int messages, Step step)
{
    HistoryClient client;
    client.show(bench::sealedHistory(messages));
    client.finish();
    const QScrollBar *bar = client.list()->verticalScrollBar();
    QList<double> steps;
    while (bar->value() > 0) {
        steps.append(bench::millisecondsOf([&] {
            step(client);
            QApplication::sendPostedEvents();
        }));
        client.finish();
    }
    return steps;
}

double longest(const QList<double> &steps)
{
    return *std::max_element(steps.begin(), steps.end());
}

/// The short conversation is opened and scrolled through anew until there are as many steps: the machine's
/// own hiccups then fall on both alike.
double longestOfShort(qsizetype count, Step step)
{
    QList<double> steps;
    while (steps.size() < count)
        steps += stepsThrough(shortHistory, step);
    return longest(steps);
}

void measure(const QByteArray &figure, Step step)
{
    QList<double> ours;
    QList<double> others;
    QList<double> ratios;
    QList<double> middles;
    for (int i = 0; i < runs; ++i) {
        const QList<double> steps = stepsThrough(longHistory, step);
        ours.append(longest(steps));
        others.append(longestOfShort(steps.size(), step));
        ratios.append(ours.last() / others.last());
        middles.append(medianOf(steps));
    }
    bench::reportRatio(figure, medianOf(ratios), 1.5,
                       QByteArray::number(medianOf(ours), 'f', 2) + " ms to "
                           + QByteArray::number(medianOf(others), 'f', 2) + " ms; the middle step "
                           + QByteArray::number(medianOf(middles), 'f', 2) + " ms");
}

} // namespace

int main(int argc, char **argv)
{
    const tests::TestHome home;
    const QApplication application(argc, argv);
    if (!crypto::ensureKeyPair())
        qFatal("No key pair.");
    const QString only = QApplication::arguments().value(1);
    if (only != u"page"_s)
        measure("scrolling through 5,000 messages by wheel, longest step vs with 200", turnWheel);
    if (only != u"wheel"_s)
        measure("scrolling through 5,000 messages by page, longest step vs with 200", turnPage);
    return 0;
}
