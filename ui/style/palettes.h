// The dark and the light palette: what stands in the style sheet for each role of its template.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

#include <span>

namespace tideloft::ui
{

/// What a widget, or a part of one, is coloured with in each of the two palettes.
struct PaletteRole {
    QStringView name; ///< the template of the style sheet says "$name"
    QStringView dark;
    QStringView light;
};

/// Every role. A colour that both palettes share is no role: the template contains it.
std::span<const PaletteRole> paletteRoles();

} // namespace tideloft::ui
