// A list of conversations in a window, and replies that fill and change it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/conversation_cache.h"

#include <QListWidget>
#include <QRandomGenerator>
#include <QScrollBar>

namespace tideloft::tests
{

/// A list as in the client's sidebar.
struct ConversationWindow {
    ConversationWindow();

    QScrollBar *bar() const { return list.verticalScrollBar(); }
    bool hasWidget(int index) const { return list.itemWidget(list.item(index)); }
    QString spoken(int index) const { return list.item(index)->data(Qt::AccessibleTextRole).toString(); }

    QListWidget list;
};

/// The service's conversations, made and changed at random, and read by one client.
class Conversations
{
public:
    explicit Conversations(quint32 seed = 1) : random(seed) {}

    /// Appends COUNT of them.
    void fill(int count);
    /// What the next reply can bring: new conversations, others gone, a new message that comes to the top,
    /// and another order; or another day or language in which all of them are read.
    void change();
    QList<ui::ConversationRowModel> rows();

    QRandomGenerator random;
    QJsonArray items;
    int opened = 0; ///< how many messages

private:
    QJsonObject item();

    ui::ConversationCache cache;
    ui::Language language = ui::Language::English;
    QDateTime now{QDate(2024, 5, 17), QTime(23, 50)};
    int named = 0;
};

} // namespace tideloft::tests
