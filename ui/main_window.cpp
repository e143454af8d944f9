// The window: its two pages, who hears of what, signing in and out.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "ui/chat/chat_page.h"
#include "ui/keyboard/program_keys.h"
#include "ui/main_page.h"
#include "ui/sidebar/sidebar.h"
#include "ui/sign_in/sign_in_page.h"
#include "ui/style/fade_in.h"
#include "ui/widgets/accessible_role.h"
#include "ui/widgets/message_box.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

MainWindow::MainWindow(QWidget *parent) : QMainWindow(parent)
{
    installAccessibleInterfaces();
    QCoreApplication::installTranslator(&toolkitTranslator);
    buildShell();
    setStyleSheet(Theme().styleSheet());
    retranslate();
    connectClient();
    connectPages();
    connectOutbox();
    addProgramKeys(this);
    connect(refreshTimer, &QTimer::timeout, this, &MainWindow::refreshData);
    authPage->focusFirst();
}

// The first page of a stack is measured as it is added, so it is filled afterwards.
void MainWindow::buildShell()
{
    setWindowTitle(u"TideLoft"_s);
    resize(1100, 720);
    setMinimumSize(800, 560);
    auto *central = new QWidget(this);
    setCentralWidget(central);
    rootStack = new QStackedWidget(central);
    makeColumnLayout(central)->addWidget(rootStack);
    authPage = new SignInPage(rootStack);
    rootStack->addWidget(authPage);
    authPage->build();
    mainPage = new MainPage(language(), rootStack);
    rootStack->addWidget(mainPage);
    rootStack->setCurrentWidget(authPage);
}

void MainWindow::connectClient()
{
    using net::ApiClient;
    connect(&api, &ApiClient::loginSucceeded, this, &MainWindow::onLoginSucceeded);
    connect(&api, &ApiClient::loginFailed, this, &MainWindow::onLoginFailed);
    connect(&api, &ApiClient::registerSucceeded, this, &MainWindow::onRegisterSucceeded);
    connect(&api, &ApiClient::registerFailed, this, &MainWindow::onRegisterFailed);
    connect(&api, &ApiClient::meLoaded, this, &MainWindow::onMeLoaded);
    connect(&api, &ApiClient::meFailed, this, &MainWindow::onMeFailed);
    connect(&api, &ApiClient::searchLoaded, this, &MainWindow::onSearchLoaded);
    connect(&api, &ApiClient::searchFailed, this, &MainWindow::onSearchFailed);
    connect(&api, &ApiClient::conversationsLoaded, this, &MainWindow::onConversationsLoaded);
    connect(&api, &ApiClient::conversationsFailed, this, &MainWindow::onConversationsFailed);
    connect(&api, &ApiClient::historyLoaded, this, &MainWindow::onHistoryLoaded);
    connect(&api, &ApiClient::historyFailed, this, &MainWindow::onHistoryFailed);
    connect(&api, &ApiClient::deviceKeyRegistered, this, &MainWindow::onDeviceKeyRegistered);
    connect(&api, &ApiClient::deviceKeyRegisterFailed, this, &MainWindow::onDeviceKeyRegisterFailed);
    connect(&api, &ApiClient::myDeviceKeysLoaded, this, &MainWindow::onMyDeviceKeysLoaded);
    connect(&api, &ApiClient::userPublicKeysLoaded, this, &MainWindow::onUserPublicKeysLoaded);
    connect(&api, &ApiClient::userPublicKeysFailed, this, &MainWindow::onUserPublicKeysFailed);
    connect(&api, &ApiClient::messageSent, this, &MainWindow::onMessageSent);
    connect(&api, &ApiClient::messageSendFailed, this, &MainWindow::onMessageSendFailed);
    connect(&api, &ApiClient::avatarUploaded, this, &MainWindow::onAvatarUploaded);
    connect(&api, &ApiClient::serversLoaded, this, &MainWindow::onServersLoaded);
    connect(&api, &ApiClient::serverLoaded, this, &MainWindow::onServerLoaded);
    connect(&api, &ApiClient::serverCreated, this, &MainWindow::onServerCreated);
    connect(&api, &ApiClient::serverIconUploaded, this, &MainWindow::onServerIconUploaded);
}

void MainWindow::connectPages()
{
    connect(authPage, &SignInPage::signInClicked, this, &MainWindow::onLoginClicked);
    connect(authPage, &SignInPage::registerClicked, this, &MainWindow::onRegisterClicked);
    connect(authPage, &SignInPage::languageChanged, this, &MainWindow::retranslate);
    connect(mainPage, &MainPage::backToChatChosen, this, &MainWindow::backToChat);
    connect(mainPage, &MainPage::pictureClicked, this, &MainWindow::chooseAvatar);
    connect(mainPage, &MainPage::saveClicked, this, &MainWindow::saveProfile);
    connect(mainPage, &MainPage::themeChanged, this,
            [this](const Theme &theme) { setStyleSheet(theme.styleSheet()); });
    connect(this, &MainWindow::avatarPixmapReady, mainPage, &MainPage::showPicture);
    connect(mainPage, &MainPage::serverNamed, &api, &net::ApiClient::createServer);
    connect(mainPage, &MainPage::serverIconChosen, &api, &net::ApiClient::uploadServerIcon);
    connect(mainPage, &MainPage::searchTyped, &api, &net::ApiClient::searchUsers);
    connect(mainPage, &MainPage::searchEntered, this, &MainWindow::onSearchClicked);
    connect(mainPage, &MainPage::conversationChosen, this, &MainWindow::openConversation);
    connect(mainPage, &MainPage::logOutChosen, this, &MainWindow::logOut);
    connect(mainPage, &MainPage::sendClicked, this, &MainWindow::onSendClicked);
}

void MainWindow::connectOutbox()
{
    connect(&outbox, &Outbox::sealingChanged, mainPage,
            [this](bool sealing) { mainPage->chat()->setSealing(sealing); });
    connect(&outbox, &Outbox::ownKeysOutdated, &api, &net::ApiClient::fetchMyDeviceKeys);
    connect(&outbox, &Outbox::failed, this,
            [this](const LocalizedText &problem) { showWarning(this, problem.in(language())); });
    connect(&outbox, &Outbox::sealed, this, [this](const QString &peer, const auto &sealed) {
        api.sendMessage(
            peer,
            {sealed.ciphertextBase64, sealed.ivBase64, {}, {}, sealed.recipientKeys, sealed.senderKeys});
    });
}

Language MainWindow::language() const
{
    return authPage->language();
}

void MainWindow::setLanguageIndex(int index)
{
    authPage->setLanguageIndex(index);
}

void MainWindow::retranslate()
{
    toolkitTranslator.speak(language());
    authPage->retranslate();
    mainPage->retranslate(language());
}

// The new user must not see what another user left in the window.
void MainWindow::signInAs(const QJsonObject &me)
{
    if (!user.signIn(me)) {
        reader.forgetHistory();
        outbox.forgetSent();
        mainPage->clear();
    }
    authPage->admit(user.username());
    reader.signIn(user.username());
    outbox.beginSignIn();
    mainPage->showUser(user.username(), me.value(u"bio"_s).toString());
}

void MainWindow::openMainPage()
{
    rootStack->setCurrentWidget(mainPage);
    fadeIn(mainPage);
    api.fetchConversations();
    api.fetchServers();
    refreshTimer->startUnlessActive();
    currentPeer.clear();
    mainPage->showEmptyState();
}

void MainWindow::logOut()
{
    refreshTimer->stop();
    outbox.endSignIn();
    reader.signOut();
    user.signOut();
    api.clearReplyCaches();
    mainPage->chat()->endHistory();
    mainPage->sidebar()->endConversations();
    authPage->clear();
    rootStack->setCurrentWidget(authPage);
    authPage->focusFirst();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    outbox.cancelSealing();
    QMainWindow::closeEvent(event);
}

void MainWindow::keyPressEvent(QKeyEvent *event)
{
    if (isRestartKey(*event))
        restartProgram();
    else
        QMainWindow::keyPressEvent(event);
}

} // namespace tideloft::ui
