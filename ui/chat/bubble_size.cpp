// Measuring a bubble's text.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/bubble_size.h"

#include "ui/widgets/emoji_formats.h"
#include "ui/widgets/text_height.h"

#include <QFontMetrics>
#include <QTextLayout>
#include <QTextOption>
#include <QWidget>
#include <QtMath>

#include <algorithm>

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

QTextOption::WrapMode wrappingOf(const QString &text)
{
    return hasLongWord(text) ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::WordWrap;
}

/// Whether TEXT is one paragraph of letters and signs that every font of a language in Latin letters has.
bool isPlainParagraph(const QString &text)
{
    const auto isPlain = [](QChar character) {
        return (character >= u' ' && character <= u'~')
               || (character > QChar::Nbsp && character <= u'\u00ff' && character != QChar::SoftHyphen);
    };
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), isPlain) && !hasEmojiFormats(text);
}

/// A paragraph that was wrapped: the width of its longest line, and the height of all.
struct Wrapped {
    qreal width = 0;
    qreal height = 0;
    int lines = 0;
};

Wrapped wrap(QTextLayout &paragraph, QTextOption::WrapMode wrapping, int width)
{
    QTextOption option;
    option.setWrapMode(wrapping);
    paragraph.setTextOption(option);
    Wrapped wrapped;
    paragraph.beginLayout();
    for (QTextLine line = paragraph.createLine(); line.isValid(); line = paragraph.createLine()) {
        line.setLeadingIncluded(true); // as in a document
        line.setLineWidth(width);
        wrapped.width = qMax(wrapped.width, line.naturalTextWidth());
        wrapped.height += line.height();
        ++wrapped.lines;
    }
    paragraph.endLayout();
    return wrapped;
}

// Making a document takes longer than wrapping most texts.
QSize paragraphSize(const QString &text, const QFont &font)
{
    QTextLayout paragraph(text, font);
    Wrapped wrapped = wrap(paragraph, QTextOption::WordWrap, widestBubbleText);
    const int width = qMin(qCeil(wrapped.width) + 1, widestBubbleText);
    if (const auto wrapping = wrappingOf(text); wrapped.lines > 1 || wrapping != QTextOption::WordWrap)
        wrapped = wrap(paragraph, wrapping, width);
    return {width, qCeil(wrapped.height)};
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
    if (isPlainParagraph(text))
        return paragraphSize(text, font);
    const int width = qMin(wrappedWidth(text, font) + 1, widestBubbleText);
    return {width, bubbleTextHeight(text, font, width)};
}

int bubbleTextHeight(const QString &text, const QFont &font, int width)
{
    return textHeight(text, font, width, wrappingOf(text));
}

} // namespace tideloft::ui
