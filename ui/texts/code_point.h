// Reading of one character of a text, which may be two UTF-16 units.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

namespace tideloft::ui
{

/// The code point at INDEX; 0 behind the end. Half a surrogate pair without the other half counts as one.
inline char32_t codePointAt(QStringView text, qsizetype index)
{
    if (index >= text.size())
        return 0;
    const QChar first = text.at(index);
    const bool isPair =
        first.isHighSurrogate() && index + 1 < text.size() && text.at(index + 1).isLowSurrogate();
    return isPair ? QChar::surrogateToUcs4(first, text.at(index + 1)) : first.unicode();
}

/// How many UTF-16 units CHARACTER takes.
inline qsizetype unitsOf(char32_t character)
{
    return QChar::requiresSurrogates(character) ? 2 : 1;
}

} // namespace tideloft::ui
