// The sidebar: the search, the found users, and the conversations.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/messages/conversation_row_models.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace tideloft::ui
{

class ConversationList;

class Sidebar : public QWidget
{
    Q_OBJECT

public:
    Sidebar(Language language, QWidget *parent);
    /// Puts FOOTER below the conversations.
    void addFooter(QWidget *footer);

    void retranslate(Language language);

    void showConversations(const QList<ConversationRowModel> &rows);
    /// Previews that are not on screen are not opened any more.
    void endConversations();
    void showFoundUsers(const QStringList &usernames);
    /// What stands in the search now, trimmed, to be searched for even if it is short; empty if there is
    /// nothing.
    QString takeQuery();
    void focusSearch();
    void selectSearch(); ///< the same, and selects the text
    void focusConversations();
    /// Empties everything that belongs to one user.
    void clear();

signals:
    /// PEER is trimmed and not empty.
    void conversationChosen(const QString &peer);
    void searchTyped(const QString &query); ///< has at least two characters
    void searchEntered();
    void searchLeft();

private:
    QWidget *makeHeader();
    QWidget *makeSearch();
    void makeLists();
    void connectParts();
    void connectKeys();
    void beginSearch();
    void searchAsTyped(const QString &typed);
    void leaveSearch();
    void choose(const QListWidgetItem *entry);
    void pickFoundUser(const QListWidgetItem *entry);

    QLabel *sidebarTitle = nullptr;
    QPushButton *addDmBtn = nullptr;
    QLineEdit *sideSearch = nullptr;
    QListWidget *searchResults = nullptr;
    QListWidget *dmList = nullptr;
    ConversationList *conversations = nullptr; ///< in dmList
    bool searchIsLeft = false;                 ///< by Escape: what was asked for before is not shown any more
};

} // namespace tideloft::ui
