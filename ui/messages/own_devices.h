// The devices of the signed-in user, as the service lists them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>
#include <QString>

namespace tideloft::ui
{

/// Keeps the last list, and knows when it has to be asked for once more. The list and the registration of
/// this device are asked for at once, so on a device's first start the list can come without it. What is
/// written then could not be read here.
class OwnDevices
{
public:
    /// Nothing of the new sign-in has come yet. The list of the one before stays.
    void beginSignIn();
    void endSignIn();                     ///< what comes late asks for nothing
    void setKeys(const QJsonArray &keys); ///< the list as it came
    void setRegistered();                 ///< the service has this device's key
    const QJsonArray &keys() const { return deviceKeys; }

    /// True, once in a sign-in, when both the list and the registration have succeeded in it and the list
    /// lacks OWNDEVICEID.
    bool takeReloadRequest(const QString &ownDeviceId);

private:
    QJsonArray deviceKeys;
    bool listed = false;
    bool registered = false;
    bool mayAsk = true; ///< once in a sign-in
};

} // namespace tideloft::ui
