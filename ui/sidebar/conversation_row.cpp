// Building a conversation's row.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/sidebar/conversation_row.h"

#include "ui/style/sidebar_styles.h"
#include "ui/texts/bounded_text.h"
#include "ui/texts/initials.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/emoji_formats.h"
#include "ui/widgets/emoji_line.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

QWidget *makeAvatar(const QString &peer, QWidget *row)
{
    auto *place = makeBox(row);
    place->setFixedSize(42, 42);
    place->setStyleSheet(style::conversationRow);
    auto *avatar = makeLabel(initials(peer), place);
    avatar->setFixedSize(40, 40);
    avatar->setAlignment(Qt::AlignCenter);
    avatar->setStyleSheet(style::conversationAvatar);
    avatar->setAccessibleName(inOneLine(peer));
    return place;
}

QString cutPreview(const QString &text, const QFont &font)
{
    constexpr int room = 140;
    if (hasEmojiFormats(text))
        return EmojiLine(text, font).elided(room);
    // The longest variant is asked for: of a text with one of the toolkit's separators in it the toolkit
    // would otherwise show only a part.
    return QFontMetrics(font).elidedText(text, Qt::ElideRight, room, Qt::TextLongestVariant);
}

QLabel *makePreview(const QString &text, QWidget *row)
{
    auto *preview = new ElidedLabel({}, row);
    preview->setStyleSheet(style::conversationPreview);
    preview->ensurePolished(); // the style sheet's font is the label's own from here on
    preview->setText(cutPreview(firstPart(text, previewLimits), preview->font()));
    return preview;
}

QLayout *makeTextBlock(const ConversationRowModel &model, QWidget *row)
{
    auto *name = new ElidedLabel(model.peer, row);
    name->setStyleSheet(style::conversationName);
    auto *block = new QVBoxLayout;
    block->setContentsMargins(0, 0, 0, 0);
    block->setSpacing(3);
    block->addWidget(name);
    block->addWidget(makePreview(model.preview.value(), row));
    return block;
}

QLayout *makeTimeBlock(const QString &text, QWidget *row)
{
    auto *time = makeLabel(text, row);
    time->setAlignment(Qt::AlignRight);
    time->setStyleSheet(style::conversationTime);
    auto *block = new QVBoxLayout;
    block->addWidget(time, 0, Qt::AlignRight | Qt::AlignTop);
    block->addStretch();
    return block;
}

} // namespace

QWidget *makeConversationRow(const ConversationRowModel &model, QWidget *parent)
{
    auto *row = makeBox(parent);
    row->setAttribute(Qt::WA_TranslucentBackground);
    row->setStyleSheet(style::conversationRow);
    row->setCursor(Qt::PointingHandCursor);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(12, 10, 12, 10);
    layout->setSpacing(12);
    layout->addWidget(makeAvatar(model.peer, row));
    layout->addLayout(makeTextBlock(model, row), 1);
    layout->addLayout(makeTimeBlock(model.time.value(), row));
    return row;
}

} // namespace tideloft::ui
