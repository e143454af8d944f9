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
    msgInput->clear();
    sideSearch->clear();
    dmList->clear();
    servers = {};
    rebuildServerRail();
}

// The page is made anew when it is next asked for. Deleting waits: one of its dialogs may be open.
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

// The tick is the choice of whoever made it. As soon as TYPEDNAME cannot become that user's name, it goes.
void MainWindow::keepRememberCheckFor(const QString &typedName)
{
    if (rememberedUser.isEmpty() || rememberedUser.startsWith(typedName.trimmed().toLower()))
        return;
    rememberCheck->setChecked(false);
}

} // namespace tideloft::ui
