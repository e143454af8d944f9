// What of a history is opened and measured at once, and how the list learns of sizes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/history_list.h"

#include "ui/chat/history_delegate.h"
#include "ui/lists/row_reconciler.h"

#include <QDeadlineTimer>
#include <QEvent>
#include <QListWidget>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTimerEvent>

#include <utility>

namespace tideloft::ui
{

HistoryList::HistoryList(QListWidget *watched, int slice)
    : QObject(watched),
      list(watched),
      widgets(watched),
      sliceLength(slice)
{
    list->setItemDelegate(new HistoryDelegate(list));
    list->viewport()->installEventFilter(this);
    connect(list->verticalScrollBar(), &QScrollBar::valueChanged, this, &HistoryList::onScrolled);
}

void HistoryList::show(const QList<HistoryRow> &rows)
{
    {
        const QScopedValueRollback<bool> settling(isSettling, true);
        topBefore = -1;
        const bool isNew = placeRows<HistoryEntry>(list, rows);
        if (isNew)
            renumber();
        // Rows are measured beside the scroll bar, not without it first.
        const Qt::ScrollBarPolicy policy = list->verticalScrollBarPolicy();
        if (isNew && needsScrollBar())
            list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        measureAtOnce(newest(newestAtOnce), QDeadlineTimer(longestAtOnce));
        if (applySizes() || isNew)
            list->doItemsLayout();
        list->setVerticalScrollBarPolicy(policy);
        list->scrollToBottom();
    }
    settle(newest(newestAtOnce), -1, true);
}

/// Whether even the estimates, which are low, do not fit.
bool HistoryList::needsScrollBar() const
{
    int height = 0;
    for (int index = 0; index < list->count() && height <= list->viewport()->height(); ++index)
        height += list->item(index)->sizeHint().height();
    return height > list->viewport()->height();
}

/// The list learns of the new size later, of many at once.
void HistoryList::measure(int index)
{
    if (widgets.measure(index))
        unapplied.append(index);
}

/// The newest first.
void HistoryList::measureAtOnce(RowRange range, const QDeadlineTimer &end)
{
    for (int index = range.end; index-- > range.first && !end.hasExpired();)
        measure(index);
}

/// Entries have other indexes now.
void HistoryList::renumber()
{
    measuredFrom = preparedFor = {};
    areMeasured = false;
    withWidgets = {0, list->count()};
    unapplied.clear();
    for (int index = 0; index < list->count(); ++index) {
        if (widgets.entry(index)->isMeasured() && !widgets.entry(index)->isApplied())
            unapplied.append(index);
    }
}

/// Opens, measures and makes what is on screen and ATONCE. Meanwhile the row ANCHOR stays where it stands on
/// screen, or if it is -1 the first there, or the list stays at its end.
void HistoryList::settle(RowRange atOnce, int anchor, bool keepsBottom)
{
    const QScopedValueRollback<bool> settling(isSettling, true);
    widthsInSlices = 0;
    keepsBottom = keepsBottom || isAtBottom();
    // Rows that turn out lower than estimated bring others on screen, and a scroll bar changes the width.
    const QDeadlineTimer end(longestAtOnce);
    for (int round = 0; round < 50; ++round) {
        measureAtOnce(atOnce, end);
        measureAtOnce(rowsOnScreen(list), QDeadlineTimer(QDeadlineTimer::Forever));
        if (!layOut(anchor, keepsBottom))
            break;
    }
    // The list is asked first: once a row has a new widget, a question for places makes it lay itself out.
    const RowRange seen = rowsOnScreen(list);
    if (int(makeWidgets(atOnce)) + int(makeWidgets(seen)) > 0)
        placeWidgets();
    rememberPlace();
    if (list->count() > 0)
        slices.start(0, this);
}

/// Lets the list know what was measured. False if it knows already.
bool HistoryList::layOut(int anchor, bool keepsBottom)
{
    const int held = anchor >= 0 ? anchor : rowsOnScreen(list).first;
    const int y = list->visualItemRect(list->item(held)).top();
    const bool isWidthNew = std::exchange(isStale, false);
    if (!applySizes() && !isWidthNew)
        return false;
    list->doItemsLayout();
    QScrollBar *bar = list->verticalScrollBar();
    if (keepsBottom)
        bar->setValue(bar->maximum());
    else
        bar->setValue(bar->value() + list->visualItemRect(list->item(held)).top() - y);
    rememberPlace();
    return true;
}

/// Lets entries tell their measures when the list asks. False if nothing is new.
bool HistoryList::applySizes()
{
    bool isChanged = false;
    for (const int index : std::exchange(unapplied, {})) {
        HistoryEntry *entry = widgets.entry(index);
        isChanged = (entry && entry->isMeasured() && entry->applySize()) || isChanged;
    }
    return isChanged;
}

void HistoryList::onScrolled()
{
    if (isSettling)
        return;
    // What was on screen before, or a little above, moves as far as the user has scrolled.
    const int way = qAbs(list->verticalScrollBar()->value() - valueBefore);
    const bool isNear = way <= 2 * list->viewport()->height() && topBefore < list->count();
    settle({}, isNear ? topBefore : -1, false);
}

bool HistoryList::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Resize:
        onResized();
        break;
    case QEvent::FontChange:
    case QEvent::StyleChange:
    case QEvent::Polish:
        widgets.forgetFonts();
        remeasure(true);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void HistoryList::onResized()
{
    const bool wasAtBottom = isAtBottom();
    if (list->viewport()->width() != width) {
        width = list->viewport()->width();
        isStale = true; // by itself the list waits a little
        remeasure(false);
    } else if (isSettling || list->count() == 0) {
        return;
    }
    if (!isSettling && list->count() > 0)
        settle(wasAtBottom ? newest(newestAtOnce) : RowRange{}, -1, wasAtBottom);
}

/// Every measure is an estimate from now on. A notice is measured at once.
void HistoryList::remeasure(bool fontsAreNew)
{
    measuredFrom = preparedFor = {};
    areMeasured = false;
    for (int index = 0; index < list->count(); ++index) {
        QListWidgetItem *item = list->item(index);
        if (HistoryEntry *entry = widgets.entry(index))
            entry->forgetMeasure(width, fontsAreNew);
        else if (const QWidget *row = list->itemWidget(item); row && item->sizeHint() != row->sizeHint())
            item->setSizeHint(row->sizeHint());
    }
    if (list->count() > 0)
        slices.start(0, this);
}

void HistoryList::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == slices.timerId())
        work();
    else
        QObject::timerEvent(event);
}

} // namespace tideloft::ui
