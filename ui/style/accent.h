// The accent colour and its substitution in a style sheet.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <array>

namespace tideloft::ui
{

/// The accent that both style sheets are written with.
inline constexpr QStringView defaultAccent = u"#3b8beb";

/// The accents a user can choose from, in the order of their swatches.
inline constexpr std::array<QStringView, 6> swatchColours = {defaultAccent, u"#5b5bd6", u"#25a868",
                                                             u"#e05454",    u"#f59e0b", u"#ec4899"};

/// The sheet with both accent literals, the accent and the dark end of its gradient, replaced by ACCENT.
/// With the default accent the sheet comes back unchanged, gradients included.
QString withAccent(QString sheet, const QString &accent);

} // namespace tideloft::ui
