// How large the text of a bubble is, found out without a widget.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>

class QFont;
class QString;

namespace tideloft::ui
{

/// A bubble is at most so wide in px, and keeps so much on either side of its text.
constexpr int widestBubble = 520;
constexpr int bubblePadding = 12;
constexpr int widestBubbleText = widestBubble - 2 * bubblePadding;

/// Whether TEXT has a word that may need more than a line, and so is broken where a line ends.
bool hasLongWord(const QString &text);

/// The size in px that TEXT in FONT has of its own: as wide as its longest line, up to widestBubbleText.
QSize bubbleTextSize(const QString &text, const QFont &font);

/// The height in px of TEXT in FONT, wrapped to WIDTH px.
int bubbleTextHeight(const QString &text, const QFont &font, int width);

} // namespace tideloft::ui
