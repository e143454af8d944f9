// The settings page alone, in a window that is dressed as the program's is.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/page_window.h"
#include "tests/support/settings_parts.h"
#include "ui/settings/settings_page.h"

namespace tideloft::tests
{

class SettingsPageProbe : public SettingsParts
{
public:
    explicit SettingsPageProbe(ui::Language language = ui::Language::English,
                               const ui::SettingsFacts &facts = {QStringLiteral("alice"),
                                                                 {},
                                                                 QStringLiteral("localhost:1")})
        : window(QSize(1100 - 56 - 260, 720)), // beside rail and sidebar
          page(new ui::SettingsPage(facts, language, &window))
    {
        window.showPage(page);
        QObject::connect(page, &ui::SettingsPage::themeChosen, &window, &PageWindow::wearTheme);
    }

    QWidget *settingsPage() const override { return page; }
    template <typename Widget> Widget *the(const QString &name) const { return only<Widget>(*page, name); }

    PageWindow window;
    ui::SettingsPage *page;
};

} // namespace tideloft::tests
