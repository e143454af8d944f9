// The window: what it does when the service has answered, and when the user has clicked.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "ui/chat/chat_page.h"
#include "ui/main_page.h"
#include "ui/messages/device_key.h"
#include "ui/messages/found_user_names.h"
#include "ui/rail/rail.h"
#include "ui/sidebar/side_footer.h"
#include "ui/sidebar/sidebar.h"
#include "ui/sign_in/sign_in_page.h"
#include "ui/texts/log_line.h"
#include "ui/widgets/message_box.h"
#include "ui/widgets/picture_dialog.h"
#include "ui/widgets/round_picture.h"

#include <QDebug>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

void MainWindow::onLoginClicked()
{
    if (const auto typed = authPage->beginSignIn())
        api.login(typed->username, typed->password, typed->remember);
}

void MainWindow::onLoginSucceeded(const QString &)
{
    api.fetchMe();
}

void MainWindow::onLoginFailed(const QString &message)
{
    authPage->refuseSignIn(message);
}

void MainWindow::onRegisterClicked()
{
    if (const auto typed = authPage->beginRegistration())
        api.registerAccount(typed->username, typed->password);
}

void MainWindow::onRegisterSucceeded(const QString &)
{
    const Credentials typed = authPage->endRegistration();
    api.login(typed.username, typed.password, false);
}

void MainWindow::onRegisterFailed(const QString &message)
{
    authPage->refuseRegistration(message);
}

void MainWindow::onMeLoaded(const QJsonObject &me)
{
    signInAs(me);
    if (const QString publicKey = publicKeyOfThisDevice(); !publicKey.isEmpty())
        api.registerDeviceKey(publicKey);
    api.fetchMyDeviceKeys();
    openMainPage();
}

void MainWindow::onMeFailed(const QString &message)
{
    onLoginFailed(message);
}

void MainWindow::onSearchClicked()
{
    if (const QString query = mainPage->sidebar()->takeQuery(); !query.isEmpty())
        api.searchUsers(query);
}

void MainWindow::onSearchLoaded(const QJsonArray &users)
{
    mainPage->sidebar()->showFoundUsers(foundUserNames(users));
}

void MainWindow::onConversationsLoaded(const QJsonArray &items)
{
    mainPage->sidebar()->showConversations(reader.conversationRows(items, language()));
    if (user.username().isEmpty())
        reader.forgetConversations();
}

void MainWindow::onHistoryLoaded(const QString &peer, const QJsonArray &items)
{
    if (peer != currentPeer)
        return;
    reader.keepHistory(peer, items);
    if (!mainPage->chat()->showsServer())
        mainPage->chat()->showHistory(peer, reader.historyRows(language()));
    if (user.username().isEmpty())
        reader.forgetHistory();
}

void MainWindow::onSendClicked()
{
    const QString written = mainPage->chat()->writtenText();
    if (currentPeer.isEmpty() || written.isEmpty())
        return;
    outbox.write(written);
    api.fetchUserPublicKeys(currentPeer);
}

void MainWindow::onMessageSent()
{
    mainPage->chat()->takeSent(outbox.takeArrived());
    if (!currentPeer.isEmpty())
        api.fetchHistory(currentPeer);
}

void MainWindow::onMessageSendFailed(const QString &message)
{
    outbox.dropFailed();
    showWarning(this, message);
}

void MainWindow::onDeviceKeyRegistered()
{
    outbox.setDeviceRegistered();
}

void MainWindow::onDeviceKeyRegisterFailed(const QString &message)
{
    qWarning().noquote() << "Device key registration failed:" << logLine(message);
}

void MainWindow::onUserPublicKeysLoaded(const QString &username, const QJsonArray &keys,
                                        const QString &legacy)
{
    if (username == currentPeer)
        outbox.seal(username, keys, legacy);
}

void MainWindow::onUserPublicKeysFailed(const QString &, const QString &message)
{
    outbox.dropWaiting();
    showWarning(this, message);
}

void MainWindow::onMyDeviceKeysLoaded(const QJsonArray &keys)
{
    outbox.setOwnKeys(keys);
}

void MainWindow::onAvatarUploaded(bool ok, const QString &localPath)
{
    const QPixmap picture = ok && user.ownsPicture() ? QPixmap(localPath) : QPixmap();
    if (picture.isNull())
        return;
    mainPage->footer()->showNewPicture(roundPicture(picture, 34));
    emit avatarPixmapReady(roundPicture(picture, 64));
}

void MainWindow::onServersLoaded(const QJsonArray &servers)
{
    mainPage->rail()->showServers(servers);
}

// The new server opens once the list has had time to arrive. Without the list its identifier is its name.
void MainWindow::onServerCreated(const QJsonObject &server)
{
    const QString groupId = server.value(u"groupId"_s).toString();
    api.fetchServers();
    if (!groupId.isEmpty())
        QTimer::singleShot(500, this, [this, groupId, asked = user.lastUsername()] {
            if (asked == user.lastUsername()) // another user may have signed in since
                mainPage->showServer(groupId);
        });
}

void MainWindow::onServerIconUploaded(const QString &, const QString &)
{
    api.fetchServers();
}

void MainWindow::refreshData()
{
    api.fetchConversations(net::RequestPriority::Refresh);
    if (!currentPeer.isEmpty())
        api.fetchHistory(currentPeer, net::RequestPriority::Refresh);
}

void MainWindow::showSettingsView()
{
    mainPage->showSettingsView();
}

// The settings view always shows the section that it stands at.
void MainWindow::showSettingsSection(const QString &)
{
    showSettingsView();
}

// What was shown before stays as it is.
void MainWindow::onSearchFailed(const QString &) {}
void MainWindow::onConversationsFailed(const QString &) {}
void MainWindow::onHistoryFailed(const QString &) {}
void MainWindow::onConversationSelected() {}
void MainWindow::onSearchUserDoubleClicked() {}
void MainWindow::onServerLoaded(const QJsonObject &) {}

void MainWindow::backToChat()
{
    mainPage->rail()->markPlace(Rail::Place::Messages);
    if (currentPeer.isEmpty())
        mainPage->showEmptyState();
    else
        showConversation(currentPeer);
}

void MainWindow::openConversation(const QString &peer)
{
    showConversation(peer);
    api.fetchHistory(peer);
}

// Behind a server's notice the conversation stayed open: its history is there already.
void MainWindow::showConversation(const QString &peer)
{
    if (peer != currentPeer)
        outbox.cancelSealing();
    currentPeer = peer;
    const bool leavesServer = mainPage->chat()->showsServer();
    mainPage->chat()->showPeer(peer);
    if (leavesServer && reader.historyPeer() == peer)
        mainPage->chat()->showHistory(peer, reader.historyRows(language()));
    mainPage->showChat();
}

void MainWindow::saveProfile(const QString &displayName, const QString &bio)
{
    api.updateProfile(displayName, bio, [this, bio, asked = user.username()](bool ok, const QString &) {
        mainPage->endSaving(bio, ok && asked == user.username()); // who saved it may have logged out since
    });
}

void MainWindow::chooseAvatar()
{
    const QString path = chooseProfilePicture(this, language());
    if (path.isEmpty())
        return;
    user.beginPicture();
    api.uploadAvatar(path);
}

} // namespace tideloft::ui
