// What follows the profile's arrival: this device's key pair, its registration, and the main page.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "crypto/key_store.h"
#include "ui/device_lists.h"
#include "ui/log_line.h"
#include "ui/style/fade_in.h"

#include <QDebug>
#include <QLabel>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

void MainWindow::onMeLoaded(const QJsonObject &me)
{
    setBusy(false);
    myUsername = me.value(u"username"_s).toString().trimmed().toLower();
    if (footerAvatar)
        showFooterInitials();
    if (myName)
        myName->setText(myUsername);
    ownDevicesLoaded = false;
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

// The device list and the registration are asked for at once, so on a device's first start the list can come
// without it; what is written then could not be read here. Only in that case the list is asked for again.
void MainWindow::onDeviceKeyRegistered()
{
    if (!ownDevicesLoaded || senderDevices(myDeviceKeys, api.deviceId()).isEmpty())
        api.fetchMyDeviceKeys();
}

void MainWindow::onDeviceKeyRegisterFailed(const QString &message)
{
    qWarning().noquote() << "Device key registration failed:" << logLine(message);
}

void MainWindow::onMyDeviceKeysLoaded(const QJsonArray &keys)
{
    myDeviceKeys = keys;
    ownDevicesLoaded = true;
}

} // namespace tideloft::ui
