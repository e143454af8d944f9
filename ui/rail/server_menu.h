// The menu of a server in the rail.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/text.h"

class QPoint;
class QWidget;

namespace tideloft::ui
{

enum class ServerMenuChoice { None, UploadIcon, Open };

/// Shows the menu at PLACE of the screen until it closes, and returns what was chosen. WINDOW is the menu's
/// parent.
ServerMenuChoice askServerMenu(QPoint place, Language language, QWidget *window);

} // namespace tideloft::ui
