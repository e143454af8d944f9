// How much of a text from outside is drawn.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tideloft::ui
{

/// The most that is drawn of one text. Nobody writes texts of that size. Without these limits a single
/// message could keep the window busy for minutes.
struct TextLimits {
    qsizetype characters; ///< UTF-16 units
    qsizetype lines;
    qsizetype emoji; ///< Their pictures are decoded anew for every measurement: 0.1 ms each.
    qint64 effort;   ///< See drawingEffort().
};

constexpr TextLimits messageLimits{100'000, 2'000, 1'000, 6'000'000};
/// The limits of an error. Boxes show the whole error and scroll where the screen ends. On the sign-in page
/// the label takes no more height than the page leaves, because the fields and buttons below must stay in
/// reach: of a long text the first lines are drawn, and the label keeps the other lines for a screen reader.
constexpr TextLimits errorLimits{4'000, 4'000, 1'000, 6'000'000};
/// Of what stands in one line: more than any window has room for.
constexpr TextLimits nameLimits{1'000, 1'000, 100, 120'000};
constexpr TextLimits previewLimits{1'000, 1'000, 100, 20'000};

/// The toolkit takes a text with this control character for several texts, and draws one of them.
constexpr QChar variantSeparator(0x9c);

/// TEXT itself if it keeps within LIMITS, or else its first part and "…". No surrogate pair is cut in half.
QString firstPart(const QString &text, const TextLimits &limits);

/// The first part of TEXT in one line: line breaks, and a control character at which the toolkit would end
/// the text, are blanks.
QString inOneLine(const QString &text);

/// How hard TEXT is to lay out, in plain letters (about 0.25 µs each). Much more costly are lines, combining
/// marks on marks, scripts that change inside a word, very long words, and emoji.
qint64 drawingEffort(const QString &text);

} // namespace tideloft::ui
