// Looking at the settings' files before the toolkit opens them.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "app/settings_store.h"

#include "app/this_system.h"

#include <algorithm>

namespace tideloft::app
{

std::unique_ptr<QSettings> openSettings()
{
    constexpr qint64 largestFile = qint64{1} * 1024 * 1024;
    const QStringList files = settingsFiles();
    const bool areSafe = std::all_of(files.begin(), files.end(),
                                     [](const QString &path) { return endsSoon(path, largestFile); });
    return areSafe ? std::make_unique<QSettings>() : nullptr;
}

} // namespace tideloft::app
