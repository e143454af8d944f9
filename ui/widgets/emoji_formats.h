// Text formats that draw emoji as pictures where U+FE0F asks for it (emoji presentation).
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QTextLayout>

class QTextDocument;

namespace tideloft::ui
{

/// The formats with which a layout of TEXT draws each such sequence as one picture. Without them the toolkit
/// chooses a font for each character: it draws the base of ©️ and of 1️⃣ in the font of the letters,
/// and it
/// cuts ❤️‍🔥 in two, because no font of emoji has U+FE0F. Empty for nearly every text, and where no
/// font of emoji is installed. A sequence that the font does not have stays as it is.
QList<QTextLayout::FormatRange> emojiFormats(const QString &text);

/// Whether TEXT has any.
bool hasEmojiFormats(const QString &text);

/// Gives the emoji of DOCUMENT, a plain one, these formats. Neither the text nor what is copied changes, and
/// no line is lower than a line of letters.
void formatEmoji(QTextDocument *document);

/// HTML, in which all text is escaped already, with a span in the font of emoji around each such sequence.
/// U+FE0F is left out there: HTML cannot keep other fonts away from it. For what is shown and never copied.
QString withEmojiSpans(const QString &html);

} // namespace tideloft::ui
