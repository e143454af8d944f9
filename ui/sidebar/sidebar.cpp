// The sidebar: how it is put together, and what its parts do.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/sidebar/sidebar.h"

#include "ui/keyboard/click_keys.h"
#include "ui/keyboard/composition_keys.h"
#include "ui/sidebar/conversation_list.h"
#include "ui/sidebar/found_user_list.h"
#include "ui/widgets/emoji_line_edit.h"
#include "ui/widgets/focus_ring.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

Sidebar::Sidebar(Language language, QWidget *parent) : QWidget(parent)
{
    setObjectName(u"leftSidebar"_s);
    setAttribute(Qt::WA_StyledBackground);
    setFixedWidth(260);
    auto *column = makeColumnLayout(this);
    column->addWidget(makeHeader());
    column->addWidget(makeSearch());
    makeLists();
    column->addWidget(searchResults);
    column->addWidget(dmList, 1);
    sidebarTitle->setText(chooseText(language, u"Meddelanden"_s, u"Messages"_s));
    connectParts();
    connectKeys();
}

void Sidebar::addFooter(QWidget *footer)
{
    layout()->addWidget(footer);
}

QWidget *Sidebar::makeHeader()
{
    auto *header = makeBox(this, u"sideHeader"_s);
    header->setFixedHeight(56);
    sidebarTitle = makeLabel({}, header, u"sidebarTitle"_s);
    addDmBtn = makeButton(u"+"_s, header, u"addDmBtn"_s);
    addDmBtn->setFixedSize(28, 28);
    roundFocusRing(addDmBtn, 8);
    auto *layout = makeRowLayout(header);
    layout->setContentsMargins(16, 0, 12, 0);
    layout->addWidget(sidebarTitle);
    layout->addStretch();
    layout->addWidget(addDmBtn);
    return header;
}

QWidget *Sidebar::makeSearch()
{
    auto *wrap = makeBox(this, u"searchWrap"_s);
    sideSearch = new EmojiLineEdit(wrap);
    sideSearch->setObjectName(u"sideSearch"_s);
    sideSearch->setFixedHeight(34);
    auto *column = makeColumnLayout(wrap);
    column->setContentsMargins(12, 6, 12, 10);
    column->addWidget(sideSearch);
    return wrap;
}

void Sidebar::makeLists()
{
    searchResults = new QListWidget(this);
    searchResults->setObjectName(u"searchResults"_s);
    searchResults->setMaximumHeight(180);
    searchResults->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    searchResults->hide();
    dmList = new QListWidget(this);
    dmList->setObjectName(u"dmList"_s);
    dmList->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    dmList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    conversations = new ConversationList(dmList);
}

void Sidebar::connectParts()
{
    connect(addDmBtn, &QPushButton::clicked, this, &Sidebar::beginSearch);
    connect(sideSearch, &QLineEdit::textChanged, this, &Sidebar::searchAsTyped);
    connect(sideSearch, &QLineEdit::returnPressed, this, &Sidebar::searchEntered);
    connect(dmList, &QListWidget::itemClicked, this, &Sidebar::choose);
    connect(searchResults, &QListWidget::itemClicked, this, &Sidebar::pickFoundUser);
    keepCompositionKeys(sideSearch);
    clickByKeys(dmList);
    clickByKeys(searchResults);
    ringFocus(dmList);
    ringFocus(searchResults);
}

void Sidebar::connectKeys()
{
    for (QWidget *place : std::initializer_list<QWidget *>{sideSearch, searchResults}) {
        auto *escape = new QShortcut(QKeySequence(Qt::Key_Escape), place);
        escape->setContext(Qt::WidgetShortcut);
        connect(escape, &QShortcut::activated, this, &Sidebar::leaveSearch);
    }
}

void Sidebar::retranslate(Language language)
{
    sidebarTitle->setText(chooseText(language, u"Meddelanden"_s, u"Messages"_s));
    sideSearch->setPlaceholderText(
        chooseText(language, u"Sök eller starta konversation..."_s, u"Search or start conversation..."_s));
    addDmBtn->setAccessibleName(chooseText(language, u"Ny konversation"_s, u"New conversation"_s));
    sideSearch->setAccessibleName(
        chooseText(language, u"Sök eller starta konversation"_s, u"Search or start conversation"_s));
    searchResults->setAccessibleName(chooseText(language, u"Sökresultat"_s, u"Search results"_s));
    dmList->setAccessibleName(chooseText(language, u"Konversationer"_s, u"Conversations"_s));
}

void Sidebar::showConversations(const QList<ConversationRowModel> &rows)
{
    conversations->show(rows);
}

void Sidebar::endConversations()
{
    conversations->stop();
}

void Sidebar::showFoundUsers(const QStringList &usernames)
{
    ui::showFoundUsers(searchResults, usernames);
    searchResults->setVisible(searchResults->count() > 0 && !searchIsLeft);
}

void Sidebar::searchAsTyped(const QString &typed)
{
    const QString query = typed.trimmed();
    if (query.toUcs4().size() < 2) { // characters, as in initials: an emoji is one
        searchResults->clear();
        searchResults->hide();
        return;
    }
    searchIsLeft = false;
    emit searchTyped(query);
}

QString Sidebar::takeQuery()
{
    const QString query = sideSearch->text().trimmed();
    if (!query.isEmpty())
        searchIsLeft = false;
    return query;
}

void Sidebar::beginSearch()
{
    sideSearch->setFocus();
    sideSearch->clear();
    searchResults->hide();
}

void Sidebar::focusSearch()
{
    sideSearch->setFocus();
}

void Sidebar::selectSearch()
{
    sideSearch->setFocus();
    sideSearch->selectAll();
}

void Sidebar::focusConversations()
{
    dmList->setFocus();
}

void Sidebar::leaveSearch()
{
    sideSearch->clear();
    searchResults->hide();
    searchIsLeft = true;
    emit searchLeft();
}

void Sidebar::choose(const QListWidgetItem *entry)
{
    const QString peer = entry->data(Qt::UserRole).toString().trimmed();
    if (!peer.isEmpty())
        emit conversationChosen(peer);
}

// A copy of the name: clearing the search deletes the entry.
void Sidebar::pickFoundUser(const QListWidgetItem *entry)
{
    const QString username = entry->data(Qt::UserRole).toString().trimmed();
    if (username.isEmpty())
        return;
    searchResults->hide();
    sideSearch->clear();
    emit conversationChosen(username);
}

void Sidebar::clear()
{
    sideSearch->clear();
    dmList->clear();
}

} // namespace tideloft::ui
