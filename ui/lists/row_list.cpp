// Entries, their widgets and their heights.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/lists/row_list.h"

#include <QEvent>
#include <QLayout>
#include <QListWidget>
#include <QScrollBar>

namespace tideloft::ui
{

namespace
{

/// Watches a list's viewport for changes of its width.
class RowHeightKeeper : public QObject
{
public:
    explicit RowHeightKeeper(QListWidget *watched) : QObject(watched), list(watched)
    {
        list->viewport()->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Resize && list->viewport()->width() != width) {
            width = list->viewport()->width();
            const bool atBottom = list->verticalScrollBar()->value() == list->verticalScrollBar()->maximum();
            updateHints();
            if (atBottom)
                list->scrollToBottom();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void updateHints()
    {
        for (int i = 0; i < list->count(); ++i) {
            QListWidgetItem *entry = list->item(i);
            const QWidget *row = list->itemWidget(entry);
            if (row && entry->sizeHint() != row->sizeHint())
                entry->setSizeHint(row->sizeHint());
        }
    }

    QListWidget *list;
    int width = 0;
};

/// Lays out what stands in LAYOUT, the innermost first: left until it is shown, each part would have all
/// around it laid out once more.
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

// An entry makes room even for a value that is none.
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

void setRow(QListWidget *list, int index, const ListRow &row)
{
    QListWidgetItem *entry = list->item(index);
    entry->setFlags(row.flags);
    entry->setSizeHint(row.sizeHint);
    setEntryData(entry, Qt::UserRole, row.user.isEmpty() ? QVariant() : row.user);
    setEntryData(entry, Qt::AccessibleTextRole, row.spoken.isEmpty() ? QVariant() : row.spoken);
    setEntryData(entry, shownModelRole, row.model);
    if (QWidget *before = list->itemWidget(entry))
        before->hide(); // the list deletes it later
    row.widget->resize(list->viewport()->width(), row.sizeHint.height());
    layOut(row.widget->layout());
    list->setItemWidget(entry, row.widget);
}

void keepRowHeights(QListWidget *list)
{
    new RowHeightKeeper(list); // owned by the list
}

} // namespace tideloft::ui
