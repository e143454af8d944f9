// What holds for the way from shown rows to wanted ones, whatever the rows are.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/fuzz/require.h"
#include "ui/lists/row_plan.h"

#include <QSet>

namespace tideloft::tests
{

/// How many of WANTED have a partner among SHOWN when each may be taken once.
template <typename Model> qsizetype commonCount(const QList<const Model *> &shown, const QList<Model> &wanted)
{
    QHash<Model, int> left;
    for (const Model *row : shown) {
        if (row)
            ++left[*row];
    }
    qsizetype common = 0;
    for (const Model &row : wanted) {
        const auto found = left.find(row);
        if (found != left.end() && (*found)-- > 0)
            ++common;
    }
    return common;
}

inline void checkPlaces(qsizetype shownCount, const QList<int> &kept, const QList<ui::RowPlace> &places)
{
    require(places.size() == kept.size(), "every wanted row has a place");
    QSet<int> taken;
    int lastFixed = -1;
    for (qsizetype i = 0; i < places.size(); ++i) {
        const ui::RowPlace &place = places.at(i);
        require(place.isKept == (kept.at(i) >= 0), "what is equal is kept");
        require(!place.isKept || place.entry == kept.at(i), "a kept row keeps its entry");
        require(place.entry < shownCount, "an entry is one that is shown");
        if (place.entry < 0)
            require(!place.isKept && !place.isFixed, "a new entry is neither kept nor fixed");
        else
            require(!taken.contains(place.entry), "no entry is taken twice");
        taken.insert(place.entry);
        if (!place.isFixed)
            continue;
        require(place.entry > lastFixed, "fixed entries keep their order");
        lastFixed = place.entry;
    }
}

/// The plan for rows that become others; a null pointer in SHOWN stands for an entry without a row.
template <typename Model> void checkPlan(const QList<const Model *> &shown, const QList<Model> &wanted)
{
    const QList<int> kept = ui::equalRows(shown, wanted);
    require(kept.size() == wanted.size(), "every wanted row is looked for");
    qsizetype found = 0;
    for (qsizetype i = 0; i < kept.size(); ++i) {
        if (kept.at(i) < 0)
            continue;
        const Model *row = shown.at(kept.at(i));
        require(row && *row == wanted.at(i), "a kept row is equal");
        ++found;
    }
    require(found == commonCount(shown, wanted), "no equal row is missed");
    checkPlaces(shown.size(), kept, ui::planRows(shown.size(), kept));
}

/// The same for rows as values, with all entries filled and with every third one empty.
template <typename Model> void checkPlans(const QList<Model> &shown, const QList<Model> &wanted)
{
    QList<const Model *> all;
    QList<const Model *> some;
    for (qsizetype i = 0; i < shown.size(); ++i) {
        all.append(&shown.at(i));
        some.append(i % 3 == 2 ? nullptr : &shown.at(i));
    }
    checkPlan(all, wanted);
    checkPlan(some, wanted);
    checkPlan(all, shown);
}

} // namespace tideloft::tests
