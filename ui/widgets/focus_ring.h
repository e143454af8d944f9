// A mark on what has the keyboard.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

namespace tideloft::ui
{

/// Draws a ring in WIDGET, or in a list around its current entry, while the keyboard stands there and keys
/// brought it there. The ring is a white line around a black one: one of the two can be seen beside every
/// colour.
void ringFocus(QWidget *widget);

/// Lets WIDGET's ring follow corners of that RADIUS.
void roundFocusRing(QWidget *widget, int radius);

} // namespace tideloft::ui
