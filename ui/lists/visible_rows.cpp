// Finding rows by their place.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/lists/visible_rows.h"

#include <QListWidget>

namespace tideloft::ui
{

RowRange RowRange::with(int index) const
{
    return first < end ? RowRange{qMin(first, index), qMax(end, index + 1)} : RowRange{index, index + 1};
}

// The list finds a row among places that it has at hand. To tell where a row is, it asks the style: that adds
// up in a search through a long list.
int rowAt(const QListWidget *list, int y)
{
    if (const QModelIndex there = list->indexAt({0, y}); there.isValid())
        return there.row();
    int first = 0;
    int end = list->count();
    while (first < end) {
        const int middle = first + (end - first) / 2;
        if (list->visualItemRect(list->item(middle)).bottom() < y)
            first = middle + 1;
        else
            end = middle;
    }
    return first;
}

RowRange rowsOnScreen(const QListWidget *list)
{
    return {rowAt(list, 0), qMin(rowAt(list, list->viewport()->height() - 1) + 1, list->count())};
}

RowRange rowsAround(const QListWidget *list, RowRange middle, int screens)
{
    const int rows = qMax(middle.end - middle.first, 10) * screens;
    return {qMax(middle.first - rows, 0), qMin(middle.end + rows, list->count())};
}

QList<int> nearestFirst(RowRange middle, RowRange around)
{
    QList<int> rows;
    for (int index = middle.first; index < middle.end; ++index)
        rows.append(index);
    for (int step = 1; middle.first - step >= around.first || middle.end - 1 + step < around.end; ++step) {
        if (middle.first - step >= around.first)
            rows.append(middle.first - step);
        if (middle.end - 1 + step < around.end)
            rows.append(middle.end - 1 + step);
    }
    return rows;
}

} // namespace tideloft::ui
