// Room for the sections of the settings in a narrow window.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

class QStackedWidget;
class QWidget;

namespace tideloft::ui
{

/// Where PAGE is narrow, takes what the SECTIONS need from the navigation NAV and from the margins around
/// them: they scroll up and down alone, so what is too wide for them would be out of reach.
void fitSectionsToWidth(QWidget *page, QWidget *nav, QStackedWidget *sections);

} // namespace tideloft::ui
