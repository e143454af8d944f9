// A list of the client in a window of its own, and the time until it is drawn.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/chat/history_list.h"
#include "ui/sidebar/conversation_list.h"
#include "ui/style/style_sheets.h"

#include <QApplication>
#include <QListWidget>
#include <QMainWindow>

#include <ctime>
#include <functional>

namespace tideloft::bench
{

/// A window in the client's colours with one list in it, as wide as the client's own.
class ListWindow
{
public:
    explicit ListWindow(const QString &name)
    {
        window.setStyleSheet(ui::darkStyleSheet());
        list = new QListWidget(&window);
        list->setObjectName(name);
        list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        if (name == QLatin1String("messageList")) {
            list->setWordWrap(true);
            list->setSelectionMode(QAbstractItemView::NoSelection);
            history = new ui::HistoryList(list);
        }
        if (name == QLatin1String("dmList"))
            conversations = new ui::ConversationList(list);
        window.setCentralWidget(list);
        window.resize(name == QLatin1String("messageList") ? 784 : 260, 540);
        window.show();
        QApplication::processEvents();
    }

    QMainWindow window;
    QListWidget *list = nullptr;
    ui::HistoryList *history = nullptr;            ///< of the list of messages
    ui::ConversationList *conversations = nullptr; ///< of the list of conversations
};

inline double processorSeconds()
{
    timespec used = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return double(used.tv_sec) + double(used.tv_nsec) / 1e9;
}

/// Milliseconds of processor time until WORK is done and drawn: other programs on the machine do not count.
inline double drawnMilliseconds(const std::function<void()> &work)
{
    const double before = processorSeconds();
    work();
    QApplication::processEvents();
    return (processorSeconds() - before) * 1e3;
}

} // namespace tideloft::bench
