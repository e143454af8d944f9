// Formats of emoji.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/widgets/emoji_formats.h"

#include "ui/style/emoji_font.h"
#include "ui/texts/emoji_sequences.h"

#include <QFontMetricsF>
#include <QRawFont>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QtMath>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

/// No other font helps out: it would have U+FE0F, and come between a picture and what is joined to it.
QFont emojiFont()
{
    QFont font(style::emojiFamily());
    font.setStyleStrategy(QFont::NoFontMerging);
    return font;
}

QTextCharFormat emojiFormat()
{
    QTextCharFormat format;
    format.setFontFamilies(QStringList{style::emojiFamily()});
    format.setFontStyleStrategy(QFont::NoFontMerging);
    return format;
}

/// The height of a line in which letters in FONT stand beside pictures.
int heightWithLetters(const QFont &font)
{
    QFont pictures(font);
    pictures.setFamilies(QStringList{style::emojiFamily()});
    const QFontMetricsF beside(pictures);
    const QFontMetricsF letters(font);
    return qCeil(qMax(letters.ascent(), beside.ascent()) + qMax(letters.descent(), beside.descent()));
}

bool hasPicturesOf(const QRawFont &font, QStringView sequence)
{
    return std::ranges::all_of(sequence.toUcs4(), [&font](char32_t character) {
        return character == 0xfe0f || font.supportsCharacter(character);
    });
}

} // namespace

QList<QTextLayout::FormatRange> emojiFormats(const QString &text)
{
    QList<QTextLayout::FormatRange> formats;
    const QList<EmojiSequence> sequences = emojiSequences(text);
    if (sequences.isEmpty() || !style::hasEmojiFont())
        return formats;
    const QRawFont font = QRawFont::fromFont(emojiFont());
    const QTextCharFormat format = emojiFormat();
    for (const EmojiSequence &sequence : sequences) {
        if (hasPicturesOf(font, QStringView(text).sliced(sequence.start, sequence.length)))
            formats.append({static_cast<int>(sequence.start), static_cast<int>(sequence.length), format});
    }
    return formats;
}

bool hasEmojiFormats(const QString &text)
{
    return !emojiFormats(text).isEmpty();
}

// No sequence holds a character that means something in HTML.
QString withEmojiSpans(const QString &html)
{
    QString marked = html;
    const QList<QTextLayout::FormatRange> ranges = emojiFormats(html);
    for (auto range = ranges.crbegin(); range != ranges.crend(); ++range) {
        const QString sequence = html.sliced(range->start, range->length).remove(QChar(0xfe0f));
        marked.replace(range->start, range->length,
                       u"<span style=\"font-family:'%1'\">%2</span>"_s.arg(style::emojiFamily(), sequence));
    }
    return marked;
}

// A line of pictures alone would be lower than others.
void formatEmoji(QTextDocument *document)
{
    QTextBlockFormat lines;
    lines.setLineHeight(heightWithLetters(document->defaultFont()), QTextBlockFormat::MinimumHeight);
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        const QList<QTextLayout::FormatRange> formats = emojiFormats(block.text());
        if (formats.isEmpty())
            continue;
        QTextCursor(block).mergeBlockFormat(lines);
        block.layout()->setFormats(formats);
        document->markContentsDirty(block.position(), block.length());
    }
}

} // namespace tideloft::ui
