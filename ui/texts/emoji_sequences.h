// Emoji sequences: characters that U+FE0F turns into pictures (emoji presentation).
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QStringView>

namespace tideloft::ui
{

struct EmojiSequence {
    qsizetype start; ///< UTF-16 units
    qsizetype length;

    friend bool operator==(const EmojiSequence &, const EmojiSequence &) = default;
};

/// Whether U+FE0F stands in TEXT at all. Nearly always it does not.
inline bool asksForEmoji(QStringView text)
{
    return text.contains(QChar(0xfe0f));
}

/// The sequences of TEXT that are one picture each because U+FE0F stands in them, in their order: ©️,
/// 1️⃣,
/// and what is joined to such signs by U+200D, as in ❤️‍🔥. Empty for a text without U+FE0F, and then
/// without an allocation.
QList<EmojiSequence> emojiSequences(QStringView text);

} // namespace tideloft::ui
