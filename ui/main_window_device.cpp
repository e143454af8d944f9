// What follows the profile's arrival: this device's key pair, its registration, and the main page.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "crypto/keys/device_key_pair.h"
#include "crypto/keys/key_store.h"
#include "ui/settings/profile_card.h"
#include "ui/style/fade_in.h"
#include "ui/texts/initials.h"
#include "ui/texts/log_line.h"

#include <QCheckBox>
#include <QDebug>
#include <QLabel>
#include <QPlainTextEdit>
#include <QStackedWidget>

#include <utility>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

void MainWindow::onMeLoaded(const QJsonObject &me)
{
    setBusy(false);
    beginAs(me);
    myDevices.beginSignIn();
    pendingMessageText.clear(); // whoever wrote it may be somebody else
    registerThisDevice();
    api.fetchMyDeviceKeys();
    rootStack->setCurrentWidget(mainPage);
    fadeIn(mainPage);
    api.fetchConversations();
    api.fetchServers();
    if (!refreshTimer->isActive())
        refreshTimer->start();
    currentPeer.clear();
    centerStack->setCurrentWidget(emptyState);
}

void MainWindow::beginAs(const QJsonObject &me)
{
    myUsername = me.value(u"username"_s).toString().trimmed().toLower();
    if (std::exchange(lastUsername, myUsername) != myUsername)
        forgetOtherUser();
    rememberedUser = rememberCheck->isChecked() ? myUsername : QString();
    footerAvatar->setText(initials(myUsername));
    myName->setText(myUsername);
    myBio = me.value(u"bio"_s).toString();
    if (bioField)
        showSavedBio(bioField, myBio);
}

// Problems with the keys never keep anyone from signing in: sending and reading say later what is wrong.
void MainWindow::registerThisDevice()
{
    QString error;
    if (!crypto::ensureKeyPair(&error)) {
        qWarning().noquote() << "Key pair error:" << logLine(error);
        return;
    }
    const QString publicKey = crypto::readPublicKeyFile(&error);
    if (publicKey.isEmpty())
        qWarning().noquote() << "Public key error:" << logLine(error);
    else
        api.registerDeviceKey(publicKey);
}

void MainWindow::onDeviceKeyRegistered()
{
    myDevices.setRegistered();
    if (myDevices.takeAskAgain(api.deviceId()))
        api.fetchMyDeviceKeys();
}

void MainWindow::onDeviceKeyRegisterFailed(const QString &message)
{
    qWarning().noquote() << "Device key registration failed:" << logLine(message);
}

void MainWindow::onMyDeviceKeysLoaded(const QJsonArray &keys)
{
    myDevices.setKeys(keys);
    if (myDevices.takeAskAgain(api.deviceId()))
        api.fetchMyDeviceKeys();
}

} // namespace tideloft::ui
