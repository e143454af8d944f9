// Drawing a label with emoji.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/emoji_label.h"

#include "ui/widgets/emoji_formats.h"
#include "ui/widgets/emoji_line.h"

#include <QPainter>

namespace tideloft::ui
{

void EmojiLabel::paintEvent(QPaintEvent *event)
{
    if (wordWrap() || !hasEmojiFormats(text())) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    drawFrame(&painter);
    painter.setPen(palette().color(foregroundRole()));
    EmojiLine(text(), font()).draw(painter, contentsRect(), alignment());
}

} // namespace tideloft::ui
