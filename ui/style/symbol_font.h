// The font of symbols that are letters for this design and emoji for a font of emoji, such as "⚙".
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>

class QPushButton;

namespace tideloft::ui::style
{

/// A family without emoji. Only the app knows which fonts it stands for; without the app it stands for none.
QString symbolFamily();

/// For a list's entry with such a symbol in its text.
QFont symbolFont();

/// Draws the text of BUTTON, which is such a symbol, in that font, and in the size and colours of the sheets,
/// which know one font for every widget.
void drawAsSymbol(QPushButton *button);

} // namespace tideloft::ui::style
