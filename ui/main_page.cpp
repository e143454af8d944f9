// The main page: how it is put together, and the ways between its pages.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_page.h"

#include "ui/chat/chat_page.h"
#include "ui/chat/empty_state.h"
#include "ui/keyboard/program_keys.h"
#include "ui/rail/rail.h"
#include "ui/settings/settings_page.h"
#include "ui/sidebar/side_footer.h"
#include "ui/sidebar/sidebar.h"
#include "ui/style/fade_in.h"
#include "ui/texts/initials.h"
#include "ui/widgets/first_frame.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

MainPage::MainPage(Language languageOfTexts, QWidget *parent)
    : LazyPage(parent),
      buildLanguage(languageOfTexts)
{
    afterFirstFrame(this, [this] { ensureParts(); });
}

void MainPage::setVisible(bool visible)
{
    if (visible)
        ensureParts();
    LazyPage::setVisible(visible);
}

void MainPage::ensureParts()
{
    if (centerStack)
        return;
    fillUnstyled([this] { makeParts(); });
    connectParts();
    retranslate(language);
}

Rail *MainPage::rail()
{
    ensureParts();
    return railColumn;
}

Sidebar *MainPage::sidebar()
{
    ensureParts();
    return leftSidebar;
}

SideFooter *MainPage::footer()
{
    ensureParts();
    return sideFooter;
}

ChatPage *MainPage::chat()
{
    ensureParts();
    return chatPage;
}

QStackedWidget *MainPage::center()
{
    ensureParts();
    return centerStack;
}

void MainPage::makeParts()
{
    railColumn = new Rail(buildLanguage, this);
    leftSidebar = new Sidebar(buildLanguage, this);
    sideFooter = new SideFooter(buildLanguage, leftSidebar);
    leftSidebar->addFooter(sideFooter);
    auto *layout = makeRowLayout(this);
    layout->addWidget(railColumn);
    layout->addWidget(leftSidebar);
    layout->addWidget(makeCenter(), 1);
}

// The first page of a stack is measured as it is added, so it is filled afterwards.
QWidget *MainPage::makeCenter()
{
    auto *panel = makeBox(this, u"centerPanel"_s);
    panel->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    centerStack = new QStackedWidget(panel);
    emptyState = new EmptyState(centerStack);
    centerStack->addWidget(emptyState);
    emptyState->build(buildLanguage);
    chatPage = new ChatPage(buildLanguage, centerStack);
    centerStack->addWidget(chatPage);
    makeColumnLayout(panel)->addWidget(centerStack, 1);
    return panel;
}

void MainPage::connectParts()
{
    connect(railColumn, &Rail::messagesClicked, this, &MainPage::showMessages);
    connect(railColumn, &Rail::settingsClicked, this, &MainPage::openSettings);
    connect(railColumn, &Rail::serverChosen, this, &MainPage::showServer);
    connect(railColumn, &Rail::serverNamed, this, &MainPage::serverNamed);
    connect(railColumn, &Rail::serverIconChosen, this, &MainPage::serverIconChosen);
    connect(leftSidebar, &Sidebar::searchTyped, this, &MainPage::searchTyped);
    connect(leftSidebar, &Sidebar::searchEntered, this, &MainPage::searchEntered);
    connect(leftSidebar, &Sidebar::conversationChosen, this, &MainPage::conversationChosen);
    connect(leftSidebar, &Sidebar::searchLeft, this, &MainPage::leaveSearch);
    connect(sideFooter, &SideFooter::pictureClicked, this, &MainPage::pictureClicked);
    connect(sideFooter, &SideFooter::profileChosen, this, &MainPage::showAccount);
    connect(sideFooter, &SideFooter::settingsChosen, this, &MainPage::showSettings);
    connect(sideFooter, &SideFooter::logOutChosen, this, &MainPage::logOutChosen);
    connect(chatPage, &ChatPage::sendClicked, this, &MainPage::sendClicked);
    connect(emptyState, &EmptyState::startClicked, leftSidebar, &Sidebar::focusSearch);
    addSearchKey(this, [this] { leftSidebar->selectSearch(); });
}

void MainPage::retranslate(Language newLanguage)
{
    language = newLanguage;
    if (!centerStack)
        return;
    railColumn->retranslate(language);
    leftSidebar->retranslate(language);
    sideFooter->retranslate(language);
    emptyState->retranslate(language);
    chatPage->retranslate(language);
    if (settingsPage)
        settingsPage->retranslate(language);
}

void MainPage::showMessages()
{
    showEmptyState();
    emit backToChatChosen();
}

void MainPage::showEmptyState()
{
    center()->setCurrentWidget(emptyState);
}

void MainPage::showChat()
{
    center()->setCurrentWidget(chatPage);
    fadeIn(chatPage);
    chatPage->focusField();
    chatPage->settleField();
}

// Where the disabled field had the keyboard, what comes next on the Tab key's way gets it.
void MainPage::showServer(const QString &groupId)
{
    rail()->selectServer(groupId);
    const bool fieldHadFocus = chatPage->fieldHasFocus();
    const QString name = railColumn->serverName(groupId);
    centerStack->setCurrentWidget(chatPage);
    chatPage->showServer(name.isEmpty() ? groupId : name, initials(name, 1));
    if (fieldHadFocus && !railColumn->focusSelectedServer())
        chatPage->setFocus();
}

void MainPage::leaveSearch()
{
    if (chatPage->fieldIsReady())
        chatPage->focusField();
    else
        leftSidebar->focusConversations();
}

} // namespace tideloft::ui
