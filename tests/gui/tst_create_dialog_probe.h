// What tests of the create-server dialog share.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/gui/tst_settings_probe.h"
#include "tests/support/create_dialog.h"
#include "tests/support/popups.h"

#include <QPushButton>

namespace tideloft::tests
{

/// Opens the dialog by a click on the rail's "+"; see withDialog().
inline bool withCreateDialog(const SettingsProbe &probe, const std::function<void(QDialog &)> &use)
{
    return withCreateDialog(*probe.window, use);
}

/// Lets the dialog make a server called NAME.
inline bool createServer(const SettingsProbe &probe, const QString &name)
{
    return withCreateDialog(probe, [&name](QDialog &dialog) {
        fillIn(dialog, name, {});
        clickOnScreen(*createOf(dialog));
    });
}

} // namespace tideloft::tests
