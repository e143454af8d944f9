// Sizing of a message's text.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/bubble_text.h"

#include "ui/chat/bubble_size.h"
#include "ui/style/chat_styles.h"
#include "ui/widgets/emoji_formats.h"
#include "ui/widgets/toolkit_parts.h"

#include <QEvent>
#include <QTextDocument>
#include <QTextOption>

namespace tideloft::ui
{

// The flags are set before the text. Set afterwards, they would lay out the text a first time.
BubbleText::BubbleText(const QString &text, QWidget *parent)
    : QLabel(parent),
      hasLongWord(ui::hasLongWord(text)),
      hasEmoji(hasEmojiFormats(text))
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setContextMenuPolicy(Qt::NoContextMenu); // the list's menu takes the place of the label's own
    setStyleSheet(style::messageText);
    setText(text);
}

QSize BubbleText::sizeHint() const
{
    ensurePolished();
    if (naturalWidth < 0) {
        const QSize natural = bubbleTextSize(text(), font());
        naturalWidth = natural.width();
        naturalHeight = natural.height();
    }
    return {naturalWidth, naturalHeight};
}

void BubbleText::setMeasured(QSize text, QSize wrapped)
{
    ensurePolished(); // that forgets what was measured
    naturalWidth = text.width();
    naturalHeight = text.height();
    lastWidth = wrapped.width();
    lastHeight = wrapped.height();
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
    if (naturalWidth >= 0 && width >= naturalWidth && width <= widestBubbleText)
        return naturalHeight;
    if (width != lastWidth) {
        lastHeight = bubbleTextHeight(text(), font(), width);
        lastWidth = width;
    }
    return lastHeight;
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

// Each new layout of the text asks for another paint. So the label first does the layout that is due, which
// sets the wrapping of the label, and only then is the wrapping changed.
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
