// Substitution of the accent colour.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/style/accent.h"

namespace tideloft::ui
{

QString withAccent(QString sheet, const QString &accent)
{
    if (accent == defaultAccent)
        return sheet;
    return sheet.replace(defaultAccent.toString(), accent).replace(QStringLiteral("#2563eb"), accent);
}

} // namespace tideloft::ui
