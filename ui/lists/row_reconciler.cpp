// Applying a plan to the entries of a list.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/lists/row_reconciler.h"

#include <QListWidget>

#include <algorithm>

namespace tideloft::ui
{

namespace
{

/// Moves the entries of a list until they stand as planned, and remembers which is where.
class EntryMover
{
public:
    EntryMover(QListWidget *changed, const QList<RowPlace> &planned, const InsertEntries &insertion)
        : list(changed),
          places(planned),
          insert(insertion)
    {
    }

    void removeUnused();
    void arrange();

private:
    int insertFrom(int index);
    void bringTo(int index);
    void move(int from, int to);

    QListWidget *list;
    const QList<RowPlace> &places;
    const InsertEntries &insert;
    QList<int> order = {}; // for each entry now in the list its index at the beginning, -1 for a new one
};

void EntryMover::removeUnused()
{
    QList<bool> isUsed(list->count(), false);
    for (const RowPlace &place : places) {
        if (place.entry >= 0)
            isUsed[place.entry] = true;
    }
    for (int end = int(isUsed.size()); end > 0;) {
        int first = end;
        while (first > 0 && !isUsed.at(first - 1))
            --first;
        if (first < end)
            list->model()->removeRows(first, end - first);
        end = first - 1; // that one is used
    }
    for (int i = 0; i < isUsed.size(); ++i) {
        if (isUsed.at(i))
            order.append(i);
    }
}

void EntryMover::arrange()
{
    for (int i = 0; i < places.size();) {
        if (places.at(i).entry < 0)
            i = insertFrom(i);
        else
            bringTo(i++);
    }
}

/// Inserts the new entries that stand together from INDEX on; returns the index behind them.
int EntryMover::insertFrom(int index)
{
    int end = index;
    while (end < places.size() && places.at(end).entry < 0)
        ++end;
    insert(index, end - index);
    order.insert(index, end - index, -1);
    return end;
}

void EntryMover::bringTo(int index)
{
    const RowPlace &place = places.at(index);
    // Entries that still stand before a fixed entry go to the end. Each is fetched from there when its own
    // place is filled.
    while (place.isFixed && order.at(index) != place.entry)
        move(index, int(order.size()));
    if (order.at(index) != place.entry)
        move(int(order.indexOf(place.entry, index)), index);
}

/// TO as the model counts: the index of the entry before which it comes.
void EntryMover::move(int from, int to)
{
    list->model()->moveRow({}, from, {}, to);
    order.move(from, from < to ? to - 1 : to);
}

} // namespace

bool arrangeEntries(QListWidget *list, const QList<RowPlace> &places, const InsertEntries &insert)
{
    const bool isSame = places.size() == list->count()
                        && std::all_of(places.cbegin(), places.cend(),
                                       [](const RowPlace &place) { return place.isKept && place.isFixed; });
    if (isSame)
        return false;
    EntryMover mover(list, places, insert);
    mover.removeUnused();
    mover.arrange();
    return true;
}

} // namespace tideloft::ui
