// Device lists of an outgoing message.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/messages/sealing_devices.h"

#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

QJsonArray recipientDevices(const QJsonArray &keys, const QString &legacyPublicKey)
{
    if (!keys.isEmpty() || legacyPublicKey.isEmpty())
        return keys;
    return {QJsonObject{{u"deviceId"_s, u"legacy"_s}, {u"publicKeyBase64"_s, legacyPublicKey}}};
}

QJsonArray senderDevices(const QJsonArray &myDeviceKeys, const QString &ownDeviceId)
{
    const auto own = std::ranges::find_if(myDeviceKeys, [&ownDeviceId](const QJsonValue &device) {
        return device[u"deviceId"].toString() == ownDeviceId;
    });
    return own == myDeviceKeys.end() ? QJsonArray{} : QJsonArray{*own};
}

} // namespace tideloft::ui
