// Counting by bounds.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "service/metrics/histogram.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace tideloft::service
{

Histogram::Histogram(std::vector<double> upperBounds)
    : upper(std::move(upperBounds)),
      counts(upper.size() + 1)
{
}

void Histogram::observe(double duration)
{
    const auto bound = std::lower_bound(upper.begin(), upper.end(), duration);
    ++counts[static_cast<std::size_t>(std::distance(upper.begin(), bound))];
    seconds += duration;
}

std::uint64_t Histogram::atMost(std::size_t bound) const
{
    const auto end = counts.begin() + static_cast<std::ptrdiff_t>(std::min(bound, upper.size()) + 1);
    return std::accumulate(counts.begin(), end, std::uint64_t{0});
}

} // namespace tideloft::service
