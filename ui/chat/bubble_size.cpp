// Measuring a bubble's text.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/bubble_size.h"

#include "ui/widgets/emoji_formats.h"
#include "ui/widgets/text_height.h"

#include <QFontMetrics>
#include <QTextOption>
#include <QWidget>

namespace tideloft::ui
{

namespace
{

// Below this length a word fits into a bubble in the narrowest window, whatever its letters.
constexpr int longWord = 24;

// Lines break at blanks, except at those made to hold words together.
bool endsWord(QChar character)
{
    return character.isSpace() && character != QChar::Nbsp && character != u'\u2007'
           && character != u'\u202f';
}

int wrappedWidth(const QString &text, const QFont &font)
{
    if (hasEmojiFormats(text))
        return textSize(text, font, widestBubbleText).width();
    const QRect room(0, 0, widestBubbleText, QWIDGETSIZE_MAX);
    return QFontMetrics(font).boundingRect(room, Qt::TextWordWrap, text).width();
}

} // namespace

bool hasLongWord(const QString &text)
{
    int length = 0;
    for (const QChar character : text) {
        length = endsWord(character) ? 0 : length + 1;
        if (length > longWord)
            return true;
    }
    return false;
}

// The layout measures in fractions of a pixel: one pixel more keeps the last word on its line.
QSize bubbleTextSize(const QString &text, const QFont &font)
{
    const int width = qMin(wrappedWidth(text, font) + 1, widestBubbleText);
    return {width, bubbleTextHeight(text, font, width)};
}

int bubbleTextHeight(const QString &text, const QFont &font, int width)
{
    return textHeight(text, font, width,
                      hasLongWord(text) ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::WordWrap);
}

} // namespace tideloft::ui
