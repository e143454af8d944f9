// The store of the one setting, opened only where that cannot hang.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>

#include <memory>

namespace tideloft::app
{

/// The settings under the application's identity. None where the toolkit would read a pipe, a device, or a
/// file of more than 1 MiB: such a store counts as absent, and nothing is written to it.
std::unique_ptr<QSettings> openSettings();

} // namespace tideloft::app
