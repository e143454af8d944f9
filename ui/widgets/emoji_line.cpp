// Laying out one line with emoji.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/emoji_line.h"

#include "ui/widgets/emoji_formats.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace tideloft::ui
{

EmojiLine::EmojiLine(const QString &text, const QFont &font) : layout(text, font)
{
    layout.setFormats(emojiFormats(text));
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
}

qreal EmojiLine::width() const
{
    return layout.lineAt(0).naturalTextWidth();
}

/// Where the text may end: behind whole characters, and not inside a picture.
QList<int> EmojiLine::cuts() const
{
    QList<int> places;
    const QList<QTextLayout::FormatRange> pictures = layout.formats();
    const auto isInside = [&pictures](int place) {
        return std::ranges::any_of(pictures, [place](const QTextLayout::FormatRange &picture) {
            return place > picture.start && place < picture.start + picture.length;
        });
    };
    for (int place = 0; place < layout.text().size(); place = layout.nextCursorPosition(place)) {
        if (!isInside(place))
            places.append(place);
    }
    return places;
}

QString EmojiLine::elided(int room) const
{
    if (width() <= room)
        return layout.text();
    const QList<int> places = cuts();
    const auto hasRoom = [this, room](int place) {
        return EmojiLine(layout.text().left(place) + u'…', layout.font()).width() <= room;
    };
    const auto first = std::ranges::partition_point(places, hasRoom);
    return first == places.begin() ? QString() : layout.text().left(*std::prev(first)) + u'…';
}

// The line is as high as letters are, so that it stands where it would without its pictures.
void EmojiLine::draw(QPainter &painter, const QRect &place, Qt::Alignment alignment) const
{
    const QTextLine line = layout.lineAt(0);
    const QFontMetricsF letters(layout.font());
    const qreal ascent = qMax(letters.ascent(), line.ascent());
    const qreal height = ascent + qMax(letters.descent(), line.descent());
    const qreal beside = place.width() - width();
    const qreal above = place.height() - height;
    const qreal x = alignment & Qt::AlignHCenter ? beside / 2 : alignment & Qt::AlignRight ? beside : 0;
    const qreal y = alignment & Qt::AlignVCenter ? above / 2 : alignment & Qt::AlignBottom ? above : 0;
    layout.draw(&painter, place.topLeft() + QPointF(x, y + ascent - line.ascent()));
}

} // namespace tideloft::ui
