// Turning the rows that a list shows into others: what stays the same is not touched.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/lists/row_list.h"
#include "ui/lists/row_plan.h"

#include <QListWidget>

#include <functional>

namespace tideloft::ui
{

/// Inserts COUNT new entries at INDEX.
using InsertEntries = std::function<void(int index, int count)>;

/// Makes the entries of LIST follow PLACES. False if they do so already, and all are kept.
bool arrangeEntries(QListWidget *list, const QList<RowPlace> &places, const InsertEntries &insert);

/// Gives each of ROWS an entry of LIST, where rows that LIST has already keep theirs. LIST does not lay
/// itself out. False if it has these rows already. An Entry tells its row() and takes another with setRow();
/// entries of any other kind go.
template <typename Entry, typename Row> bool placeRows(QListWidget *list, const QList<Row> &rows)
{
    const auto entryAt = [list](int index) { return static_cast<Entry *>(list->item(index)); };
    for (int i = 0; i < list->count(); ++i) {
        if (list->item(i)->type() != Entry::entryType)
            list->clear();
    }
    QList<const Row *> shown;
    shown.reserve(list->count());
    for (int i = 0; i < list->count(); ++i)
        shown.append(&entryAt(i)->row());
    const QList<RowPlace> places = planRows(shown.size(), equalRows(shown, rows));
    const auto insert = [&](int index, int count) { // those before INDEX stand where they are to stand
        insertEntries(list, index, count, [&](int number) {
            auto *entry = new Entry;
            entry->setRow(rows.at(index + number));
            return entry;
        });
    };
    if (!arrangeEntries(list, places, insert))
        return false;
    for (int i = 0; i < places.size(); ++i) {
        if (!places.at(i).isKept && places.at(i).entry >= 0)
            entryAt(i)->setRow(rows.at(i));
    }
    return true;
}

} // namespace tideloft::ui
