// What tests of the settings view share: a signed-in window that shows it, and ways to find its parts.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/gui_probe.h"
#include "tests/support/settings_parts.h"
#include "ui/texts/text.h"

#include <functional>

class QMenu;

namespace tideloft::tests
{

/// The window after "alice" has signed in.
class SettingsProbe : public GuiProbe, public SettingsParts
{
public:
    explicit SettingsProbe(ui::Language language = ui::Language::English);

    void choose(ui::Language language) const; ///< on the sign-in page's selector
    QPushButton *messagesButton() const;      ///< of the rail
    QPushButton *settingsButton() const;      ///< of the rail
    void openSettings() const;                ///< a click on the rail
    bool fadedIn() const;                     ///< waits until the page has appeared

    QWidget *settingsPage() const override;
};

/// Opens the footer's menu by a press beside the avatar; see withMenu().
bool withUserMenu(const GuiProbe &probe, const std::function<void(QMenu *)> &use);
/// Takes its entry with that INDEX, separators counted. False: the menu did not come up.
bool takeFromUserMenu(const GuiProbe &probe, int index);
} // namespace tideloft::tests
