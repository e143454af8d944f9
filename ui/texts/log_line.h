// Texts from outside, in the log.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/texts/bounded_text.h"

namespace tideloft::ui
{

/// TEXT as it may stand in a line of the debug log, which may be somebody's terminal: what would begin
/// another line or command the terminal is a blank, and of an endless text there is the first part.
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
