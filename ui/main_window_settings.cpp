// The settings view: its navigation, and the ways into it and out of it.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "net/service_host.h"
#include "ui/settings/settings_room.h"
#include "ui/settings/settings_sections.h"
#include "ui/style/fade_in.h"
#include "ui/style/settings_styles.h"
#include "ui/style/symbol_font.h"
#include "ui/widgets/focus_ring.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

const QList<Words> &sectionNames()
{
    static const QList<Words> names{{u"👤  Konto"_s, u"👤  Account"_s},
                                    {u"🔒  Privacy"_s, u"🔒  Privacy"_s},
                                    {u"🛡  Säkerhet"_s, u"🛡  Security"_s},
                                    {u"🔔  Notiser"_s, u"🔔  Notifications"_s},
                                    {u"💬  Chatt"_s, u"💬  Chat"_s},
                                    {u"🎨  Utseende"_s, u"🎨  Appearance"_s},
                                    {u"⚙  Avancerat"_s, u"⚙  Advanced"_s},
                                    {u"ℹ️  Om TideLoft"_s, u"ℹ️  About TideLoft"_s}};
    return names;
}

} // namespace

// Marks the rail, and builds the page when it is first asked for; it is kept from then on.
void MainWindow::showSettingsPage()
{
    railSettingsBtn->setChecked(true);
    railMessagesBtn->setChecked(false);
    if (!settingsPage) {
        settingsPage = buildSettingsPage();
        centerStack->addWidget(settingsPage);
    }
    centerStack->setCurrentWidget(settingsPage);
}

void MainWindow::openSettings()
{
    showSettingsPage();
    fadeIn(settingsPage);
}

void MainWindow::showSettingsView()
{
    if (!settingsPage)
        return;
    centerStack->setCurrentWidget(settingsPage);
    fadeIn(settingsPage);
}

// The settings view always shows the section that it stands at.
void MainWindow::showSettingsSection(const QString &)
{
    showSettingsView();
}

QWidget *MainWindow::buildSettingsPage()
{
    auto *page = new QWidget(centerStack);
    page->setStyleSheet(style::settingsPage);
    QWidget *nav = buildSettingsNav(page); // before the sections: the Tab key follows the order of making
    settingsStack = new QStackedWidget(page);
    settingsStack->setStyleSheet(style::settingsPage);
    const SectionContext context{.language = language(),
                                 .languageNow = [this] { return language(); },
                                 .parent = settingsStack,
                                 .window = this};
    for (QWidget *section :
         {buildSettingsKonto(context, myUsername,
                             [this](QWidget *parent) { return buildProfileCard(parent); }),
          buildSettingsPrivacy(context), buildSettingsSecurity(context), buildSettingsNotifications(context),
          buildSettingsChat(context), buildSettingsAppearance(), buildSettingsAdvanced(context),
          buildSettingsAbout(context, net::serviceHost())}) {
        // Its area takes the keyboard to scroll, so it needs a name: that of its row, without the icon.
        section->setAccessibleName(settingsNavList->item(settingsStack->count())->text().section(u"  "_s, 1));
        settingsStack->addWidget(section);
    }
    auto *line = makeLine(page);
    line->addWidget(nav);
    line->addWidget(settingsStack, 1);
    makeRoomForSections(page, nav, settingsStack);
    connect(settingsNavList, &QListWidget::currentRowChanged, settingsStack,
            &QStackedWidget::setCurrentIndex);
    settingsNavList->setCurrentRow(0);
    return page;
}

QWidget *MainWindow::buildSettingsNav(QWidget *page)
{
    auto *nav = makeBox(page, u"settingsNav"_s);
    nav->setStyleSheet(style::settingsNav);
    // The border of the navigation has no selector: between it and the caption stands a box without any.
    auto *captionBox = new QWidget(nav);
    captionBox->setStyleSheet(style::settingsNavCaptionBox);
    auto *caption = makeLabel(text(u"Inställningar"_s, u"Settings"_s), captionBox);
    caption->setStyleSheet(style::settingsNavCaption);
    makeColumn(captionBox)->addWidget(caption);
    settingsNavList = new QListWidget(nav);
    settingsNavList->setStyleSheet(style::settingsNavList);
    settingsNavList->setAccessibleName(caption->text());
    ringFocus(settingsNavList);
    for (const Words &name : sectionNames())
        settingsNavList->addItem(name.in(language()));
    for (QListWidgetItem *entry : settingsNavList->findItems(u"⚙"_s, Qt::MatchStartsWith))
        entry->setFont(style::symbolFont());
    auto *back = makeButton(u"←  "_s + text(u"Tillbaka till chatten"_s, u"Back to chat"_s), nav);
    back->setStyleSheet(style::settingsBackButton);
    connect(back, &QPushButton::clicked, this, &MainWindow::backToChat);
    auto *column = makeColumn(nav);
    column->addWidget(captionBox);
    column->addWidget(settingsNavList, 1);
    column->addWidget(back);
    return nav;
}

} // namespace tideloft::ui
