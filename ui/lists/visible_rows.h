// Which rows of a list are on screen, or near the screen.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>

class QListWidget;

namespace tideloft::ui
{

/// The indexes of entries from FIRST on, before END.
struct RowRange {
    int first = 0;
    int end = 0;

    [[nodiscard]] bool contains(int index) const { return index >= first && index < end; }
    /// The smallest range with INDEX and these.
    [[nodiscard]] RowRange with(int index) const;
    bool operator==(const RowRange &) const = default;
};

/// The first row of LIST that ends at Y of the viewport or below; behind the last one if none does.
int rowAt(const QListWidget *list, int y);

RowRange rowsOnScreen(const QListWidget *list);

/// MIDDLE, and as many rows before and after it as SCREENS hold if each holds as many as MIDDLE, but at
/// least 10.
RowRange rowsAround(const QListWidget *list, RowRange middle, int screens);

/// The rows of MIDDLE, and then those of AROUND before and after it by turns, the nearest first.
QList<int> nearestFirst(RowRange middle, RowRange around);

} // namespace tideloft::ui
