// The longest run of rows that keep their order, and what happens to the others.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/lists/row_plan.h"

#include <algorithm>

namespace tideloft::ui
{

namespace
{

/// Marks the longest rising run among the kept places: its entries need not move.
void fixOrder(QList<RowPlace> &places)
{
    QList<qsizetype> ends; // ends[n]: the place with the lowest entry that can end a run of n + 1
    QList<qsizetype> before(places.size(), -1);
    for (qsizetype i = 0; i < places.size(); ++i) {
        if (!places.at(i).isKept)
            continue;
        const auto longer =
            std::lower_bound(ends.begin(), ends.end(), places.at(i).entry,
                             [&](qsizetype end, int entry) { return places.at(end).entry < entry; });
        before[i] = longer == ends.begin() ? -1 : *(longer - 1);
        if (longer == ends.end())
            ends.append(i);
        else
            *longer = i;
    }
    for (qsizetype i = ends.isEmpty() ? -1 : ends.last(); i >= 0; i = before.at(i))
        places[i].isFixed = true;
}

/// For each place, the entry of the first fixed place from there on; COUNT where no fixed place follows.
QList<int> nextFixedEntries(const QList<RowPlace> &places, int count)
{
    QList<int> entries(places.size());
    int next = count;
    for (qsizetype i = places.size(); i-- > 0;) {
        if (places.at(i).isFixed)
            next = places.at(i).entry;
        entries[i] = next;
    }
    return entries;
}

/// Gives unused entries to rows that have none. Entry and row must lie between the same two fixed entries,
/// and the entries keep their order.
void reuseEntries(QList<RowPlace> &places, QList<bool> &isUsed)
{
    const QList<int> limits = nextFixedEntries(places, int(isUsed.size()));
    int next = 0;
    for (qsizetype i = 0; i < places.size(); ++i) {
        RowPlace &place = places[i];
        if (place.isFixed)
            next = place.entry + 1;
        if (place.isKept)
            continue;
        while (next < limits.at(i) && isUsed.at(next))
            ++next;
        if (next < limits.at(i))
            place = {.entry = next++, .isKept = false, .isFixed = true};
    }
}

} // namespace

QList<RowPlace> planRows(qsizetype shownCount, const QList<int> &kept)
{
    QList<RowPlace> places(kept.size());
    QList<bool> isUsed(shownCount, false);
    for (qsizetype i = 0; i < kept.size(); ++i) {
        places[i] = {.entry = kept.at(i), .isKept = kept.at(i) >= 0};
        if (places.at(i).isKept)
            isUsed[places.at(i).entry] = true;
    }
    fixOrder(places);
    reuseEntries(places, isUsed);
    return places;
}

} // namespace tideloft::ui
