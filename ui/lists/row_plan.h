// How the rows of a list become other rows: which stay, which move, which are made anew. No widget is
// touched.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/lists/common_ends.h"

#include <QHash>
#include <QList>

namespace tideloft::ui
{

/// Where the entry of one wanted row comes from.
struct RowPlace {
    int entry = -1;       ///< The index of the shown entry that is reused; -1: a new entry is needed.
    bool isKept = false;  ///< The entry's row shows the wanted row already.
    bool isFixed = false; ///< The entry keeps its order among the others that do.

    bool operator==(const RowPlace &) const = default;
};

/// The places of the wanted rows. KEPT names, for each wanted row, the shown entry that is equal to it, or
/// -1; none is named twice. Entries that fit nowhere are reused for rows that stand between the same
/// neighbours.
QList<RowPlace> planRows(qsizetype shownCount, const QList<int> &kept);

/// For each of WANTED the index of an equal one of SHOWN, or -1. Equal ones at the beginning and at the end
/// are found first, so that what changes in between costs no more than itself. A null pointer equals nothing.
template <typename Model> QList<int> equalRows(const QList<const Model *> &shown, const QList<Model> &wanted)
{
    const auto same = [&](qsizetype old, qsizetype now) {
        return shown.at(old) && *shown.at(old) == wanted.at(now);
    };
    const CommonEnds ends = commonEnds(shown.size(), wanted.size(), same);
    QList<int> kept(wanted.size(), -1);
    for (qsizetype i = 0; i < ends.front; ++i)
        kept[i] = int(i);
    for (qsizetype i = 1; i <= ends.back; ++i)
        kept[wanted.size() - i] = int(shown.size() - i);
    QMultiHash<Model, qsizetype> between; // of equal ones the newest entry is found first
    for (qsizetype old = shown.size() - ends.back; old-- > ends.front;) {
        if (shown.at(old))
            between.insert(*shown.at(old), old);
    }
    for (qsizetype now = ends.front; now < wanted.size() - ends.back && !between.isEmpty(); ++now) {
        if (const auto found = between.find(wanted.at(now)); found != between.end()) {
            kept[now] = int(*found);
            between.erase(found);
        }
    }
    return kept;
}

} // namespace tideloft::ui
