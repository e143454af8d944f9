// The devices of the signed-in user, as the service lists them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>
#include <QString>

namespace tideloft::ui
{

/// Keeps the last list, and knows when the list has to be requested once more. The list and the registration
/// of this device are requested at the same time, so at a device's first start the list can arrive without
/// this device. This device could not read a message that is sealed for such a list.
class OwnDevices
{
public:
    /// A new sign-in begins: its list and its registration are still to come. The list of the sign-in before
    /// is kept until then.
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
