// The Appearance section: theme and accent.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/settings/settings_sections.h"

namespace tideloft::ui
{

/// Who hears of a choice. "System" means dark: the desktop is not asked.
struct LookChoices {
    std::function<void(bool dark)> theme;
    std::function<void(const QString &colour)> accent; ///< "#rrggbb"
};

QWidget *buildSettingsAppearance(const SectionContext &context, const LookChoices &choices);

} // namespace tideloft::ui
