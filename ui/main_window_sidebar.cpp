// The conversation list and the search for users.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "ui/sidebar/conversation_list.h"
#include "ui/texts/bounded_text.h"

#include <QDateTime>
#include <QLineEdit>
#include <QListWidget>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

void MainWindow::onConversationsLoaded(const QJsonArray &items)
{
    conversationsData = items;
    const auto open = [this](const QJsonObject &item) { return openedText(item); };
    showConversations(dmList, conversationRows(items, open, QDateTime::currentDateTime(), language()));
}

void MainWindow::onConversationsFailed(const QString &) {}

void MainWindow::onConversationSelected() {}

void MainWindow::searchAsTyped(const QString &typed)
{
    const QString query = typed.trimmed();
    if (query.toUcs4().size() < 2) { // characters, as in initials: an emoji is one
        searchResults->clear();
        searchResults->hide();
        return;
    }
    searchIsLeft = false;
    api.searchUsers(query);
}

void MainWindow::onSearchClicked()
{
    const QString query = sideSearch->text().trimmed();
    if (query.isEmpty())
        return;
    searchIsLeft = false;
    api.searchUsers(query);
}

void MainWindow::onSearchLoaded(const QJsonArray &users)
{
    searchResultsData = users;
    searchResults->clear();
    for (const QString &username : foundUsers(users)) {
        auto *entry = new QListWidgetItem(u"👤  "_s + inOneLine(username), searchResults);
        entry->setData(Qt::UserRole, username);
        entry->setSizeHint({0, searchResults->sizeHintForRow(searchResults->count() - 1)}); // never wider
    }
    searchResults->setVisible(searchResults->count() > 0 && !searchIsLeft);
}

void MainWindow::onSearchFailed(const QString &) {}

void MainWindow::onSearchUserDoubleClicked() {}

void MainWindow::leaveSearch()
{
    sideSearch->clear();
    searchResults->hide();
    searchIsLeft = true;
    QWidget *next =
        msgInput->isVisible() && msgInput->isEnabled() ? static_cast<QWidget *>(msgInput) : dmList;
    next->setFocus();
}

void MainWindow::pickSearchResult(QListWidgetItem *entry)
{
    // A copy: clearing the search deletes the entry.
    const QString username = entry->data(Qt::UserRole).toString().trimmed();
    if (username.isEmpty())
        return;
    searchResults->hide();
    sideSearch->clear();
    openConversation(username);
}

} // namespace tideloft::ui
