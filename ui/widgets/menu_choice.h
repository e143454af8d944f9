// Letting the user choose from a menu.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

class QAction;
class QMenu;
class QPoint;

namespace tideloft::ui
{

/// Shows MENU at PLACE of the screen until it closes, and returns the entry that was triggered, or null. A
/// click, a key and the press of an assistive program count alike, and each of them closes the menu.
const QAction *choiceFrom(QMenu &menu, QPoint place);

} // namespace tideloft::ui
