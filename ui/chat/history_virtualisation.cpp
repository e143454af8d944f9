// Which rows of a history have widgets, and when a row gets its widget and loses it (virtualisation).
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/history_list.h"

#include "ui/lists/slice.h"

#include <QListWidget>

#include <algorithm>

namespace tideloft::ui
{

namespace
{

// Widgets are made before they are scrolled to, and stay for a while.
constexpr int screensMade = 2;
constexpr int screensKept = 3;

} // namespace

/// The rows that have widgets: those around MIDDLE, the nearest first, and the newest.
QList<int> HistoryList::nearRows(RowRange middle) const
{
    QList<int> rows = nearestFirst(middle, rowsAround(list, middle, screensMade));
    const RowRange last = newest(newestWithWidgets);
    for (int index = last.end; index-- > last.first;)
        rows.append(index);
    return rows;
}

void HistoryList::make(int index)
{
    widgets.make(index);
    if (index < newest(newestWithWidgets).first)
        withWidgets = withWidgets.with(index);
}

/// False if they are there already.
bool HistoryList::makeWidgets(RowRange range)
{
    bool isChanged = false;
    for (int index = range.first; index < range.end; ++index) {
        if (!widgets.needsWidget(index) || !widgets.entry(index)->isMeasured())
            continue;
        make(index);
        isChanged = true;
    }
    return isChanged;
}

bool HistoryList::makeNearby(const QList<int> &rows, Slice &slice)
{
    bool isChanged = false;
    const auto isMade = [&](int index) {
        if (!widgets.needsWidget(index))
            return true;
        if (!slice.mayBegin())
            return false;
        make(index);
        return isChanged = true;
    };
    const bool areMade = std::ranges::all_of(rows, isMade);
    if (isChanged)
        placeWidgets();
    return areMade;
}

/// Gives new widgets their places. No size has changed: the list need not ask every entry for its own again.
void HistoryList::placeWidgets()
{
    list->QAbstractItemView::doItemsLayout();
}

/// Widgets that the user is at stay, wherever they are.
void HistoryList::takeFarWidgets()
{
    const RowRange kept = rowsAround(list, rowsOnScreen(list), screensKept);
    const int end = qMin(withWidgets.end, newest(newestWithWidgets).first);
    RowRange left;
    for (int index = withWidgets.first; index < end; ++index) {
        if (!kept.contains(index))
            widgets.take(index);
        if (widgets.entry(index) && widgets.entry(index)->widgetRow())
            left = left.with(index);
    }
    withWidgets = left;
}

} // namespace tideloft::ui
