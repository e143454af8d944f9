// Handing formats to a line edit.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/emoji_line_edit.h"

#include "ui/keyboard/composition.h"
#include "ui/widgets/emoji_formats.h"

#include <QInputMethodEvent>

#include <utility>

namespace tideloft::ui
{

EmojiLineEdit::EmojiLineEdit(const QString &text, QWidget *parent)
    : QLineEdit(parent),
      composition(new Composition(this))
{
    connect(this, &QLineEdit::textChanged, this, &EmojiLineEdit::drawEmoji);
    setText(text);
}

void EmojiLineEdit::inputMethodEvent(QInputMethodEvent *event)
{
    QLineEdit::inputMethodEvent(event);
    drawEmoji();
}

// An input method's event that types nothing is the only public way to the formats of the line.
void EmojiLineEdit::drawEmoji()
{
    if (composition->isActive() || echoMode() != Normal)
        return;
    QList<QInputMethodEvent::Attribute> attributes;
    for (const QTextLayout::FormatRange &range : emojiFormats(text()))
        attributes.append({QInputMethodEvent::TextFormat, range.start - cursorPosition(), range.length,
                           QVariant(range.format)});
    if (std::exchange(hasEmoji, !attributes.isEmpty()) || hasEmoji) {
        QInputMethodEvent event({}, attributes);
        QLineEdit::inputMethodEvent(&event);
    }
}

} // namespace tideloft::ui
