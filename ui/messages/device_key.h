// The public key of this device.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::ui
{

/// The public key that the service is to know for this device, as Base64 text; makes the key pair first if
/// there is none. Empty if something is wrong with the keys, which the log tells: this never keeps anyone
/// from signing in, and sending and reading say later what is wrong.
QString publicKeyOfThisDevice();

} // namespace tideloft::ui
