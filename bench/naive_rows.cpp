// Rows of plain labels, made and added one by one.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "bench/naive_rows.h"

#include "ui/chat/day_separator.h"
#include "ui/sidebar/conversation_row.h"
#include "ui/style/chat_styles.h"
#include "ui/texts/initials.h"

#include <QBoxLayout>
#include <QLabel>
#include <QListWidget>

using namespace Qt::StringLiterals;

namespace tideloft::bench
{

namespace
{

QLabel *makeLabel(const QString &text, const QString &style)
{
    auto *label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setStyleSheet(style);
    return label;
}

QWidget *makeBubble(const ui::MessageRowModel &message)
{
    auto *bubble = new QWidget;
    bubble->setAttribute(Qt::WA_StyledBackground);
    bubble->setStyleSheet(message.isMine ? ui::style::ownBubble : ui::style::peerBubble);
    bubble->setMaximumWidth(520);
    auto *column = new QVBoxLayout(bubble);
    column->setContentsMargins(12, 8, 12, 8);
    column->setSpacing(3);
    if (message.showsSender())
        column->addWidget(makeLabel(message.sender, ui::style::senderName));
    QLabel *text = makeLabel(message.text.value(), ui::style::messageText);
    text->setWordWrap(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column->addWidget(text);
    if (!message.time.isEmpty()) {
        QLabel *time = makeLabel(message.time, ui::style::messageTime);
        time->setAlignment(message.isMine ? Qt::AlignRight : Qt::AlignLeft);
        column->addWidget(time);
    }
    return bubble;
}

QWidget *makeSide(const ui::MessageRowModel &message)
{
    QLabel *side = makeLabel({}, ui::style::historyRow);
    side->setFixedWidth(34);
    if (!message.showsSender())
        return side;
    side->setText(ui::initials(message.sender));
    side->setFixedHeight(34);
    side->setAlignment(Qt::AlignCenter);
    side->setStyleSheet(ui::style::messageAvatar);
    return side;
}

QWidget *makeMessage(const ui::MessageRowModel &message)
{
    auto *row = new QWidget;
    row->setAttribute(Qt::WA_TranslucentBackground);
    row->setStyleSheet(ui::style::historyRow);
    const int top = message.startsGroup() ? 8 : 2;
    const int bottom = message.time.isEmpty() ? 2 : 6;
    auto *line = new QHBoxLayout(row);
    line->setSpacing(8);
    line->setContentsMargins(message.isMine ? 60 : 14, top, message.isMine ? 14 : 60, bottom);
    if (message.isMine)
        line->addStretch();
    else
        line->addWidget(makeSide(message), 0, message.showsSender() ? Qt::AlignTop : Qt::Alignment());
    line->addWidget(makeBubble(message));
    if (!message.isMine)
        line->addStretch();
    return row;
}

} // namespace

void showHistoryNaively(QListWidget *list, const QList<ui::HistoryRow> &rows)
{
    list->clear();
    for (const ui::HistoryRow &model : rows) {
        const auto *message = std::get_if<ui::MessageRowModel>(&model);
        QWidget *row = message ? makeMessage(*message)
                               : ui::makeDaySeparator(std::get<ui::DaySeparatorModel>(model), nullptr);
        auto *entry = new QListWidgetItem(list);
        entry->setFlags(Qt::NoItemFlags);
        entry->setSizeHint(row->sizeHint());
        list->setItemWidget(entry, row);
    }
    list->scrollToBottom();
}

void showConversationsNaively(QListWidget *list, const QList<ui::ConversationRowModel> &rows)
{
    list->clear();
    for (const ui::ConversationRowModel &model : rows) {
        auto *entry = new QListWidgetItem(list);
        entry->setData(Qt::UserRole, model.peer);
        entry->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
        entry->setSizeHint(QSize(0, 62));
        list->setItemWidget(entry, ui::makeConversationRow(model, nullptr));
    }
}

} // namespace tideloft::bench
