// The style sheet of a theme.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/style/theme.h"

#include "ui/style/style_sheets.h"

namespace tideloft::ui
{

QString Theme::styleSheet() const
{
    return withAccent(isDark ? darkStyleSheet() : lightStyleSheet(), accent);
}

} // namespace tideloft::ui
