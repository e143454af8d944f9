// Entries and their widgets.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/lists/row_list.h"

#include "ui/lists/polish_tree.h"

#include <QAccessible>
#include <QLayout>
#include <QListWidget>
#include <QSignalBlocker>

namespace tideloft::ui
{

namespace
{

/// Lays out what stands in LAYOUT, the innermost parts first. If that waited until the parts are shown, each
/// of them would make all layouts around it run once more.
void layOut(QLayout *layout)
{
    if (!layout)
        return;
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem *item = layout->itemAt(i);
        layOut(item->widget() ? item->widget()->layout() : item->layout());
    }
    layout->activate();
}

// An entry takes memory even for an invalid value, so an invalid value only replaces another one.
void setEntryData(QListWidgetItem *entry, int role, const QVariant &value)
{
    if (value.isValid() || entry->data(role).isValid())
        entry->setData(role, value);
}

} // namespace

void appendRows(QListWidget *list, const QList<ListRow> &rows)
{
    const int first = list->count();
    list->insertItems(first, QStringList(rows.size()));
    for (int i = 0; i < rows.size(); ++i)
        setRow(list, first + i, rows.at(i));
}

// A list would look at all its entries again for each one that its model announces. So the model is silent,
// and a screen reader is told of all new entries at once.
void insertEntries(QListWidget *list, int index, int count,
                   const std::function<QListWidgetItem *(int number)> &make)
{
    if (count == 0)
        return;
    const QSignalBlocker unheard(list->model());
    for (int number = 0; number < count; ++number)
        list->insertItem(index + number, make(number));
    QAccessibleTableModelChangeEvent inserted(list, QAccessibleTableModelChangeEvent::RowsInserted);
    inserted.setFirstRow(index);
    inserted.setLastRow(index + count - 1);
    QAccessible::updateAccessibility(&inserted);
}

void setRow(QListWidget *list, int index, const ListRow &row)
{
    QListWidgetItem *entry = list->item(index);
    entry->setFlags(row.flags);
    entry->setSizeHint(row.sizeHint);
    setEntryData(entry, Qt::UserRole, row.user.isEmpty() ? QVariant() : row.user);
    setEntryData(entry, Qt::AccessibleTextRole, row.spoken.isEmpty() ? QVariant() : row.spoken);
    setRowWidget(list, entry, row.widget, row.sizeHint.height());
}

void setRowWidget(QListWidget *list, QListWidgetItem *entry, QWidget *row, int height)
{
    if (QWidget *before = list->itemWidget(entry))
        before->hide(); // the list deletes it later
    polishTree(row);    // before its parts are laid out
    row->resize(list->viewport()->width(), height);
    layOut(row->layout());
    list->setItemWidget(entry, row);
}

} // namespace tideloft::ui
