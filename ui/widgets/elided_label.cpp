// Cutting a text at the moment it is drawn.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/elided_label.h"

#include "ui/texts/bounded_text.h"
#include "ui/widgets/emoji_formats.h"
#include "ui/widgets/emoji_line.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QtMath>

namespace tideloft::ui
{

ElidedLabel::ElidedLabel(const QString &text, QWidget *parent, const QString &objectName) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setText(text);
    setObjectName(objectName);
}

QSize ElidedLabel::sizeHint() const
{
    const QString line = inOneLine(text());
    const bool hasEmoji = hasEmojiFormats(line);
    if (line == text() && !hasEmoji)
        return QLabel::sizeHint();
    ensurePolished();
    const QSize frame = size() - contentsRect().size();
    const int width =
        hasEmoji ? qCeil(EmojiLine(line, font()).width()) : fontMetrics().horizontalAdvance(line);
    return QSize(width, fontMetrics().height()) + frame;
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {0, sizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent *event)
{
    const QString line = inOneLine(text());
    if (hasEmojiFormats(line)) {
        paintEmoji(line);
        return;
    }
    if (line == text() && fontMetrics().horizontalAdvance(line) <= contentsRect().width()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    drawFrame(&painter);
    const QString cut = fontMetrics().elidedText(line, Qt::ElideRight, contentsRect().width());
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
                          cut, foregroundRole());
}

void ElidedLabel::paintEmoji(const QString &line)
{
    QPainter painter(this);
    drawFrame(&painter);
    painter.setPen(palette().color(foregroundRole()));
    const QString cut = EmojiLine(line, font()).elided(contentsRect().width());
    EmojiLine(cut, font()).draw(painter, contentsRect(), alignment());
}

} // namespace tideloft::ui
