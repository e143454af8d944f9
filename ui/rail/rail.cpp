// The rail: its fixed buttons.
// SPDX-FileCopyrightText: 2026 The TideLoft developers
// SPDX-License-Identifier: MIT
#include "ui/rail/rail.h"

#include "ui/rail/server_scroll.h"
#include "ui/style/rail_styles.h"
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
    separator->setStyleSheet(style::railSeparator);
    return separator;
}

} // namespace

Rail::Rail(Language shownLanguage, QWidget *parent) : QWidget(parent), language(shownLanguage)
{
    setObjectName(u"rail"_s);
    setAttribute(Qt::WA_StyledBackground);
    setFixedWidth(56);
    railMessagesBtn = makeRailButton(u"💬"_s, text(u"Meddelanden"_s, u"Messages"_s), this);
    railMessagesBtn->setCheckable(true);
    railMessagesBtn->setChecked(true);
    serverColumn = new QWidget(this);
    makeColumnLayout(serverColumn, 4);
    createServerBtn = makeRailButton(u"+"_s, text(u"Skapa server"_s, u"Create server"_s), this);
    createServerBtn->setStyleSheet(style::createServerButton);
    railSettingsBtn = makeRailButton(u"⚙"_s, text(u"Inställningar"_s, u"Settings"_s), this);
    railSettingsBtn->setCheckable(true);
    style::drawAsSymbol(railSettingsBtn);
    layOut();
    connect(railMessagesBtn, &QPushButton::clicked, this, &Rail::messagesClicked);
    connect(createServerBtn, &QPushButton::clicked, this, &Rail::showCreateServerDialog);
    connect(railSettingsBtn, &QPushButton::clicked, this, &Rail::settingsClicked);
}

void Rail::layOut()
{
    auto *column = makeColumnLayout(this, 6);
    column->setContentsMargins(8, 14, 8, 14);
    column->addWidget(makeRailLogo(this), 0, Qt::AlignHCenter);
    column->addSpacing(16);
    column->addWidget(railMessagesBtn, 0, Qt::AlignHCenter);
    column->addWidget(makeRailSeparator(this));
    column->addWidget(makeServerScroll(serverColumn, this), 0, Qt::AlignHCenter);
    column->addWidget(createServerBtn, 0, Qt::AlignHCenter);
    column->addStretch();
    column->addWidget(railSettingsBtn, 0, Qt::AlignHCenter);
}

// The tool tip of the button that creates a server keeps the language in which it was made. A screen reader
// reads the description, which follows the language.
void Rail::retranslate(Language newLanguage)
{
    language = newLanguage;
    railMessagesBtn->setToolTip(text(u"Meddelanden"_s, u"Messages"_s));
    railSettingsBtn->setToolTip(text(u"Inställningar"_s, u"Settings"_s));
    railMessagesBtn->setAccessibleName(text(u"Meddelanden"_s, u"Messages"_s));
    serverColumn->setAccessibleName(text(u"Servrar"_s, u"Servers"_s));
    createServerBtn->setAccessibleName(text(u"Skapa server"_s, u"Create server"_s));
    createServerBtn->setAccessibleDescription(text(u"Skapa en ny server"_s, u"Create a new server"_s));
    railSettingsBtn->setAccessibleName(text(u"Inställningar"_s, u"Settings"_s));
}

void Rail::markPlace(Place place)
{
    railMessagesBtn->setChecked(place == Place::Messages);
    railSettingsBtn->setChecked(place == Place::Settings);
}

QString Rail::text(const QString &swedish, const QString &english) const
{
    return chooseText(language, swedish, english);
}

} // namespace tideloft::ui
