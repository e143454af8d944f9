// Two ways of doing one thing, timed in turn.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "bench/figures.h"

#include <QList>

#include <algorithm>
#include <ctime>

namespace tideloft::bench
{

constexpr int rounds = 7; ///< odd, so that a median is one of them

inline double medianOf(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// The processor time of an action, in which others who use the machine have no share.
template <typename Action> double millisecondsOf(Action action)
{
    const std::clock_t before = std::clock();
    action();
    return static_cast<double>(std::clock() - before) * 1000 / CLOCKS_PER_SEC;
}

/// The median time of an action, in milliseconds.
template <typename Action> double medianTime(Action action)
{
    QList<double> times;
    for (int round = 0; round < rounds; ++round)
        times << millisecondsOf(action);
    return medianOf(times);
}

/// Medians, the times in milliseconds. The ratio is that of the rounds, not that of the two medians.
struct PairedTimes {
    double floor = 0;
    double ours = 0;
    double ratio = 0;
};

/// Both actions do their work in parts, numbered from 0, and take turns after each: a moment in which the
/// machine is busy with something else then falls on both.
template <typename Floor, typename Ours> PairedTimes pairedTimes(int parts, Floor floor, Ours ours)
{
    QList<double> floors;
    QList<double> times;
    QList<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        double floorTime = 0;
        double time = 0;
        for (int part = 0; part < parts; ++part) {
            floorTime += millisecondsOf([&] { floor(part); });
            time += millisecondsOf([&] { ours(part); });
        }
        floors << floorTime;
        times << time;
        ratios << time / floorTime;
    }
    return {medianOf(floors), medianOf(times), medianOf(ratios)};
}

inline void printRatio(const char *figure, const PairedTimes &times, double target)
{
    reportRatio(figure, times.ratio, target,
                QByteArray::number(times.ours, 'f', 2) + " ms, floor "
                    + QByteArray::number(times.floor, 'f', 2) + " ms");
}

} // namespace tideloft::bench
