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

/// Puts the pages together and moves between them; the window decides what they show. They are made after the
/// window has drawn its first frame, or when one is asked for: so the sign-in page is on screen sooner.
class MainPage : public LazyPage
{
    Q_OBJECT

public:
    /// Texts that keep the language in which they are made keep LANGUAGEOFTEXTS, whenever that is.
    MainPage(Language languageOfTexts, QWidget *parent);
    void retranslate(Language newLanguage);
    void setVisible(bool visible) override;

    [[nodiscard]] Rail *rail();
    [[nodiscard]] Sidebar *sidebar();
    [[nodiscard]] SideFooter *footer();
    [[nodiscard]] ChatPage *chat();

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
    void serverNamed(const QString &name, const QString &description);
    void serverIconChosen(const QString &groupId, const QString &path);
    void searchTyped(const QString &query); ///< has at least two characters
    void searchEntered();
    void conversationChosen(const QString &peer);
    void logOutChosen();
    void sendClicked();

private:
    void ensureParts();
    [[nodiscard]] QStackedWidget *center();
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

    const Language buildLanguage;
    Language language = buildLanguage;
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
