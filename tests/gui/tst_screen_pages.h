// Every page, dialog and menu of the client, and the way to each.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/gui/tst_settings_probe.h"

namespace tideloft::tests
{

/// Looks at the window, or at the dialog or menu before it, while that is on the screen.
using Look = std::function<void(QWidget &)>;

/// Names and texts as people choose them, or as long as the service lets them be.
enum class Names { Usual, Long };

struct ScreenPage {
    const char *name;
    /// Goes there in the window of a signed-in person and has a LOOK. False: the page did not come.
    std::function<bool(SettingsProbe &probe, Names names, const Look &look)> show;
};

/// All of them, in the order in which a person meets them.
const QList<ScreenPage> &screenPages();

} // namespace tideloft::tests
