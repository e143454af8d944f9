// Two things that are measured in turns, so that what else the computer does meets both.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <functional>

namespace tideloft::bench
{

/// Medians of what was measured in some rounds. The ratio is that of each round.
struct Compared {
    double own = 0;
    double floor = 0;
    double ratio = 0;
};

Compared compare(const std::function<double()> &own, const std::function<double()> &floor);

/// For rates, of which the own one has to be so many times the floor's at least.
void reportCompared(const QByteArray &figure, const Compared &compared, const QByteArray &floor,
                    double target);

/// The number of rounds, as a figure tells it.
QByteArray roundsText();

} // namespace tideloft::bench
