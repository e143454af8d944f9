// The work on a history that waits until nothing else is to do.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/history_list.h"

#include "ui/lists/slice.h"

#include <QListWidget>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <utility>

namespace tideloft::ui
{

namespace
{

constexpr int mostWidthsInSlices = 20;

} // namespace

RowRange HistoryList::newest(int count) const
{
    return {qMax(list->count() - count, 0), list->count()};
}

bool HistoryList::isAtBottom() const
{
    return list->verticalScrollBar()->value() == list->verticalScrollBar()->maximum();
}

void HistoryList::rememberPlace()
{
    topBefore = rowsOnScreen(list).first;
    valueBefore = list->verticalScrollBar()->value();
}

/// One slice.
void HistoryList::work()
{
    const QScopedValueRollback<bool> settling(isSettling, true);
    Slice slice(sliceLength);
    const RowRange middle = rowsOnScreen(list);
    const int widthBefore = width;
    const bool isDone = workNearby(middle, slice) && measureOutward(middle, slice);
    // If rows were higher where they are wider, the scroll bar would come and go for ever.
    const bool isEndless = width != widthBefore && ++widthsInSlices > mostWidthsInSlices;
    if (isDone || isEndless) {
        slices.stop();
        takeFarWidgets();
    }
}

/// Measures and makes what is to have a widget while MIDDLE is on screen. True once nothing is left to do.
bool HistoryList::workNearby(RowRange middle, Slice &slice)
{
    if (preparedFor == middle)
        return true;
    const QList<int> rows = nearRows(middle);
    bool isApplied = true;
    for (const int index : rows) {
        if (!measureIn(slice, index))
            return false;
        const HistoryEntry *entry = widgets.entry(index);
        isApplied = isApplied && (!entry || entry->isApplied());
    }
    if (!isApplied || isStale) {
        if (!slice.mayBegin())
            return false;
        layOut(-1, isAtBottom());
    }
    // A scroll bar may have come or gone: every row has another width then, and is to be measured again.
    if (isStale || !makeNearby(rows, slice))
        return false;
    preparedFor = middle;
    return true;
}

/// Measures the other rows. The list learns of many at once: it lays all of them out, and paints itself,
/// which takes the first part of a slice. True once all are measured and the list knows.
bool HistoryList::measureOutward(RowRange middle, Slice &slice)
{
    if (isStale || areMeasured || unapplied.size() > qMax(250, list->count() / 10))
        layOut(-1, isAtBottom());
    if (isStale)
        return false;
    if (std::exchange(measuredFrom, middle) != middle)
        distance = 0;
    areMeasured = areMeasured || measureBeside(middle, slice);
    return areMeasured && unapplied.isEmpty();
}

/// False when the slice is over and the row at INDEX is still to be measured.
bool HistoryList::measureIn(Slice &slice, int index)
{
    if (!widgets.needsMeasure(index))
        return true;
    if (!slice.mayBegin())
        return false;
    measure(index);
    return true;
}

/// Goes on from the screen outward, above and below by turns.
bool HistoryList::measureBeside(RowRange middle, Slice &slice)
{
    for (; middle.first - distance > 0 || middle.end + distance < list->count(); ++distance) {
        if (!measureIn(slice, middle.first - 1 - distance) || !measureIn(slice, middle.end + distance))
            return false;
    }
    return true;
}

} // namespace tideloft::ui
