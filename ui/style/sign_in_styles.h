// Styles of the sign-in page. They are written in the dark palette on purpose and follow neither theme nor
// accent.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::ui::style
{

inline const QString rememberCheck = QStringLiteral("color: #7070a0; font-size: 11px;");

} // namespace tideloft::ui::style
