// Making every row, and measuring rows by their widgets.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "tests/support/eager_history.h"

#include "tests/support/eager_rows.h"
#include "ui/chat/day_separator.h"
#include "ui/chat/message_row.h"
#include "ui/messages/spoken_text.h"

#include <QEvent>
#include <QListWidget>
#include <QScrollBar>

#include <utility>

namespace tideloft::tests
{

namespace
{

ui::ListRow makeListRow(const ui::HistoryRow &row, QWidget *viewport)
{
    const auto *message = std::get_if<ui::MessageRowModel>(&row);
    QWidget *widget = message ? new ui::MessageRow(*message, viewport)
                              : ui::makeDaySeparator(std::get<ui::DaySeparatorModel>(row), viewport);
    return {.widget = widget, .sizeHint = widget->sizeHint(), .spoken = ui::spokenText(row)};
}

} // namespace

EagerHistory::EagerHistory(QListWidget *shown) : QObject(shown), list(shown)
{
    list->viewport()->installEventFilter(this);
}

void EagerHistory::show(const QList<ui::HistoryRow> &rows)
{
    for (const ui::HistoryRow &row : rows)
        ui::spokenText(row); // opens it: texts are compared
    showRows<ui::HistoryRow>(list, rows, makeListRow);
    list->scrollToBottom();
}

bool EagerHistory::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Resize || list->viewport()->width() == width)
        return QObject::eventFilter(watched, event);
    width = list->viewport()->width();
    isStale = true;
    layOut();
    return QObject::eventFilter(watched, event);
}

void EagerHistory::layOut()
{
    QScrollBar *bar = list->verticalScrollBar();
    const bool wasAtBottom = bar->value() == bar->maximum();
    QListWidgetItem *first = list->item(0);
    for (int i = 0; i < list->count() && list->visualItemRect(first).bottom() < 0; ++i)
        first = list->item(i);
    const int y = first ? list->visualItemRect(first).top() : 0;
    const bool isWidthNew = std::exchange(isStale, false);
    if (!updateHints() && !isWidthNew)
        return;
    list->doItemsLayout();
    if (wasAtBottom)
        list->scrollToBottom();
    else if (first)
        bar->setValue(bar->value() + list->visualItemRect(first).top() - y);
}

/// False if nothing is new.
bool EagerHistory::updateHints()
{
    bool isNew = false;
    for (int i = 0; i < list->count(); ++i) {
        QListWidgetItem *entry = list->item(i);
        const QWidget *row = list->itemWidget(entry);
        if (!row || entry->sizeHint() == row->sizeHint())
            continue;
        entry->setSizeHint(row->sizeHint());
        isNew = true;
    }
    return isNew;
}

} // namespace tideloft::tests
