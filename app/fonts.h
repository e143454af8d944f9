// Fonts that stand in for those that the style sheets name.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

namespace tideloft::app
{

/// Whether any font is installed. Without one the toolkit crashes when it draws the first letter.
bool hasFonts();

/// Substitutes "Segoe UI", which the style sheets name, so that letters come out as letters and emoji in
/// colour, also where fonts that draw emoji as outlines are installed. Needs the application object.
void substituteFonts();

/// Makes the font of the window's style sheet that of the application. A line edit lays out its line as soon
/// as it is made, when no sheet has reached it yet: for that the toolkit would look for the desktop's own
/// font.
void useSheetFont();

} // namespace tideloft::app
