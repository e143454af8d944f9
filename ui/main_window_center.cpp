// Building the center panel: the empty state and the chat page.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "ui/chat/history_copy.h"
#include "ui/keyboard/composition_keys.h"
#include "ui/keyboard/scroll_keys.h"
#include "ui/lists/row_list.h"
#include "ui/style/hint_row.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/emoji_line_edit.h"
#include "ui/widgets/focus_ring.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

QWidget *makeEmptyIcon(QWidget *inner)
{
    auto *container = makeBox(inner, u"emptyIconContainer"_s);
    container->setFixedSize(80, 80);
    auto *icon = makeLabel(u"💬"_s, container, u"emptyIcon"_s);
    icon->setAlignment(Qt::AlignCenter);
    makeColumn(container)->addWidget(icon);
    return container;
}

QLabel *makeCentredLabel(QWidget *inner, const QString &objectName)
{
    auto *label = makeLabel({}, inner, objectName);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

} // namespace

QWidget *MainWindow::buildCenterPanel(QWidget *page)
{
    auto *panel = makeBox(page, u"centerPanel"_s);
    panel->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    centerStack = new QStackedWidget(panel);
    emptyState = buildEmptyState(centerStack); // adds itself
    chatPage = buildChatPage(centerStack);
    centerStack->addWidget(chatPage);
    makeColumn(panel)->addWidget(centerStack, 1);
    return panel;
}

QWidget *MainWindow::buildEmptyState(QWidget *panel)
{
    auto *state = makeBox(panel, u"emptyState"_s);
    centerStack->addWidget(state); // while it is empty: the first page of a stack is measured as it is added
    auto *column = makeColumn(state);
    auto *line = new QHBoxLayout; // not an alignment: that would give the wrapped text no height of its own
    line->addStretch();
    line->addWidget(buildEmptyInner(state), 1);
    line->addStretch();
    column->addStretch(2);
    column->addLayout(line);
    column->addStretch(2);
    return state;
}

QWidget *MainWindow::buildEmptyInner(QWidget *state)
{
    auto *inner = makeBox(state, u"emptyInner"_s);
    inner->setMaximumWidth(440);
    auto *hints = makeBox(inner, u"emptyHints"_s);
    auto *hintColumn = makeColumn(hints, 8);
    hintColumn->addWidget(makeHintRow(
        u"🔒"_s, text(u"End-to-end krypterade meddelanden"_s, u"End-to-end encrypted messages"_s), hints));
    hintColumn->addWidget(makeHintRow(
        u"⚡"_s, text(u"Snabb och säker kommunikation"_s, u"Fast and secure communication"_s), hints));
    hintColumn->addWidget(makeHintRow(u"🌍"_s, text(u"Fungerar överallt"_s, u"Works everywhere"_s), hints));
    auto *subtitle = makeCentredLabel(inner, u"emptySubtitle"_s);
    subtitle->setWordWrap(true);
    emptyActionBtn = makeButton({}, inner, u"emptyActionBtn"_s);
    emptyActionBtn->setFixedHeight(44);
    emptyActionBtn->setMinimumWidth(220);
    roundFocusRing(emptyActionBtn, 10);

    auto *column = makeColumn(inner);
    column->setContentsMargins(32, 32, 32, 32);
    column->addWidget(makeEmptyIcon(inner), 0, Qt::AlignHCenter);
    column->addSpacing(20);
    column->addWidget(makeCentredLabel(inner, u"emptyTitle"_s));
    column->addSpacing(8);
    column->addWidget(subtitle);
    column->addSpacing(24);
    column->addWidget(hints);
    column->addSpacing(28);
    column->addWidget(emptyActionBtn, 0, Qt::AlignHCenter);
    return inner;
}

QWidget *MainWindow::buildChatPage(QWidget *panel)
{
    auto *page = new QWidget(panel);
    page->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    auto *column = makeColumn(page);
    column->addWidget(buildChatHeader(page));
    column->addWidget(makeRule(page, u"headerLine"_s));
    column->addWidget(buildMessageList(page), 1);
    column->addWidget(buildInputArea(page));
    return page;
}

QWidget *MainWindow::buildChatHeader(QWidget *page)
{
    auto *header = makeBox(page, u"chatHeader"_s);
    header->setFixedHeight(56);
    peerAvatar = makeCentredLabel(header, u"peerAvatar"_s);
    peerAvatar->setFixedSize(36, 36);
    centerTitle = new ElidedLabel({}, header, u"centerTitle"_s);
    centerSubtitle = makeLabel({}, header, u"centerSubtitle"_s);
    auto *titles = new QVBoxLayout;
    titles->setSpacing(2);
    titles->addStretch();
    titles->addWidget(centerTitle);
    titles->addWidget(centerSubtitle);
    titles->addStretch();
    auto *line = makeLine(header, 12);
    line->setContentsMargins(18, 0, 18, 0);
    line->addWidget(peerAvatar);
    line->addLayout(titles);
    line->addStretch();
    return header;
}

QWidget *MainWindow::buildMessageList(QWidget *page)
{
    messageList = new QListWidget(page);
    messageList->setObjectName(u"messageList"_s);
    messageList->setSpacing(0);
    messageList->setWordWrap(true);
    messageList->setSelectionMode(QAbstractItemView::NoSelection);
    messageList->setFocusPolicy(Qt::NoFocus);
    messageList->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    messageList->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    messageList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    keepRowHeights(messageList);
    return messageList;
}

QWidget *MainWindow::buildInputArea(QWidget *page)
{
    auto *area = makeBox(page, u"inputArea"_s);
    msgInput = new EmojiLineEdit(area);
    msgInput->setObjectName(u"msgInput"_s);
    msgInput->setFixedHeight(44);
    msgInput->setMinimumWidth(400);
    msgInput->setPlaceholderText(text(u"Skriv ett meddelande..."_s, u"Write a message..."_s));
    msgInput->installEventFilter(this);
    sendButton = makeButton(u"➤"_s, area, u"sendButton"_s);
    sendButton->setFixedSize(40, 40);
    roundFocusRing(sendButton, 10);
    auto *line = makeLine(area, 10);
    line->setContentsMargins(14, 12, 14, 12);
    line->addWidget(msgInput, 1);
    line->addWidget(sendButton);
    return area;
}

void MainWindow::connectChat()
{
    scrollByKeys(msgInput, messageList);
    copyFromHistory(messageList, [this] { return language(); });
    keepCompositionKeys(msgInput);
    connect(sendButton, &QPushButton::clicked, this, &MainWindow::onSendClicked);
    connect(&sealing, &SlicedSealing::busyChanged, this, &MainWindow::followSealing);
    connect(emptyActionBtn, &QPushButton::clicked, sideSearch, qOverload<>(&QWidget::setFocus));
}

} // namespace tideloft::ui
