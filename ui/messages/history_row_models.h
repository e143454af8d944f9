// The rows of the chat history, as values: everything that a row shows, and nothing of how it is drawn. Texts
// are opened when somebody asks for them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/history_groups.h"

#include <variant>

namespace tideloft::ui
{

/// A line between two days.
struct DaySeparatorModel {
    QString label;

    bool operator==(const DaySeparatorModel &) const = default;
};

/// A message in its bubble.
struct MessageRowModel {
    bool isMine = false;
    GroupPosition position = GroupPosition::Single;
    QString sender = {}; ///< Empty where neither the name nor the avatar is shown.
    LazyText text = {};
    QString time = {};    ///< "HH:mm", empty where no time is shown.
    QString speaker = {}; ///< Who a screen reader says wrote it: every row for itself, grouped or not.
    QString clock = {};   ///< When, likewise.
    Language language = Language::English;

    /// Whether the peer's avatar stands beside the bubble and the name in it.
    bool showsSender() const { return !isMine && startsGroup(); }
    /// Single and first messages stand apart from what is above them.
    bool startsGroup() const { return position == GroupPosition::Single || position == GroupPosition::First; }

    /// Why it could not be displayed and what to do; empty where it could.
    QString trouble() const;

    /// Whether both show the same, as far as they are opened.
    bool operator==(const MessageRowModel &other) const;
};

using HistoryRow = std::variant<DaySeparatorModel, MessageRowModel>;

// Found here because the alternatives are of this namespace; clazy looks at std::variant alone.
size_t qHash(const HistoryRow &row, size_t seed = 0); // clazy:exclude=qhash-namespace

/// The rows for RECORDS, day separators included, as they read on the local date TODAY in LANGUAGE.
QList<HistoryRow> historyRows(const QList<DisplayRecord> &records, QDate today, Language language);

} // namespace tideloft::ui
