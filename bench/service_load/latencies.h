// How long replies took, and how many were not what was expected.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <algorithm>
#include <cmath>
#include <vector>

namespace tideloft::bench
{

class Latencies
{
public:
    void add(double milliseconds) { all.push_back(static_cast<float>(milliseconds)); }
    std::size_t count() const { return all.size(); }

    /// 0.99 gives what 99 of 100 were not above; 0 when there is nothing.
    double percentile(double share)
    {
        if (all.empty())
            return 0;
        const auto index =
            static_cast<std::ptrdiff_t>(std::ceil(share * static_cast<double>(all.size()))) - 1;
        const auto at = all.begin() + std::max<std::ptrdiff_t>(index, 0);
        std::nth_element(all.begin(), at, all.end());
        return *at;
    }

private:
    std::vector<float> all;
};

inline double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

inline QByteArray rounded(double value, int digits = 1)
{
    return QByteArray::number(value, 'f', digits);
}

} // namespace tideloft::bench
