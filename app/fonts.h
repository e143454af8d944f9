// Fonts that stand in for those that the style sheets name.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

namespace tideloft::app
{

/// Substitutes "Segoe UI", which the style sheets name, so that letters and colour emoji come out as meant
/// also where other symbol fonts are installed. Needs the application object.
void substituteFonts();

} // namespace tideloft::app
