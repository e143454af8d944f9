// Building a message's row: avatar, bubble, and what stands in the bubble.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/message_row.h"

#include "ui/chat/bubble_size.h"
#include "ui/chat/bubble_text.h"
#include "ui/style/chat_styles.h"
#include "ui/texts/bounded_text.h"
#include "ui/texts/initials.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/plain_tool_tip.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

QLabel *makeAvatar(const QString &sender, QWidget *row)
{
    auto *avatar = makeLabel(initials(sender), row);
    avatar->setFixedSize(34, 34);
    avatar->setAlignment(Qt::AlignCenter);
    avatar->setStyleSheet(style::messageAvatar);
    avatar->setAccessibleName(inOneLine(sender));
    return avatar;
}

// The empty place of the avatar, in rows of a group that show no avatar. The layout puts its spacing beside
// this place, which it does not beside a stretch, and the place costs no widget.
class AvatarSpace : public QSpacerItem
{
public:
    AvatarSpace() : QSpacerItem(34, 0, QSizePolicy::Fixed, QSizePolicy::Minimum) {}
    bool isEmpty() const override { return false; }
};

QLabel *makeSenderName(const QString &sender, QWidget *bubble)
{
    auto *name = new ElidedLabel(sender, bubble);
    name->setStyleSheet(style::senderName);
    return name;
}

QLabel *makeTime(const MessageRowModel &model, QWidget *bubble)
{
    auto *time = makeLabel(model.time, bubble);
    time->setAlignment(model.isMine ? Qt::AlignRight : Qt::AlignLeft);
    time->setStyleSheet(style::messageTime);
    return time;
}

} // namespace

MessageRow::MessageRow(const MessageRowModel &model, QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_StyledBackground);
    setAttribute(Qt::WA_TranslucentBackground);
    setStyleSheet(style::historyRow);
    auto *layout = makeRowLayout(this, 8);
    layout->setContentsMargins(margins(model));
    if (model.isMine) {
        layout->addStretch();
        layout->addWidget(makeBubble(model));
        return;
    }
    if (model.showsSender())
        layout->addWidget(makeAvatar(model.sender, this), 0, Qt::AlignTop);
    else
        layout->addItem(new AvatarSpace); // the layout owns it
    layout->addWidget(makeBubble(model));
    layout->addStretch();
}

QWidget *MessageRow::makeBubble(const MessageRowModel &model)
{
    auto *bubble = makeBox(this);
    bubble->setStyleSheet(model.isMine ? style::ownBubble : style::peerBubble);
    bubble->setMaximumWidth(widestBubble);
    bubble->resize(bubble->maximumWidth(), 0); // else the text is measured for the toolkit's 100 px first
    auto *column = makeColumnLayout(bubble, 3);
    column->setContentsMargins(bubblePadding, 8, bubblePadding, 8);
    if (model.showsSender())
        column->addWidget(makeSenderName(model.sender, bubble));
    bubbleText = new BubbleText(model.text.value(), bubble);
    column->addWidget(bubbleText);
    if (!model.time.isEmpty())
        column->addWidget(makeTime(model, bubble));
    if (const QString trouble = model.trouble(); !trouble.isEmpty()) {
        bubble->setToolTip(trouble);
        showToolTipAsPlainText(bubble);
    }
    return bubble;
}

QMargins MessageRow::margins(const MessageRowModel &model)
{
    const int top = model.startsGroup() ? 8 : 2;
    const int bottom = model.time.isEmpty() ? 2 : 6;
    return model.isMine ? QMargins(60, top, 14, bottom) : QMargins(14, top, 60, bottom);
}

QSize MessageRow::sizeHint() const
{
    const QSize natural = QWidget::sizeHint();
    const int width = parentWidget() ? qMin(natural.width(), parentWidget()->width()) : natural.width();
    // A label without text has no height for any width; the bubble around it has one all the same.
    return {width, layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width) : natural.height()};
}

} // namespace tideloft::ui
