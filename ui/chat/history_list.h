// The chat history in its list: every row has an entry, and those near the eye have a widget.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/chat/history_widgets.h"
#include "ui/lists/visible_rows.h"

#include <QBasicTimer>
#include <QObject>

class QDeadlineTimer;

namespace tideloft::ui
{

class Slice;

/// Shows rows in a list that it watches from then on. What is on screen and the newest rows are opened,
/// measured and made at once. All others are opened and measured in short slices between events, the nearest
/// first. Until then an entry's height is an estimate; when that changes, nothing on screen moves.
class HistoryList : public QObject
{
    Q_OBJECT

public:
    static constexpr int newestAtOnce = 40;
    static constexpr int newestWithWidgets = 200;
    /// ms; messages that are hard to draw wait for their turn once those at once have taken so long.
    static constexpr int longestAtOnce = 1'000;
    static constexpr int usualSlice = 6; ///< ms; a longer one could be noticed

    /// WATCHED owns it. A slice takes about SLICE ms.
    explicit HistoryList(QListWidget *watched, int slice = usualSlice);

    /// Makes the list show ROWS and scrolls it to its bottom. Rows that it shows already are not touched.
    void show(const QList<HistoryRow> &rows);
    /// Ends the work on rows that are not on screen. The next rows begin it anew; so do a scroll, another
    /// size and other fonts.
    void stop() { slices.stop(); }
    /// Whether every row is measured, and every row that is to have a widget has it.
    [[nodiscard]] bool isSettled() const { return !slices.isActive(); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    void renumber();
    [[nodiscard]] bool needsScrollBar() const;
    void measure(int index);
    bool measureIn(Slice &slice, int index);
    void measureAtOnce(RowRange range, const QDeadlineTimer &end);
    [[nodiscard]] RowRange newest(int count) const;
    [[nodiscard]] bool isAtBottom() const;
    [[nodiscard]] QList<int> nearRows(RowRange middle) const;

    void settle(RowRange atOnce, int anchor, bool keepsBottom);
    bool layOut(int anchor, bool keepsBottom);
    bool applySizes();
    void make(int index);
    bool makeWidgets(RowRange range);
    void placeWidgets();
    void onScrolled();
    void onResized();
    void remeasure(bool fontsAreNew);
    void work();
    bool workNearby(RowRange middle, Slice &slice);
    bool makeNearby(const QList<int> &rows, Slice &slice);
    bool measureOutward(RowRange middle, Slice &slice);
    bool measureBeside(RowRange middle, Slice &slice);
    void takeFarWidgets();
    void rememberPlace();

    QListWidget *list;
    HistoryWidgets widgets;
    const int sliceLength; ///< ms
    QBasicTimer slices;
    int width = 0;            ///< of the viewport, for which rows are measured
    int topBefore = -1;       ///< the first row on screen, and
    int valueBefore = 0;      ///< where the list stood, when it was last settled
    QList<int> unapplied;     ///< rows that are measured, of which the list does not know yet
    int distance = 0;         ///< how far from the screen rows are measured, while it shows
    RowRange measuredFrom;    ///< these
    RowRange preparedFor;     ///< what is near these has its widgets
    RowRange withWidgets;     ///< rows outside of this range have no widget, except the newest rows
    bool areMeasured = false; ///< all rows
    bool isStale = false;     ///< the list is laid out for another width
    int widthsInSlices = 0;   ///< how often a slice has changed the width since rows were settled
    bool isSettling = false;
};

} // namespace tideloft::ui
