// What is wrong with how a window's parts stand on the screen: cut, overlapping, or out of their places.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class QWidget;

namespace tideloft::tests
{

/// Texts from here on may be cut at the end, with "…": nobody's name of this length has to fit.
inline constexpr int lengthThatMayBeCut = 60;

/// One line for each fault of what ROOT shows, empty when there is none: a widget that reaches out of the one
/// around it, two that overlap, a text for which its label, button or field is too small, a glyph that is
/// missing (see missingGlyphs()).
QStringList screenFaults(const QWidget &root);

} // namespace tideloft::tests
