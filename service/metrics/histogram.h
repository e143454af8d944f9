// How often something took how long.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

namespace tideloft::service
{

class Histogram
{
public:
    /// The bounds are in seconds, the smallest first.
    explicit Histogram(std::vector<double> upperBounds);

    /// DURATION is in seconds.
    void observe(double duration);

    const std::vector<double> &bounds() const { return upper; }

    /// How many took at most as long as the bound of that number; behind the last bound, how many there were.
    std::uint64_t atMost(std::size_t bound) const;
    std::uint64_t count() const { return atMost(upper.size()); }
    double sum() const { return seconds; }

private:
    std::vector<double> upper;
    std::vector<std::uint64_t> counts; ///< for each bound those above the one before, and then the rest
    double seconds = 0;
};

} // namespace tideloft::service
