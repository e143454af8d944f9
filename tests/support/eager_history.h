// A history whose rows all have their widgets at once: what a list looks like that makes them where somebody
// looks.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/history_row_models.h"

#include <QObject>

class QListWidget;

namespace tideloft::tests
{

/// Shows rows in a list, and keeps every entry's size hint equal to its widget's own while the list's width
/// changes. A list that stands at its bottom stays there; in another, the first row on screen stays.
class EagerHistory : public QObject
{
public:
    /// LIST owns it.
    explicit EagerHistory(QListWidget *list);

    /// Makes the list show ROWS, of which it keeps those that it shows already, and scrolls it to its bottom.
    void show(const QList<ui::HistoryRow> &rows);

    /// Takes the rows' own sizes, which may have changed with their fonts.
    void layOut();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool updateHints();

    QListWidget *list;
    int width = 0;
    bool isStale = false; ///< the list is laid out for another width
};

} // namespace tideloft::tests
