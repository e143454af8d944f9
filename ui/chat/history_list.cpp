// The entries of messages and day separators.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/history_list.h"

#include "ui/chat/day_separator.h"
#include "ui/chat/message_row.h"
#include "ui/lists/row_reconciler.h"

#include <QListWidget>

namespace tideloft::ui
{

namespace
{

ListRow makeListRow(const HistoryRow &row, QWidget *viewport)
{
    QWidget *widget = nullptr;
    if (const auto *message = std::get_if<MessageRowModel>(&row))
        widget = new MessageRow(*message, viewport);
    else
        widget = makeDaySeparator(std::get<DaySeparatorModel>(row), viewport);
    return {.widget = widget, .sizeHint = widget->sizeHint(), .spoken = spokenText(row)};
}

} // namespace

void showHistory(QListWidget *list, const QList<HistoryRow> &rows)
{
    showRows<HistoryRow>(list, rows, makeListRow);
    list->scrollToBottom();
}

} // namespace tideloft::ui
