// Making, measuring and taking back rows.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/history_widgets.h"

#include "ui/chat/bubble_text.h"
#include "ui/chat/day_separator.h"
#include "ui/chat/message_row.h"
#include "ui/lists/row_list.h"

#include <QApplication>
#include <QListWidget>

namespace tideloft::ui
{

namespace
{

QWidget *makeRow(const HistoryEntry &entry, QWidget *viewport)
{
    if (const auto *day = std::get_if<DaySeparatorModel>(&entry.row()))
        return makeDaySeparator(*day, viewport);
    auto *row = new MessageRow(std::get<MessageRowModel>(entry.row()), viewport);
    row->text()->setMeasured(entry.measured().text, entry.measured().wrapped);
    return row;
}

/// Whether the user has selected something in ROW, or has the keyboard or the mouse there.
bool isInUse(const QWidget *row)
{
    const auto *message = qobject_cast<const MessageRow *>(row);
    const auto holds = [row](const QWidget *widget) { return widget && row->isAncestorOf(widget); };
    return (message && message->text()->hasSelectedText()) || holds(QApplication::focusWidget())
           || holds(QWidget::mouseGrabber());
}

} // namespace

HistoryEntry *HistoryWidgets::entry(int index) const
{
    QListWidgetItem *item = list->item(index);
    return item && item->type() == HistoryEntry::entryType ? static_cast<HistoryEntry *>(item) : nullptr;
}

bool HistoryWidgets::needsMeasure(int index) const
{
    const HistoryEntry *asked = entry(index);
    return asked && !asked->isMeasured();
}

bool HistoryWidgets::measure(int index)
{
    if (!needsMeasure(index))
        return false;
    HistoryEntry *measured = entry(index);
    if (!fonts)
        fonts = rowFonts(list->viewport());
    measured->setMeasure(rowSize(measured->row(), list->viewport()->width(), *fonts, measured->measured()));
    return true;
}

bool HistoryWidgets::needsWidget(int index) const
{
    const HistoryEntry *asked = entry(index);
    return asked && (!asked->widgetRow() || *asked->widgetRow() != asked->row());
}

void HistoryWidgets::make(int index)
{
    HistoryEntry *made = entry(index);
    QWidget *row = makeRow(*made, list->viewport());
    setRowWidget(list, made, row, made->sizeHint().height());
    made->setWidgetRow(std::make_unique<HistoryRow>(made->row()));
}

void HistoryWidgets::take(int index)
{
    HistoryEntry *taken = entry(index);
    QWidget *row = taken && taken->widgetRow() ? list->itemWidget(taken) : nullptr;
    if (!row || isInUse(row))
        return;
    row->hide(); // the list deletes it later
    list->removeItemWidget(taken);
    taken->setWidgetRow(nullptr);
}

} // namespace tideloft::ui
