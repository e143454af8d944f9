// Initials of a name.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/texts/initials.h"

#include "ui/texts/code_point.h"

namespace tideloft::ui
{

QString initials(const QString &name, int count)
{
    qsizetype end = 0;
    for (int taken = 0; taken < count && end < name.size(); ++taken)
        end += unitsOf(codePointAt(name, end));
    return name.left(end).toUpper();
}

} // namespace tideloft::ui
