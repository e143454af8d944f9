// What two sequences have in common at their ends.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace tideloft::ui
{

/// How many items are the same, counted from the beginning, and of the others from the end.
struct CommonEnds {
    qsizetype front = 0;
    qsizetype back = 0;
};

/// Compares BEFORE items with NOW items. SAME(i, j) says whether the i-th of those is the j-th of these.
template <typename Same> CommonEnds commonEnds(qsizetype before, qsizetype now, const Same &same)
{
    const qsizetype most = qMin(before, now);
    CommonEnds ends;
    while (ends.front < most && same(ends.front, ends.front))
        ++ends.front;
    while (ends.front + ends.back < most && same(before - 1 - ends.back, now - 1 - ends.back))
        ++ends.back;
    return ends;
}

} // namespace tideloft::ui
