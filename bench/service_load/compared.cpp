// Measuring in turns.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/service_load/compared.h"

#include "bench/figures.h"
#include "bench/service_load/latencies.h"

namespace tideloft::bench
{

namespace
{

constexpr int rounds = 5;

} // namespace

Compared compare(const std::function<double()> &own, const std::function<double()> &floor)
{
    std::vector<double> owns;
    std::vector<double> floors;
    std::vector<double> ratios;
    for (int i = 0; i < rounds; ++i) {
        owns.push_back(own());
        floors.push_back(floor());
        ratios.push_back(owns.back() / floors.back());
    }
    return {median(owns), median(floors), median(ratios)};
}

void reportCompared(const QByteArray &figure, const Compared &compared, const QByteArray &floor,
                    double target)
{
    report(figure,
           rounded(compared.ratio, 3) + " (" + rounded(compared.own, 0) + "/s, " + floor + ' '
               + rounded(compared.floor, 0) + "/s, " + roundsText() + ')',
           "at least " + rounded(target, 2), compared.ratio >= target);
}

QByteArray roundsText()
{
    return "median of " + QByteArray::number(rounds) + " rounds in turns";
}

} // namespace tideloft::bench
