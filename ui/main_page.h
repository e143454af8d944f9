// The page of those who are signed in: rail, sidebar, and in the center what is open.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/style/theme.h"
#include "ui/texts/text.h"
#include "ui/widgets/lazy_page.h"

class QStackedWidget;

namespace tideloft::ui
{

class ChatPage;
class EmptyState;
class Rail;
class SettingsPage;
class SideFooter;
class Sidebar;

/// Puts the pages together and moves between them. What they show of the service's replies is decided by the
/// window.
class MainPage : public LazyPage
{
    Q_OBJECT

public:
    MainPage(Language language, QWidget *parent);
    void retranslate(Language language);

    [[nodiscard]] Rail *rail() const { return railColumn; }
    [[nodiscard]] Sidebar *sidebar() const { return leftSidebar; }
    [[nodiscard]] SideFooter *footer() const { return sideFooter; }
    [[nodiscard]] ChatPage *chat() const { return chatPage; }

    /// Shows who is signed in, and on the settings page BIO, which the service has of this user.
    void showUser(const QString &name, const QString &bio);
    /// The answer to saveClicked() is here. If BIO was SAVED, the footer says so.
    void endSaving(const QString &bio, bool saved);
    /// Shows the user's new picture, round, 64 x 64, on the settings page.
    void showPicture(const QPixmap &picture);
    /// Empties every page of what belongs to one user. The settings page is deleted until it is asked for.
    void clear();

    void showEmptyState();
    /// Shows the chat page and gives the keyboard to its field.
    void showChat();
    /// Shows the notice of the server GROUPID in place of the conversation.
    void showServer(const QString &groupId);
    /// Shows the settings page, if there is one.
    void showSettingsView();

signals:
    void backToChatChosen();
    void pictureClicked();
    void saveClicked(const QString &displayName, const QString &bio);
    void themeChanged(const tideloft::ui::Theme &theme);

private:
    void makeParts();
    QWidget *makeCenter();
    void makeSettings();
    void connectParts();
    void showMessages();
    void showSettings();
    void openSettings();
    void showAccount();
    void leaveSearch();
    void changeTheme(const Theme &newTheme);

    Language language;
    QString username;
    QString savedBio;
    Theme theme;
    Rail *railColumn = nullptr;
    Sidebar *leftSidebar = nullptr;
    SideFooter *sideFooter = nullptr;
    QStackedWidget *centerStack = nullptr;
    EmptyState *emptyState = nullptr;
    ChatPage *chatPage = nullptr;
    SettingsPage *settingsPage = nullptr;
};

} // namespace tideloft::ui
