// What a person leaves behind in the window, and who gets to see it: only the same person.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "ui/style/inline_styles.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QStackedWidget>

namespace tideloft::ui
{

// The lists fill again as their replies come.
void MainWindow::forgetOtherUser()
{
    footerAvatarPixmap = {};
    footerAvatar->setStyleSheet(style::footerInitials());
    forgetSettingsPage();
    forgetHistory();
    messageList->clear();
    shownHistory.clear();
    selectedServerId.clear();
    leaveServer();
    sentTexts.clear();
    showChatHeader({}, {}, {});
    msgInput->clear();
    sideSearch->clear();
    searchResultsData = {};
    dmList->clear();
    conversationsData = {};
    servers = {};
    rebuildServerRail();
}

// The page is made anew when it is next asked for. Its widgets go when the event loop has its next turn: one
// of them may have sent the event that led here.
void MainWindow::forgetSettingsPage()
{
    if (!settingsPage)
        return;
    centerStack->removeWidget(settingsPage);
    settingsPage->deleteLater();
    settingsPage = nullptr;
    settingsNavList = nullptr;
    settingsStack = nullptr;
    bioField = nullptr;
}

// The tick is the choice of the user who made it. It goes as soon as TYPEDNAME cannot become that user's
// name.
void MainWindow::keepRememberCheckFor(const QString &typedName)
{
    if (rememberedUser.isEmpty() || rememberedUser.startsWith(typedName.trimmed().toLower()))
        return;
    rememberCheck->setChecked(false);
}

} // namespace tideloft::ui
