// Filling a list with row widgets.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QSize>
#include <QString>
#include <Qt>

#include <functional>

class QListWidget;
class QListWidgetItem;
class QWidget;

namespace tideloft::ui
{

/// One entry of a list: its widget, made below the list's viewport, and what the entry itself carries.
struct ListRow {
    QWidget *widget = nullptr;
    Qt::ItemFlags flags = Qt::NoItemFlags;
    QSize sizeHint;
    QString user = {};   ///< The user-role data: whom a click on the entry is about. Empty for none.
    QString spoken = {}; ///< What a screen reader says of the entry: it does not look into row widgets.
};

/// Appends ROWS to LIST: all entries first, then their widgets. One by one, every entry would lay out all the
/// row widgets before it again.
void appendRows(QListWidget *list, const QList<ListRow> &rows);

/// Inserts COUNT entries that MAKE makes, numbered from 0, before INDEX. LIST does not lay itself out:
/// whoever inserts entries does that once for all of them.
void insertEntries(QListWidget *list, int index, int count,
                   const std::function<QListWidgetItem *(int number)> &make);

/// Makes ROW the one that the entry at INDEX shows.
void setRow(QListWidget *list, int index, const ListRow &row);

/// Makes ROW, HEIGHT px high and made below the viewport, the widget of ENTRY.
void setRowWidget(QListWidget *list, QListWidgetItem *entry, QWidget *row, int height);

} // namespace tideloft::ui
