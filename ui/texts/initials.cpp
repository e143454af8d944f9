// Initials of a name.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/texts/initials.h"

namespace tideloft::ui
{

QString initials(const QString &name, int count)
{
    qsizetype end = 0;
    for (int taken = 0; taken < count && end < name.size(); ++taken) {
        const bool pair =
            name.at(end).isHighSurrogate() && end + 1 < name.size() && name.at(end + 1).isLowSurrogate();
        end += pair ? 2 : 1;
    }
    return name.left(end).toUpper();
}

} // namespace tideloft::ui
