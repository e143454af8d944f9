// Formatting emoji as a text changes.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/emoji_highlighter.h"

#include "ui/widgets/emoji_formats.h"

namespace tideloft::ui
{

void EmojiHighlighter::highlightBlock(const QString &text)
{
    for (const QTextLayout::FormatRange &range : emojiFormats(text))
        setFormat(range.start, range.length, range.format);
}

} // namespace tideloft::ui
