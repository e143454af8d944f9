// Sizes and places of a history's entries.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/history_delegate.h"

#include "ui/chat/history_entry.h"

#include <QListWidget>

namespace tideloft::ui
{

HistoryDelegate::HistoryDelegate(QListWidget *served) : QStyledItemDelegate(served), list(served) {}

const HistoryEntry *HistoryDelegate::entryAt(const QModelIndex &index) const
{
    const QListWidgetItem *item = list->item(index.row());
    return item && item->type() == HistoryEntry::entryType ? static_cast<const HistoryEntry *>(item)
                                                           : nullptr;
}

void HistoryDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                            const QModelIndex &index) const
{
    if (!entryAt(index))
        QStyledItemDelegate::paint(painter, option, index);
}

QSize HistoryDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const HistoryEntry *entry = entryAt(index);
    return entry ? entry->appliedSize() : QStyledItemDelegate::sizeHint(option, index);
}

void HistoryDelegate::updateEditorGeometry(QWidget *row, const QStyleOptionViewItem &option,
                                           const QModelIndex &index) const
{
    if (entryAt(index))
        row->setGeometry(option.rect);
    else
        QStyledItemDelegate::updateEditorGeometry(row, option, index);
}

} // namespace tideloft::ui
