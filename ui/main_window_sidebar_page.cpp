// Building the left sidebar: header, search, lists, footer.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "ui/keyboard/click_keys.h"
#include "ui/keyboard/composition_keys.h"
#include "ui/style/inline_styles.h"
#include "ui/widgets/accessible_role.h"
#include "ui/widgets/elided_label.h"
#include "ui/widgets/emoji_line_edit.h"
#include "ui/widgets/focus_ring.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

QLabel *makeStatus(QWidget *footer)
{
    auto *status = new ElidedLabel({}, footer, u"myStatus"_s);
    makeNotification(status); // before its text makes it speak
    status->setText(u"● Online"_s);
    return status;
}

} // namespace

QWidget *MainWindow::buildSidebar(QWidget *page)
{
    auto *sidebar = makeBox(page, u"leftSidebar"_s);
    sidebar->setFixedWidth(260);
    auto *column = makeColumn(sidebar);
    column->addWidget(buildSideHeader(sidebar));
    column->addWidget(buildSearchWrap(sidebar));
    buildSideLists(sidebar);
    column->addWidget(searchResults);
    column->addWidget(dmList, 1);
    column->addWidget(buildSideFooter(sidebar));
    return sidebar;
}

QWidget *MainWindow::buildSideHeader(QWidget *sidebar)
{
    auto *header = makeBox(sidebar, u"sideHeader"_s);
    header->setFixedHeight(56);
    sidebarTitle = makeLabel(text(u"Meddelanden"_s, u"Messages"_s), header, u"sidebarTitle"_s);
    addDmBtn = makeButton(u"+"_s, header, u"addDmBtn"_s);
    addDmBtn->setFixedSize(28, 28);
    roundFocusRing(addDmBtn, 8);
    auto *line = makeLine(header);
    line->setContentsMargins(16, 0, 12, 0);
    line->addWidget(sidebarTitle);
    line->addStretch();
    line->addWidget(addDmBtn);
    return header;
}

QWidget *MainWindow::buildSearchWrap(QWidget *sidebar)
{
    auto *wrap = makeBox(sidebar, u"searchWrap"_s);
    sideSearch = new EmojiLineEdit(wrap);
    sideSearch->setObjectName(u"sideSearch"_s);
    sideSearch->setFixedHeight(34);
    auto *column = makeColumn(wrap);
    column->setContentsMargins(12, 6, 12, 10);
    column->addWidget(sideSearch);
    return wrap;
}

void MainWindow::buildSideLists(QWidget *sidebar)
{
    searchResults = new QListWidget(sidebar);
    searchResults->setObjectName(u"searchResults"_s);
    searchResults->setMaximumHeight(180);
    searchResults->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    searchResults->hide();
    dmList = new QListWidget(sidebar);
    dmList->setObjectName(u"dmList"_s);
    dmList->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    dmList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

QWidget *MainWindow::buildSideFooter(QWidget *sidebar)
{
    auto *footer = makeBox(sidebar, u"sideFooter"_s);
    footer->setFixedHeight(58);
    footer->setCursor(Qt::PointingHandCursor);
    footer->installEventFilter(this);
    clickByKeys(footer, [this, footer] { showUserMenu(footer); });
    setAccessibleRole(footer, QAccessible::ButtonMenu);
    ringFocus(footer);
    footerAvatar = makeLabel(u"?"_s, footer, u"footerAvatar"_s);
    footerAvatar->setFixedSize(34, 34);
    footerAvatar->setAlignment(Qt::AlignCenter);
    footerAvatar->setToolTip(
        text(u"Klicka för att ändra profilbild"_s, u"Click to change profile picture"_s));
    footerAvatar->setCursor(Qt::PointingHandCursor);
    footerAvatar->setStyleSheet(style::footerInitials());
    myName = new ElidedLabel(u"—"_s, footer, u"myName"_s);
    myStatus = makeStatus(footer);
    quilloryBtn = makeButton(u"Quillory"_s, footer, u"quilloryBtn"_s);
    quilloryBtn->setFixedHeight(24);
    quilloryBtn->setStyleSheet(style::quilloryButton());

    auto *who = new QVBoxLayout;
    who->setSpacing(2);
    who->addStretch();
    who->addWidget(myName);
    who->addWidget(myStatus);
    who->addStretch();
    auto *line = makeLine(footer, 10);
    line->setContentsMargins(14, 0, 14, 0);
    line->addWidget(footerAvatar);
    line->addLayout(who);
    line->addStretch();
    line->addWidget(quilloryBtn);
    line->addSpacing(4);
    line->addWidget(makeLabel(u"›"_s, footer, u"footerChevron"_s));
    return footer;
}

void MainWindow::connectSidebar()
{
    connect(addDmBtn, &QPushButton::clicked, this, [this] {
        sideSearch->setFocus();
        sideSearch->clear();
        searchResults->hide();
    });
    connect(sideSearch, &QLineEdit::textChanged, this, &MainWindow::searchAsTyped);
    connect(sideSearch, &QLineEdit::returnPressed, this, &MainWindow::onSearchClicked);
    connect(dmList, &QListWidget::itemClicked, this,
            [this](const QListWidgetItem *entry) { openConversation(entry->data(Qt::UserRole).toString()); });
    connect(searchResults, &QListWidget::itemClicked, this, &MainWindow::pickSearchResult);
    connect(quilloryBtn, &QPushButton::clicked, this, &MainWindow::showPrivacyDialog);
    keepCompositionKeys(sideSearch);
    clickByKeys(dmList);
    clickByKeys(searchResults);
    ringFocus(dmList);
    ringFocus(searchResults);
}

} // namespace tideloft::ui
