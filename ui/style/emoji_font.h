// The emoji font, for characters that are to be drawn as pictures.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

namespace tideloft::ui::style
{

/// A family of emoji alone. Only the app knows which font it stands for.
inline QString emojiFamily()
{
    return QStringLiteral("TideLoft Emoji");
}

/// Without such a font everything is drawn as letters.
inline bool hasEmojiFont()
{
    return !QFont::substitutes(emojiFamily()).isEmpty();
}

} // namespace tideloft::ui::style
