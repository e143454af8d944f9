// Sizing of a message's text.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/bubble_text.h"

#include "ui/style/inline_styles.h"
#include "ui/widgets/emoji_formats.h"
#include "ui/widgets/text_height.h"
#include "ui/widgets/toolkit_parts.h"

#include <QEvent>
#include <QTextDocument>
#include <QTextOption>

namespace tideloft::ui
{

namespace
{

// A bubble is at most 520 px wide and keeps 12 px on either side of its text.
constexpr int widestText = 520 - 2 * 12;

// Below this length a word fits into a bubble in the narrowest window, whatever its letters.
constexpr int longWord = 24;

// Lines break at blanks, except at those made to hold words together.
bool endsWord(QChar character)
{
    return character.isSpace() && character != QChar::Nbsp && character != u'\u2007'
           && character != u'\u202f';
}

bool containsLongWord(const QString &text)
{
    int length = 0;
    for (const QChar character : text) {
        length = endsWord(character) ? 0 : length + 1;
        if (length > longWord)
            return true;
    }
    return false;
}

} // namespace

// The text comes after the flags: the other way round it would be laid out for the flags.
BubbleText::BubbleText(const QString &text, QWidget *parent)
    : QLabel(parent),
      hasLongWord(containsLongWord(text)),
      hasEmoji(hasEmojiFormats(text))
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setContextMenuPolicy(Qt::NoContextMenu); // the list's menu takes the place of the label's own
    setStyleSheet(style::messageText());
    setText(text);
}

QSize BubbleText::sizeHint() const
{
    ensurePolished();
    if (naturalWidth < 0) {
        // The layout measures in fractions of a pixel: one pixel more keeps the last word on its line.
        naturalWidth = qMin(wrappedWidth() + 1, widestText);
        naturalHeight = measuredHeight(naturalWidth);
    }
    return {naturalWidth, naturalHeight};
}

int BubbleText::wrappedWidth() const
{
    if (hasEmoji)
        return textSize(text(), font(), widestText).width();
    const QRect room(0, 0, widestText, QWIDGETSIZE_MAX);
    return fontMetrics().boundingRect(room, Qt::TextWordWrap, text()).width();
}

// No text needs more room than the narrowest window leaves it: its long words are broken.
QSize BubbleText::minimumSizeHint() const
{
    ensurePolished();
    return {fontMetrics().averageCharWidth(), fontMetrics().lineSpacing()};
}

int BubbleText::heightForWidth(int width) const
{
    ensurePolished();
    // Up to the width at which its lines were broken a text keeps these lines.
    if (naturalWidth >= 0 && width >= naturalWidth && width <= widestText)
        return naturalHeight;
    if (width != lastWidth) {
        lastHeight = measuredHeight(width);
        lastWidth = width;
    }
    return lastHeight;
}

int BubbleText::measuredHeight(int width) const
{
    return textHeight(text(), font(), width,
                      hasLongWord ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::WordWrap);
}

// A label tells of its line breaks in the way of a text document.
QString BubbleText::copiedText() const
{
    if (!hasSelectedText())
        return text();
    return selectedText().replace(QChar::ParagraphSeparator, u'\n').replace(QChar::LineSeparator, u'\n');
}

void BubbleText::selectAll()
{
    setFocus();
    setSelection(0, 0); // the document is filled when it is first needed
    if (const auto *document = documentOf(this))
        setSelection(0, document->characterCount() - 1); // without the end of the last paragraph
}

void BubbleText::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        naturalWidth = lastWidth = -1;
    areWordsBroken = areEmojiDrawn = false;
    QLabel::changeEvent(event);
}

void BubbleText::resizeEvent(QResizeEvent *event)
{
    areWordsBroken = false;
    QLabel::resizeEvent(event);
}

void BubbleText::paintEvent(QPaintEvent *event)
{
    if (hasLongWord && !areWordsBroken)
        breakLongWords();
    if (hasEmoji && !areEmojiDrawn)
        drawEmoji();
    QLabel::paintEvent(event);
}

// Whatever lays the text out anew asks for another paint. So nothing is laid out here unless the label would
// do so in the paint that follows, which sets its own wrapping.
void BubbleText::breakLongWords()
{
    QLabel::heightForWidth(width()); // the layout that is due
    auto *document = documentOf(this);
    if (!document)
        return;
    QTextOption option = document->defaultTextOption();
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document->setDefaultTextOption(option);
    areWordsBroken = true;
}

// The formats stay with the document, which is filled once; only their height follows the font.
void BubbleText::drawEmoji()
{
    QLabel::heightForWidth(width()); // fills the document
    if (auto *document = documentOf(this))
        formatEmoji(document);
    areEmojiDrawn = true;
}

} // namespace tideloft::ui
