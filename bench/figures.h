// How a bench program says what it measured: a line to read, and one for the table of bench/run.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <cstdio>

namespace tideloft::bench
{

/// `figure`, `measured` and `target` are texts as they stand in the table. Every program of this folder that
/// has a target reports it here and nowhere else.
inline void report(const QByteArray &figure, const QByteArray &measured, const QByteArray &target,
                   bool reached)
{
    std::printf("figure\t%s\t%s\t%s\t%s\n", figure.constData(), measured.constData(), target.constData(),
                reached ? "yes" : "**no**");
    std::fflush(stdout);
}

/// A figure without a target of its own, which explains another.
inline void inform(const QByteArray &figure, const QByteArray &measured)
{
    std::printf("figure\t%s\t%s\t-\t-\n", figure.constData(), measured.constData());
    std::fflush(stdout);
}

/// A ratio that must not be above `target`; `times` tells of which two measurements it is.
inline void reportRatio(const QByteArray &figure, double ratio, double target, const QByteArray &times)
{
    report(figure, QByteArray::number(ratio, 'f', 3) + " (" + times + ')',
           "at most " + QByteArray::number(target, 'f', 2), ratio <= target);
}

} // namespace tideloft::bench
