// A chat to which all sorts of things happen.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/conversation_cache.h"
#include "ui/messages/history_row_models.h"

#include <QRandomGenerator>

namespace tideloft::tests
{

/// The service's items, the clock and the language, changed at random.
class ChangingChat
{
public:
    explicit ChangingChat(quint32 seed) : random(seed) {}

    void change();
    QList<ui::HistoryRow> history() const;
    QList<ui::ConversationRowModel> conversations();
    int below(int limit) { return random.bounded(limit); }

private:
    QJsonObject item();
    QString name();
    QString words();
    QString time();
    void changeItem();
    void moveItem();

    QRandomGenerator random;
    QJsonArray items;
    QDateTime now{QDate(2024, 5, 17), QTime(23, 50)};
    ui::ConversationCache cache;
    ui::Language language = ui::Language::English;
};

} // namespace tideloft::tests
