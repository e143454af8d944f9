// Building the rail at the left edge: messages, servers, settings.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/main_window.h"

#include "ui/rail/server_scroll.h"
#include "ui/style/inline_styles.h"
#include "ui/style/symbol_font.h"
#include "ui/widgets/focus_ring.h"
#include "ui/widgets/widget_parts.h"

#include <QBoxLayout>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>

using namespace Qt::StringLiterals;

namespace tideloft::ui
{

namespace
{

QPushButton *makeRailButton(const QString &text, const QString &toolTip, QWidget *rail)
{
    auto *button = makeButton(text, rail, u"railBtn"_s);
    button->setFixedSize(36, 36);
    roundFocusRing(button, 10);
    button->setToolTip(toolTip);
    return button;
}

QLabel *makeRailLogo(QWidget *rail)
{
    auto *logo = makeLabel(u"TL"_s, rail, u"railLogo"_s);
    logo->setFixedSize(36, 36);
    logo->setAlignment(Qt::AlignCenter);
    return logo;
}

QFrame *makeRailSeparator(QWidget *rail)
{
    auto *separator = makeRule(rail);
    separator->setStyleSheet(style::railSeparator());
    return separator;
}

} // namespace

QWidget *MainWindow::buildRail(QWidget *page)
{
    rail = makeBox(page, u"rail"_s);
    rail->setFixedWidth(56);
    railMessagesBtn = makeRailButton(u"💬"_s, text(u"Meddelanden"_s, u"Messages"_s), rail);
    railMessagesBtn->setCheckable(true);
    railMessagesBtn->setChecked(true);
    serverColumn = new QWidget(rail);
    makeColumn(serverColumn, 4);
    createServerBtn = makeRailButton(u"+"_s, text(u"Skapa server"_s, u"Create server"_s), rail);
    createServerBtn->setStyleSheet(style::createServerButton());
    railSettingsBtn = makeRailButton(u"⚙"_s, text(u"Inställningar"_s, u"Settings"_s), rail);
    railSettingsBtn->setCheckable(true);
    style::drawAsSymbol(railSettingsBtn);

    auto *column = makeColumn(rail, 6);
    column->setContentsMargins(8, 14, 8, 14);
    column->addWidget(makeRailLogo(rail), 0, Qt::AlignHCenter);
    column->addSpacing(16);
    column->addWidget(railMessagesBtn, 0, Qt::AlignHCenter);
    column->addWidget(makeRailSeparator(rail));
    column->addWidget(makeServerScroll(serverColumn, rail), 0, Qt::AlignHCenter);
    column->addWidget(createServerBtn, 0, Qt::AlignHCenter);
    column->addStretch();
    column->addWidget(railSettingsBtn, 0, Qt::AlignHCenter);
    connect(railMessagesBtn, &QPushButton::clicked, this, &MainWindow::showMessages);
    connect(createServerBtn, &QPushButton::clicked, this, &MainWindow::showCreateServerDialog);
    connect(railSettingsBtn, &QPushButton::clicked, this, &MainWindow::openSettings);
    return rail;
}

} // namespace tideloft::ui
