// The chat page: how it is put together.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/chat/chat_page.h"

#include "ui/chat/history_copy.h"
#include "ui/chat/history_list.h"
#include "ui/keyboard/composition_keys.h"
#include "ui/keyboard/scroll_keys.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/emoji_line_edit.h"
#include "ui/widgets/focus_ring.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QFrame>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

ChatPage::ChatPage(Language shownLanguage, QWidget *parent) : QWidget(parent), language(shownLanguage)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    auto *column = makeColumnLayout(this);
    column->addWidget(makeHeader());
    column->addWidget(makeRule(this, u"headerLine"_s));
    messageList = makeMessageList();
    column->addWidget(messageList, 1);
    column->addWidget(makeInputArea());
    connectParts();
}

QWidget *ChatPage::makeHeader()
{
    auto *header = makeBox(this, u"chatHeader"_s);
    header->setFixedHeight(56);
    peerAvatar = makeLabel({}, header, u"peerAvatar"_s);
    peerAvatar->setAlignment(Qt::AlignCenter);
    peerAvatar->setFixedSize(36, 36);
    centerTitle = new ElidedLabel({}, header, u"centerTitle"_s);
    centerSubtitle = makeLabel({}, header, u"centerSubtitle"_s);
    auto *titles = new QVBoxLayout;
    titles->setSpacing(2);
    titles->addStretch();
    titles->addWidget(centerTitle);
    titles->addWidget(centerSubtitle);
    titles->addStretch();
    auto *layout = makeRowLayout(header, 12);
    layout->setContentsMargins(18, 0, 18, 0);
    layout->addWidget(peerAvatar);
    layout->addLayout(titles);
    layout->addStretch();
    return header;
}

QListWidget *ChatPage::makeMessageList()
{
    auto *list = new QListWidget(this);
    list->setObjectName(u"messageList"_s);
    list->setSpacing(0);
    list->setWordWrap(true);
    list->setSelectionMode(QAbstractItemView::NoSelection);
    list->setFocusPolicy(Qt::NoFocus);
    list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    history = new HistoryList(list);
    return list;
}

QWidget *ChatPage::makeInputArea()
{
    auto *area = makeBox(this, u"inputArea"_s);
    msgInput = new EmojiLineEdit(area);
    msgInput->setObjectName(u"msgInput"_s);
    msgInput->setFixedHeight(44);
    msgInput->setMinimumWidth(400);
    msgInput->setPlaceholderText(chooseText(language, u"Skriv ett meddelande..."_s, u"Write a message..."_s));
    sendButton = makeButton(u"➤"_s, area, u"sendButton"_s);
    sendButton->setFixedSize(40, 40);
    roundFocusRing(sendButton, 10);
    auto *layout = makeRowLayout(area, 10);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->addWidget(msgInput, 1);
    layout->addWidget(sendButton);
    return area;
}

void ChatPage::connectParts()
{
    msgInput->installEventFilter(this);
    scrollByKeys(msgInput, messageList);
    copyFromHistory(messageList, [this] { return language; });
    keepCompositionKeys(msgInput);
    connect(sendButton, &QPushButton::clicked, this, &ChatPage::sendClicked);
}

// The placeholder keeps the language of its making.
void ChatPage::retranslate(Language newLanguage)
{
    language = newLanguage;
    messageList->setAccessibleName(chooseText(language, u"Historik"_s, u"History"_s));
    msgInput->setAccessibleName(chooseText(language, u"Meddelande"_s, u"Message"_s));
    msgInput->setAccessibleDescription(chooseText(language, u"Skriv ett meddelande"_s, u"Write a message"_s));
    sendButton->setAccessibleName(chooseText(language, u"Skicka"_s, u"Send"_s));
}

} // namespace tideloft::ui
