// Texts from outside, in the log.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/bounded_text.h"

namespace tideloft::ui
{

/// TEXT as it may stand in a line of the debug log. The log may be shown in a terminal: characters that would
/// begin another line or control the terminal become blanks, and a long text is cut to its first part.
inline QString logLine(const QString &text)
{
    QString line = firstPart(text, errorLimits);
    for (QChar &character : line) {
        const auto category = character.category();
        if (category == QChar::Other_Control || category == QChar::Other_Format
            || category == QChar::Separator_Line || category == QChar::Separator_Paragraph)
            character = u' ';
    }
    return line;
}

} // namespace tideloft::ui
