// Which letters, symbols and emoji a font can draw, and from which fonts they come.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QStringList>

namespace tideloft::tests
{

/// What of TEXT comes out wrong in FONT: a character as a box although a font could draw it, letters, digits
/// or blanks out of a font of emoji. A character that no font of this machine has is a fault as well, unless
/// TIDELOFT_SCREENS_OTHER_FONTS lists it; a listed character that is drawn is one too.
QStringList glyphFaults(const QString &text, const QFont &font);

/// The families that draw TEXT in FONT, in order, without repetitions, in lower case.
QStringList familiesOf(const QString &text, const QFont &font);
/// How many pictures TEXT becomes: a flag of two characters is one.
int glyphCount(const QString &text, const QFont &font);

} // namespace tideloft::tests
