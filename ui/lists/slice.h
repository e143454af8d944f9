// How long work goes on that is done between events.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QDeadlineTimer>

#include <utility>

namespace tideloft::ui
{

/// A short time for pieces of work, after which events have their turn.
class Slice
{
public:
    /// LENGTH in ms.
    explicit Slice(int length) : end(length) {}

    /// Whether another piece may be begun. The first always may, so the work gets on however slow the
    /// computer is; the last may end a moment late.
    bool mayBegin() { return std::exchange(isFirst, false) || !end.hasExpired(); }

private:
    const QDeadlineTimer end;
    bool isFirst = true;
};

} // namespace tideloft::ui
