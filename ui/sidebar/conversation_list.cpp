// What of the conversations is opened and made, and when.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/sidebar/conversation_list.h"

#include "ui/lists/row_list.h"
#include "ui/lists/row_reconciler.h"
#include "ui/lists/slice.h"
#include "ui/sidebar/conversation_entry.h"
#include "ui/sidebar/conversation_row.h"

#include <QEvent>
#include <QGuiApplication>
#include <QListWidget>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTimerEvent>

#include <algorithm>
#include <utility>

namespace tideloft::ui
{

namespace
{

// Widgets are made before they are scrolled to, and stay for a while.
constexpr int screensMade = 1;
constexpr int screensKept = 2;

} // namespace

ConversationList::ConversationList(QListWidget *watched, int slice)
    : QObject(watched),
      list(watched),
      sliceLength(slice)
{
    list->setUniformItemSizes(true);
    list->viewport()->installEventFilter(this);
    connect(list->verticalScrollBar(), &QScrollBar::valueChanged, this, &ConversationList::settle);
}

void ConversationList::show(const QList<ConversationRowModel> &rows)
{
    const QListWidgetItem *current = list->currentItem();
    const QString user = current ? current->data(Qt::UserRole).toString() : QString();
    {
        const QScopedValueRollback<bool> changing(isChanging, true);
        list->selectionModel()->clear(); // else the list makes a neighbour current when the current row goes
        if (placeRows<ConversationEntry>(list, rows)) {
            withWidgets = {0, list->count()}; // entries have other indexes now
            list->doItemsLayout();
        }
        keepCurrentRow(rows, user);
    }
    settle();
}

// Makes the row of USER current again, for the keyboard only: the row is not marked, and the list does not
// scroll to it.
void ConversationList::keepCurrentRow(const QList<ConversationRowModel> &rows, const QString &user)
{
    const auto isCurrent = [&user](const ConversationRowModel &row) { return row.peer == user; };
    const auto current = std::find_if(rows.cbegin(), rows.cend(), isCurrent);
    if (user.isEmpty() || current == rows.cend())
        return;
    list->setAutoScroll(false);
    list->setCurrentRow(int(current - rows.cbegin()), QItemSelectionModel::NoUpdate);
    list->setAutoScroll(true);
}

bool ConversationList::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        settle();
    else if (event->type() == QEvent::FontChange)
        outdateWidgets();
    return QObject::eventFilter(watched, event);
}

void ConversationList::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == slices.timerId())
        work();
    else
        QObject::timerEvent(event);
}

/// The conversation at INDEX; null for an entry of another kind.
ConversationEntry *ConversationList::entry(int index) const
{
    QListWidgetItem *item = list->item(index);
    return item && item->type() == ConversationEntry::entryType ? static_cast<ConversationEntry *>(item)
                                                                : nullptr;
}

bool ConversationList::needsWidget(int index) const
{
    const ConversationEntry *asked = entry(index);
    return asked && asked->needsWidget();
}

/// Makes what is on screen. Other rows wait for their slices.
void ConversationList::settle()
{
    if (isChanging || list->count() == 0)
        return;
    const QScopedValueRollback<bool> changing(isChanging, true);
    const RowRange range = rowsOnScreen(list);
    bool isChanged = false;
    for (int index = range.first; index < range.end; ++index) {
        if (!needsWidget(index))
            continue;
        make(index);
        isChanged = true;
    }
    if (isChanged)
        placeWidgets();
    slices.start(0, this);
}

/// One slice.
void ConversationList::work()
{
    const QScopedValueRollback<bool> changing(isChanging, true);
    Slice slice(sliceLength);
    const RowRange middle = rowsOnScreen(list);
    bool isChanged = false;
    const auto isMade = [&](int index) {
        if (!needsWidget(index))
            return true;
        if (!slice.mayBegin())
            return false;
        make(index);
        return isChanged = true;
    };
    const bool areMade =
        std::ranges::all_of(nearestFirst(middle, rowsAround(list, middle, screensMade)), isMade);
    if (isChanged)
        placeWidgets();
    if (!areMade)
        return;
    slices.stop();
    takeFarWidgets();
}

/// Entries keep their places: the list itself need not be laid out for new widgets.
void ConversationList::placeWidgets()
{
    list->QAbstractItemView::doItemsLayout();
}

void ConversationList::make(int index)
{
    ConversationEntry *made = entry(index);
    setRowWidget(list, made, makeConversationRow(made->row(), list->viewport()), ConversationEntry::height);
    made->setWidgetMade(true);
    withWidgets = withWidgets.with(index);
}

/// A preview is cut for its font when its row is made. The rows are made anew in a slice, because the change
/// of the font has not reached them yet.
void ConversationList::outdateWidgets()
{
    for (int index = withWidgets.first; index < withWidgets.end; ++index) {
        if (ConversationEntry *outdated = entry(index); outdated && outdated->ownsWidget())
            outdated->outdateWidget();
    }
    if (list->count() > 0)
        slices.start(0, this);
}

// While a mouse button is down, widgets stay: the one where it went down has to hear that it came up.
void ConversationList::takeFarWidgets()
{
    if (QGuiApplication::mouseButtons() != Qt::NoButton)
        return;
    const RowRange kept = rowsAround(list, rowsOnScreen(list), screensKept);
    const RowRange searched = std::exchange(withWidgets, kept);
    for (int index = searched.first; index < searched.end; ++index) {
        ConversationEntry *taken = entry(index);
        if (!taken || !taken->ownsWidget() || kept.contains(index))
            continue;
        list->itemWidget(taken)->hide(); // the list deletes it later
        list->removeItemWidget(taken);
        taken->setWidgetMade(false);
    }
}

} // namespace tideloft::ui
