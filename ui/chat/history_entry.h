// An entry of the history's list: it knows its row all the time, and has a widget only where somebody looks.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/chat/row_size.h"

#include <QListWidgetItem>
#include <QSize>

#include <memory>

namespace tideloft::ui
{

/// Opens its message when somebody asks what it says.
class HistoryEntry : public QListWidgetItem
{
public:
    static constexpr int entryType = QListWidgetItem::UserType + 1;

    HistoryEntry();

    QVariant data(int role) const override;

    [[nodiscard]] const HistoryRow &row() const { return shownRow; }
    /// The size stays as an estimate.
    void setRow(const HistoryRow &row);

    /// Whether its size is that of its row, in the present width and fonts.
    [[nodiscard]] bool isMeasured() const { return hasMeasure; }
    /// The list is LISTWIDTH px wide now or, if FONTSARENEW, has other fonts. An entry that was wider would
    /// make all rows so wide.
    void forgetMeasure(int listWidth, bool fontsAreNew);
    /// SIZE is the row's own. The list knows of it after applySize().
    void setMeasure(const RowSize &size);
    [[nodiscard]] const RowSize &measured() const { return measure; }
    /// Lets the list know. True if this changes anything.
    bool applySize();
    /// What the list knows.
    [[nodiscard]] QSize appliedSize() const { return applied; }
    /// Whether the list knows of the measure.
    [[nodiscard]] bool isApplied() const { return applied == measure.row; }

    /// The row that the entry's widget was made for; null while there is no widget.
    [[nodiscard]] const HistoryRow *widgetRow() const { return made.get(); }
    void setWidgetRow(std::unique_ptr<HistoryRow> row) { made = std::move(row); }

private:
    HistoryRow shownRow;
    std::unique_ptr<HistoryRow> made;
    RowSize measure;
    QSize applied;
    bool hasMeasure = false;
};

} // namespace tideloft::ui
