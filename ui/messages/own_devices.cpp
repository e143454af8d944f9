// Deciding when the list of devices is out of date.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/own_devices.h"

#include "ui/messages/sealing_devices.h"

namespace tideloft::ui
{

void OwnDevices::beginSignIn()
{
    listed = registered = false;
    mayAsk = true;
}

void OwnDevices::endSignIn()
{
    mayAsk = false;
}

void OwnDevices::setKeys(const QJsonArray &keys)
{
    deviceKeys = keys;
    listed = true;
}

void OwnDevices::setRegistered()
{
    registered = true;
}

bool OwnDevices::takeReloadRequest(const QString &ownDeviceId)
{
    if (!mayAsk || !listed || !registered || !senderDevices(deviceKeys, ownDeviceId).isEmpty())
        return false;
    mayAsk = false;
    return true;
}

} // namespace tideloft::ui
