// The conversations in their list: every one has an entry, and those near the screen have a widget.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/lists/visible_rows.h"
#include "ui/messages/conversation_row_models.h"

#include <QBasicTimer>
#include <QObject>

class QListWidget;

namespace tideloft::ui
{

class ConversationEntry;

/// Shows conversations in a list that it watches from then on. The previews of those on screen are opened,
/// and their widgets made, at once; those of their neighbours follow in short slices between events. Widgets
/// that are far from the screen are taken back.
class ConversationList : public QObject
{
    Q_OBJECT

public:
    static constexpr int usualSlice = 6; ///< ms; a longer one could be noticed

    /// WATCHED owns it. A slice takes about SLICE ms.
    explicit ConversationList(QListWidget *watched, int slice = usualSlice);

    /// Makes the list show ROWS. Rows that it shows already are not touched. No entry is selected any more;
    /// the current one stays current for the keyboard, wherever it stands now, but nothing marks it.
    void show(const QList<ConversationRowModel> &rows);
    /// Ends the work on rows that are not on screen. The next rows, a scroll, a new size or another font
    /// begin it anew.
    void stop() { slices.stop(); }
    /// Whether every row that is to have a widget has it.
    [[nodiscard]] bool isSettled() const { return !slices.isActive(); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    [[nodiscard]] ConversationEntry *entry(int index) const;
    [[nodiscard]] bool needsWidget(int index) const;
    void keepCurrentRow(const QList<ConversationRowModel> &rows, const QString &user);
    void settle();
    void work();
    void make(int index);
    void placeWidgets();
    void outdateWidgets();
    void takeFarWidgets();

    QListWidget *list;
    const int sliceLength; ///< ms
    QBasicTimer slices;
    RowRange withWidgets; ///< holds every row that has a widget
    bool isChanging = false;
};

} // namespace tideloft::ui
