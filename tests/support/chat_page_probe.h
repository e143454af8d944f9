// The page of a conversation alone, in a window that is dressed as the program's is.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/chat_rows.h"
#include "tests/support/page_window.h"
#include "tests/support/widget_parts.h"
#include "ui/chat/chat_page.h"

#include <QLineEdit>

namespace tideloft::tests
{

/// "alice" has opened her conversation with "bob".
class ChatPageProbe
{
public:
    ChatPageProbe() : window(QSize(1100 - besides, 720)), page(new ui::ChatPage(language, &window))
    {
        page->showPeer(QStringLiteral("bob"));
        page->retranslate(language);
        window.showPage(page);
    }

    /// Makes ITEMS the history that is shown, as a refresh does.
    void showHistory(const QJsonArray &items) const { showHistory(page, items); }
    static void showHistory(ui::ChatPage *page, const QJsonArray &items)
    {
        const ui::Reading reading{QStringLiteral("alice"), {}, QDateTime::currentDateTime(), language};
        page->showHistory(QStringLiteral("bob"), ui::historyRows(ui::displayRecords(items, reading),
                                                                 QDate::currentDate(), language));
    }
    QListWidget *messageList() const { return only<QListWidget>(*page, QStringLiteral("messageList")); }
    QLineEdit *msgInput() const { return only<QLineEdit>(*page, QStringLiteral("msgInput")); }

    static constexpr int besides = 56 + 260; ///< the width of rail and sidebar, which stand beside the page
    static constexpr ui::Language language = ui::Language::English;
    PageWindow window;
    ui::ChatPage *page;
};

} // namespace tideloft::tests
