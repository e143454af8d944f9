// A mark on what has the keyboard.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

namespace tideloft::ui
{

/// Draws a ring in WIDGET, or in a list around its current entry, while the keyboard stands there and keys
/// brought it there. For what looks the same with the keyboard and without it.
void ringFocus(QWidget *widget);

} // namespace tideloft::ui
