// The main page: the settings, what they change, and for whom.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_page.h"

#include "net/service_host.h"
#include "ui/chat/chat_page.h"
#include "ui/rail/rail.h"
#include "ui/settings/settings_page.h"
#include "ui/sidebar/side_footer.h"
#include "ui/sidebar/sidebar.h"
#include "ui/style/fade_in.h"

#include <QStackedWidget>

#include <utility>

namespace tideloft::ui
{

void MainPage::showUser(const QString &name, const QString &bio)
{
    username = name;
    savedBio = bio;
    footer()->showUser(username);
    if (settingsPage)
        settingsPage->setSavedBio(savedBio);
}

void MainPage::endSaving(const QString &bio, bool saved)
{
    if (settingsPage)
        settingsPage->endSaving();
    if (!saved)
        return;
    savedBio = bio;
    if (settingsPage)
        settingsPage->markSaved(bio);
    footer()->confirmSaving();
}

void MainPage::showPicture(const QPixmap &picture)
{
    if (settingsPage)
        settingsPage->showPicture(picture);
}

// The settings page goes when the event loop has its next turn: one of its widgets may have sent the event
// that led here. The lists fill again as their replies come.
void MainPage::clear()
{
    if (settingsPage) {
        centerStack->removeWidget(settingsPage);
        std::exchange(settingsPage, nullptr)->deleteLater();
    }
    footer()->forgetPicture();
    chatPage->clear();
    leftSidebar->clear();
    railColumn->forgetServers();
}

void MainPage::makeSettings()
{
    settingsPage = new SettingsPage({username, savedBio, net::serviceHost()}, language, centerStack);
    centerStack->addWidget(settingsPage);
    connect(settingsPage, &SettingsPage::backClicked, this, &MainPage::backToChatChosen);
    connect(settingsPage, &SettingsPage::pictureClicked, this, &MainPage::pictureClicked);
    connect(settingsPage, &SettingsPage::saveClicked, this, &MainPage::saveClicked);
    connect(settingsPage, &SettingsPage::themeChosen, this, [this](bool dark) {
        changeTheme({dark, theme.accent});
    });
    connect(settingsPage, &SettingsPage::accentChosen, this, [this](const QString &colour) {
        changeTheme({theme.isDark, colour});
    });
}

void MainPage::showSettings()
{
    railColumn->markPlace(Rail::Place::Settings);
    if (!settingsPage)
        makeSettings();
    centerStack->setCurrentWidget(settingsPage);
}

void MainPage::openSettings()
{
    showSettings();
    fadeIn(settingsPage);
}

void MainPage::showAccount()
{
    showSettings();
    settingsPage->showAccount();
}

void MainPage::showSettingsView()
{
    if (!settingsPage)
        return;
    centerStack->setCurrentWidget(settingsPage);
    fadeIn(settingsPage);
}

void MainPage::changeTheme(const Theme &newTheme)
{
    theme = newTheme;
    emit themeChanged(theme);
    footer()->restorePicture();
}

} // namespace tideloft::ui
