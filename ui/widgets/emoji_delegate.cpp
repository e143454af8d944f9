// Drawing an entry in pieces.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/emoji_delegate.h"

#include "ui/widgets/emoji_formats.h"
#include "ui/widgets/emoji_line.h"

#include <QApplication>
#include <QPainter>

namespace tideloft::ui
{

namespace
{

const QStyle *styleOf(const QStyleOptionViewItem &entry)
{
    return entry.widget ? entry.widget->style() : QApplication::style();
}

/// Where the style puts the entry's text.
QRect placeOfText(const QStyleOptionViewItem &entry)
{
    const int margin = styleOf(entry)->pixelMetric(QStyle::PM_FocusFrameHMargin, &entry, entry.widget) + 1;
    return styleOf(entry)
        ->subElementRect(QStyle::SE_ItemViewItemText, &entry, entry.widget)
        .adjusted(margin, 0, -margin, 0);
}

/// Draws TEXT at X. Only the style sheet knows the colours of letters, so the style draws the whole entry
/// once more, with this text and moved to X, and what lies before X is clipped away.
void drawLetters(QPainter &painter, QStyleOptionViewItem entry, const QString &text, const QRect &place,
                 int x)
{
    entry.text = text;
    entry.rect.translate(x - place.left(), 0);
    entry.state &= ~QStyle::State_HasFocus;
    painter.save();
    painter.setClipRect(QRect(QPoint(x, place.top()), place.bottomRight()));
    styleOf(entry)->drawControl(QStyle::CE_ItemViewItem, &entry, &painter, entry.widget);
    painter.restore();
}

/// The parts of TEXT from left to right: letters and pictures in turn, beginning with letters.
QStringList piecesOf(const QString &text)
{
    QStringList pieces;
    int end = 0;
    for (const QTextLayout::FormatRange &picture : emojiFormats(text)) {
        pieces << text.sliced(end, picture.start - end) << text.sliced(picture.start, picture.length);
        end = picture.start + picture.length;
    }
    return pieces << text.sliced(end);
}

} // namespace

void EmojiDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const
{
    if (!hasEmojiFormats(index.data(Qt::DisplayRole).toString())) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem entry(option);
    initStyleOption(&entry, index);
    const QRect place = placeOfText(entry);
    const QString text = EmojiLine(entry.text, entry.font).elided(place.width());
    entry.text.clear();
    styleOf(entry)->drawControl(QStyle::CE_ItemViewItem, &entry, painter, entry.widget);
    qreal x = place.left();
    bool isPicture = false;
    for (const QString &piece : piecesOf(text)) {
        const EmojiLine line(piece, entry.font);
        const QRect rest(QPoint(qRound(x), place.top()), place.bottomRight());
        if (isPicture)
            line.draw(*painter, rest, Qt::AlignVCenter);
        else if (!piece.isEmpty())
            drawLetters(*painter, entry, piece, place, rest.left());
        x += line.width();
        isPicture = !isPicture;
    }
}

} // namespace tideloft::ui
