// The widgets of a history's entries, made and taken back one by one. When a row gets its widget is decided
// in history_virtualisation.cpp.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/chat/history_entry.h"
#include "ui/chat/row_size.h"

#include <optional>

class QListWidget;

namespace tideloft::ui
{

/// Measures entries of one list and gives them their widgets. Entries of other kinds are left alone.
class HistoryWidgets
{
public:
    explicit HistoryWidgets(QListWidget *watched) : list(watched) {}

    /// The history's entry at INDEX; null for another kind, such as a notice.
    [[nodiscard]] HistoryEntry *entry(int index) const;

    [[nodiscard]] bool needsMeasure(int index) const;
    /// Opens and measures the entry at INDEX. False if there is nothing to do.
    bool measure(int index);
    /// Fonts may have changed.
    void forgetFonts() { fonts.reset(); }

    /// Whether the entry at INDEX has no widget, or one that shows what its row was before.
    [[nodiscard]] bool needsWidget(int index) const;
    /// Makes the widget of the entry at INDEX.
    void make(int index);
    /// Takes back the widget of the entry at INDEX, unless the user is at it.
    void take(int index);

private:
    QListWidget *list;
    std::optional<RowFonts> fonts;
};

} // namespace tideloft::ui
