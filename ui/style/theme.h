// How the window looks: dark or light, and with which accent.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/style/accent.h"

namespace tideloft::ui
{

struct Theme {
    bool isDark = true;
    QString accent = defaultAccent.toString(); ///< "#rrggbb"

    /// The sheet from which every widget takes its look.
    [[nodiscard]] QString styleSheet() const;
};

} // namespace tideloft::ui
