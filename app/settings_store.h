// The store of the one setting, opened only where that cannot hang.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>

#include <memory>

namespace tideloft::app
{

/// The settings under the application's identity. Null if the settings file is a pipe, a device, or larger
/// than 1 MiB. The program then starts as if there were no settings, and leaves the file as it is.
std::unique_ptr<QSettings> openSettings();

} // namespace tideloft::app
