// The window's skeleton: construction, connections, page stacks and the periodic refresh.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "crypto/messages/open_message.h"
#include "ui/style/accent.h"
#include "ui/style/style_sheets.h"
#include "ui/widgets/accessible_role.h"
#include "ui/widgets/late_page.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

MainWindow::MainWindow(QWidget *parent) : QMainWindow(parent), currentAccent(defaultAccent.toString())
{
    installAccessibleInterfaces();
    QCoreApplication::installTranslator(&toolkitWords);
    buildShell();
    applyTheme();
    retranslate();
    connectClient();
    connectKeys();
    refreshTimer = new QTimer(this);
    refreshTimer->setInterval(3000);
    connect(refreshTimer, &QTimer::timeout, this, &MainWindow::refreshData);
    currentPeer.clear();
    centerStack->setCurrentWidget(emptyState);
    usernameField->setFocus();
}

void MainWindow::buildShell()
{
    setWindowTitle(u"TideLoft"_s);
    resize(1100, 720);
    setMinimumSize(800, 560);
    auto *central = new QWidget(this);
    setCentralWidget(central);
    auto *column = makeColumn(central);
    rootStack = new QStackedWidget(central);
    column->addWidget(rootStack);
    authPage = buildAuthPage(); // adds itself
    mainPage = buildMainPage();
    rootStack->addWidget(mainPage);
    rootStack->setCurrentWidget(authPage);
}

QWidget *MainWindow::buildMainPage()
{
    auto *page = new LatePage(rootStack);
    auto *line = makeLine(page);
    line->addWidget(buildRail(page));
    line->addWidget(buildSidebar(page));
    line->addWidget(buildCenterPanel(page), 1);
    connectSidebar();
    connectChat();
    return page;
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

Language MainWindow::language() const
{
    return languageFromIndex(langCombo ? langCombo->currentIndex() : 0);
}

QString MainWindow::text(const QString &swedish, const QString &english) const
{
    return chooseText(language(), swedish, english);
}

void MainWindow::setLanguageIndex(int index)
{
    if (langCombo)
        langCombo->setCurrentIndex(index);
}

// With nobody signed in, a late reply is still shown, but leaves no key behind.
OpenedText MainWindow::openedText(const QJsonObject &item)
{
    QString reason;
    const QString text =
        myUsername.isEmpty()
            ? crypto::decryptMessageText(item, myUsername, api.deviceId(), &reason)
            : crypto::decryptMessageText(item, myUsername, api.deviceId(), readingMemory, &reason);
    return {text, reason};
}

void MainWindow::refreshData()
{
    api.fetchConversations(net::Urgency::Refresh);
    if (!currentPeer.isEmpty())
        api.fetchHistory(currentPeer, net::Urgency::Refresh);
}

void MainWindow::applyTheme()
{
    setStyleSheet(darkTheme ? darkStyleSheet() : lightStyleSheet());
    if (footerAvatar && !footerAvatarPixmap.isNull())
        showFooterPicture();
    if (currentAccent != defaultAccent)
        setStyleSheet(withAccent(styleSheet(), currentAccent));
}

} // namespace tideloft::ui
